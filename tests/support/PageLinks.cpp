// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageLinks.h"

#include "toolkit/WebView.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <optional>

namespace PageLinks {
namespace {
// Where the link stands in the view, in the middle of its first box; brought into view first.
std::optional<QPoint> linkCentre(QWebEngineView* engine, const QString& linkText)
{
    const QString text = QString::fromUtf8(QJsonDocument(QJsonArray { linkText }).toJson(QJsonDocument::Compact));
    const QString script = QStringLiteral("(function (t) {"
                                          "  var link = Array.prototype.find.call(document.querySelectorAll('a'),"
                                          "      function (a) { return a.textContent.trim() === t; });"
                                          "  if (!link) return null;"
                                          "  link.scrollIntoView({block: 'center'});"
                                          "  var r = link.getClientRects()[0];"
                                          "  return [r.left + r.width / 2, r.top + r.height / 2];"
                                          "})(%1[0])")
                               .arg(text);
    std::optional<QPoint> result;
    bool answered = false;
    QEventLoop loop;
    QPointer<QWebEngineView> alive(engine);
    engine->page()->runJavaScript(script, [&](const QVariant& value) {
        const QVariantList point = value.toList();
        if (point.size() == 2)
            result = QPoint(qRound(point.at(0).toDouble()), qRound(point.at(1).toDouble()));
        answered = true;
        loop.quit();
    });
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    if (!answered)
        loop.exec();
    return result;
}
} // namespace

QString waitForText(WebView* view, const QString& expected, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired()) {
        if (auto* engine = view->findChild<QWebEngineView*>()) {
            QString text;
            QEventLoop loop;
            engine->page()->runJavaScript(QStringLiteral("document.body ? document.body.innerText : ''"),
                                          [&](const QVariant& value) {
                                              text = value.toString();
                                              loop.quit();
                                          });
            QTimer::singleShot(5000, &loop, &QEventLoop::quit);
            loop.exec();
            if (text.contains(expected))
                return text;
        }
        QTest::qWait(100);
    }
    return {};
}

bool waitForLink(WebView* view, const QString& linkText, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired()) {
        if (auto* engine = view->findChild<QWebEngineView*>(); engine && linkCentre(engine, linkText))
            return true;
        QTest::qWait(100);
    }
    return false;
}

bool click(WebView* view, const QString& linkText)
{
    auto* engine = view->findChild<QWebEngineView*>();
    if (!engine)
        return false;
    const std::optional<QPoint> at = linkCentre(engine, linkText);
    // The engine takes its input through the widget it draws into.
    QWidget* target = engine->focusProxy() ? engine->focusProxy() : engine;
    if (!at)
        return false;
    QTest::mouseMove(target, *at);
    QTest::mouseClick(target, Qt::LeftButton, {}, *at);
    return true;
}
} // namespace PageLinks
