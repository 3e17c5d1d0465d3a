// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebEngineLoader.h"

#include "WebEngineSurface.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QPluginLoader>

// Qt's own setter of the context that every OpenGL context shares (exported by Qt GUI, declared
// only in its private headers). The web engine needs that context before it is loaded. Asked for
// by Qt::AA_ShareOpenGLContexts, Qt would create it with the application and every start would
// load the OpenGL renderer, though most starts never show a page.
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);

namespace WebEngineLoader {
namespace {
struct State
{
    QPluginLoader loader;
    WebEngineFactory* factory = nullptr;
    bool tried = false;
    QString error;
    std::optional<QStringList> foldersForTesting;
};

State& state()
{
    static State s;
    return s;
}

// Beside the program first, then where the package installs it (relative to the program), then
// the build tree.
QStringList folders()
{
    if (state().foldersForTesting)
        return *state().foldersForTesting;
    const QDir program(QCoreApplication::applicationDirPath());
    return { program.path(), program.filePath(QStringLiteral(QUELLBOTE_WEBENGINE_INSTALL_DIR)),
             QStringLiteral(QUELLBOTE_WEBENGINE_BUILD_DIR) };
}

void prepareShareContext()
{
    if (QOpenGLContext::globalShareContext())
        return;
    auto* context = new QOpenGLContext(qApp); // lives as long as the application
    context->setFormat(QSurfaceFormat::defaultFormat());
    // Where there is no OpenGL this fails, and the engine draws in software.
    context->create();
    qt_gl_set_global_share_context(context);
    QObject::connect(context, &QObject::destroyed, [] { qt_gl_set_global_share_context(nullptr); });
}
} // namespace

WebEngineFactory* factory()
{
    State& s = state();
    if (s.tried)
        return s.factory;
    s.tried = true;
    prepareShareContext();
    QStringList errors;
    for (const QString& folder : folders()) {
        s.loader.setFileName(QDir(folder).filePath(QStringLiteral("quellbote_webengine")));
        if (s.loader.load()) {
            s.factory = qobject_cast<WebEngineFactory*>(s.loader.instance());
            if (s.factory)
                return s.factory;
        }
        errors.append(s.loader.errorString());
    }
    errors.removeDuplicates();
    s.error = errors.join(QLatin1Char('\n'));
    return nullptr;
}

QString errorString()
{
    return state().error;
}

void setFoldersForTesting(const std::optional<QStringList>& folders)
{
    State& s = state();
    s.foldersForTesting = folders;
    s.tried = false;
    s.factory = nullptr;
    s.error.clear();
}
} // namespace WebEngineLoader
