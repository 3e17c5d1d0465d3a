// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageLinks.h"

#include "toolkit/WebView.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <optional>

using namespace Qt::StringLiterals;

namespace PageLinks {
namespace {
// What script gives in the page that view shows; invalid while there is no page.
QVariant evaluate(WebView* view, const QString& script)
{
    QVariant result;
    auto* engine = view->findChild<QWebEngineView*>();
    if (!engine)
        return result;
    bool answered = false;
    QEventLoop loop;
    engine->page()->runJavaScript(script, [&](const QVariant& value) {
        result = value;
        answered = true;
        loop.quit();
    });
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    if (!answered)
        loop.exec();
    return result;
}

// Where the link stands in the view, in the middle of its first box; brought into view first.
std::optional<QPoint> linkCentre(WebView* view, const QString& linkText)
{
    const QString script = u"(function (t) {"
                           "  var link = Array.prototype.find.call(document.querySelectorAll('a'),"
                           "      function (a) { return a.textContent.trim() === t; });"
                           "  if (!link) return null;"
                           "  link.scrollIntoView({block: 'center'});"
                           "  var r = link.getClientRects()[0];"
                           "  return [r.left + r.width / 2, r.top + r.height / 2];"
                           "})(%1[0])"_s.arg(QString::fromUtf8(QJsonDocument(QJsonArray { linkText }).toJson()));
    const QVariantList point = evaluate(view, script).toList();
    if (point.size() != 2)
        return std::nullopt;
    return QPoint(qRound(point.at(0).toDouble()), qRound(point.at(1).toDouble()));
}
} // namespace

QString waitForText(WebView* view, const QString& expected, int timeoutMs)
{
    for (const QDeadlineTimer deadline(timeoutMs); !deadline.hasExpired(); QTest::qWait(100)) {
        const QString text = evaluate(view, u"document.body ? document.body.innerText : ''"_s).toString();
        if (text.contains(expected))
            return text;
    }
    return {};
}

bool waitForLink(WebView* view, const QString& linkText, int timeoutMs)
{
    for (const QDeadlineTimer deadline(timeoutMs); !deadline.hasExpired(); QTest::qWait(100)) {
        if (linkCentre(view, linkText))
            return true;
    }
    return false;
}

bool click(WebView* view, const QString& linkText)
{
    const std::optional<QPoint> at = linkCentre(view, linkText);
    if (!at)
        return false;
    // The engine takes its input through the widget it draws into.
    auto* engine = view->findChild<QWebEngineView*>();
    QWidget* target = engine->focusProxy() ? engine->focusProxy() : engine;
    QTest::mouseMove(target, *at);
    QTest::mouseClick(target, Qt::LeftButton, {}, *at);
    return true;
}
} // namespace PageLinks
