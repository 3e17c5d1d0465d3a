// SPDX-License-Identifier: GPL-3.0-or-later
// The windows on an office laptop's 1366 x 768 screen with a 14 pt desktop font: each grows with
// its texts, none of them is cut, and each still fits the screen.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "WindowsByName.h"
#include "bulk/frmListCheck.h"
#include "bulk/frmMultiSMS.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QString nameOf(const QWidget* w)
{
    const QWidget* named = w;
    while (named->objectName().isEmpty() && named->parentWidget())
        named = named->parentWidget();
    return named->objectName();
}

// The texts of the window that don't get the room they need: "name "text" w x h < w x h".
QStringList cutTexts(QWidget* window)
{
    QStringList cut;
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window) || w->window() != window)
            continue;
        QString text;
        QSize need;
        if (auto* label = qobject_cast<QLabel*>(w)) {
            text = label->text();
            if (text.isEmpty())
                continue;
            need = label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->minimumSizeHint();
        } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
            text = button->text();
            if (text.isEmpty())
                continue;
            need = button->minimumSizeHint();
        } else {
            continue;
        }
        if (w->width() < need.width() || w->height() < need.height())
            cut.append(u"%1 \"%2\" %3x%4 < %5x%6"_s.arg(nameOf(w), text.left(30))
                           .arg(w->width())
                           .arg(w->height())
                           .arg(need.width())
                           .arg(need.height()));
    }
    return cut;
}
} // namespace

class TestDesktops : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

private slots:
    void initTestCase()
    {
        // A 14 pt desktop font, as GNOME's or Plasma's settings give it to the program.
        QFont font = QApplication::font();
        font.setPointSize(14);
        QApplication::setFont(font);
        QCOMPARE(QGuiApplication::primaryScreen()->size(), QSize(1366, 768));
    }

    void init()
    {
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
    }

    void cleanup() { m_harness.reset(); }

    void wholeAndOnTheScreen_data()
    {
        // The window, then the buttons clicked one by one; the window is looked at after each.
        QTest::addColumn<QString>("steps");
        QTest::newRow("main window") << "frmMain";
        QTest::newRow("main window, MultiSMS") << "frmMain tbMultiSMS";
        QTest::newRow("MultiSMS editor") << "frmMultiSMS";
        QTest::newRow("MultiSMS log") << "frmMultiSMSLog";
        QTest::newRow("settings") << "frmOptionen tbKontodaten tbVersandoperationen tbQuellboteServer tbProxy "
                                     "tbAdressbuch tbSperrliste";
        QTest::newRow("scheduling") << "frmTimeControl";
        QTest::newRow("first start") << "frmFirstTime cmdNext optNewOld1";
        QTest::newRow("signature") << "frmSignaturen";
        QTest::newRow("password prompt") << "frmLogin";
        QTest::newRow("sent SMS") << "frmSentSms";
        QTest::newRow("list check") << "frmListCheck";
    }

    void wholeAndOnTheScreen()
    {
        QFETCH(QString, steps);
        QStringList choices = steps.split(u' ');
        const QString window = choices.takeFirst();
        frmMain* main = m_harness.loadMain();
        std::unique_ptr<QWidget> owned;
        RecipientTable table;
        table.addRow(u"Anna"_s, u"0049"_s, {}, {});
        QWidget* shown = openWindow(m_harness, window, owned);
        if (window == u"frmListCheck") {
            owned = frmListCheck::forTesting(
                table,
                [] {
                    return QList<ListCheck::Finding> { { 0, ListCheck::Kind::BadNumber,
                                                         ListCheck::numberProblem(u"0049"_s) } };
                },
                { { 4, u"Ben"_s, u"4,91711E+11"_s, u"Die Nummer hat Excel zerstört"_s } }, main);
            shown = owned.get();
        }
        QVERIFY2(shown, qPrintable(window));
        shown->show();
        QVERIFY(QTest::qWaitForWindowExposed(shown));
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const auto look = [&](const QString& step) {
            QCoreApplication::processEvents();
            QRect frame = shown->frameGeometry();
            // Beside a main window this wide, the editor can't stand whole without covering the
            // command buttons: it reaches beyond the screen instead, but is no larger than it.
            if (shown == frmMultiSMS::loaded())
                frame.moveTopLeft(screen.topLeft());
            QVERIFY2(screen.contains(frame),
                     qPrintable(u"%1: %2x%3 at %4,%5"_s.arg(step)
                                    .arg(frame.width())
                                    .arg(frame.height())
                                    .arg(frame.x())
                                    .arg(frame.y())));
            const QStringList cut = cutTexts(shown);
            QVERIFY2(cut.isEmpty(), qPrintable(step + u": "_s + cut.join(u"; "_s)));
        };
        look(window);
        for (const QString& choice : std::as_const(choices)) {
            QWidget* parent = choice == u"tbMultiSMS" ? static_cast<QWidget*>(main) : shown;
            auto* button = in<QAbstractButton>(parent, choice.toLatin1().constData());
            QVERIFY2(button, qPrintable(choice));
            button->click();
            look(choice);
            if (QTest::currentTestFailed())
                return;
        }
    }
};

QTEST_MAIN(TestDesktops)
#include "tst_desktops.moc"
