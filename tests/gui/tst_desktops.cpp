// SPDX-License-Identifier: GPL-3.0-or-later
// The windows with a 14 pt desktop font on an office laptop's 1366 x 768 screen, and on a 1920 x
// 1080 screen at 150 % (the test runs on each): each grows with its texts, none of them is cut or
// covered by another, each still fits the screen, and the MultiSMS editor stands whole beside the
// main window.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "WindowsByName.h"
#include "bulk/frmListCheck.h"
#include "bulk/frmMultiSMS.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
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

// Where a control can be seen in its window: what a scrolled area shows of it.
QRect seen(const QWidget* w)
{
    const QRect visible = w->visibleRegion().boundingRect();
    return visible.isEmpty() ? QRect() : visible.translated(w->mapTo(w->window(), QPoint(0, 0)));
}

// Controls of the window that stand over one another ("name / name"): rows given less height than
// they need run into the next.
QStringList overlaps(QWidget* window)
{
    QList<QWidget*> controls;
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (w->isVisibleTo(window) && w->window() == window
            && (qobject_cast<QLabel*>(w) || qobject_cast<QAbstractButton*>(w) || qobject_cast<QLineEdit*>(w)))
            controls << w;
    }
    QStringList found;
    for (qsizetype i = 0; i < controls.size(); ++i) {
        const QRect a = seen(controls[i]);
        for (qsizetype k = i + 1; k < controls.size(); ++k) {
            if (controls[i]->isAncestorOf(controls[k]) || controls[k]->isAncestorOf(controls[i]))
                continue;
            const QRect b = seen(controls[k]);
            if (a.intersects(b))
                found << nameOf(controls[i]) + u" / "_s + nameOf(controls[k]);
        }
    }
    return found;
}
} // namespace

class TestDesktops : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

private slots:
    void initTestCase()
    {
        // An office laptop (1366 x 768) with a 14 pt desktop font, as GNOME's or Plasma's settings
        // give it to the program; or 1920 x 1080 at 150 % (1280 x 720 logical pixels, as 2560 x 1440
        // at 200 %) with the usual font.
        const QSize screen = QGuiApplication::primaryScreen()->size();
        QVERIFY2(screen == QSize(1366, 768) || screen == QSize(1280, 720),
                 qPrintable(u"%1 x %2"_s.arg(screen.width()).arg(screen.height())));
        if (screen == QSize(1366, 768)) {
            QFont font = QApplication::font();
            font.setPointSize(14);
            QApplication::setFont(font);
        }
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
        QTest::newRow("main window, MultiSMS and back") << "frmMain tbMultiSMS tbMultiSMS";
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
        const auto whole = [&screen](const QString& step, const QWidget* w) {
            const QRect frame = w->frameGeometry();
            QVERIFY2(screen.contains(frame),
                     qPrintable(u"%1: %2 %3x%4 at %5,%6"_s.arg(step, w->objectName())
                                    .arg(frame.width())
                                    .arg(frame.height())
                                    .arg(frame.x())
                                    .arg(frame.y())));
        };
        const auto look = [&](const QString& step) {
            QCoreApplication::processEvents();
            whole(step, shown);
            // The editor stands whole beside the main window: the main window's rows wrap for it.
            if (const frmMultiSMS* editor = frmMultiSMS::loaded(); editor && editor->isVisible()) {
                whole(step, editor);
                QVERIFY2(!editor->frameGeometry().intersects(main->frameGeometry()), qPrintable(step));
                const QStringList mainCut = cutTexts(main) + overlaps(main);
                QVERIFY2(mainCut.isEmpty(), qPrintable(step + u": "_s + mainCut.join(u"; "_s)));
            }
            const QStringList cut = cutTexts(shown) + overlaps(shown);
            QVERIFY2(cut.isEmpty(), qPrintable(step + u": "_s + cut.join(u"; "_s)));
        };
        look(window);
        const QSize before = main->size();
        for (const QString& choice : std::as_const(choices)) {
            QWidget* parent = choice == u"tbMultiSMS" ? static_cast<QWidget*>(main) : shown;
            auto* button = in<QAbstractButton>(parent, choice.toLatin1().constData());
            QVERIFY2(button, qPrintable(choice));
            button->click();
            look(choice);
            if (QTest::currentTestFailed())
                return;
        }
        // Once the side window is gone, the main window takes its own width again.
        if (!frmMultiSMS::loaded() || !frmMultiSMS::loaded()->isVisible())
            QCOMPARE(main->size(), before);
    }
};

QTEST_MAIN(TestDesktops)
#include "tst_desktops.moc"
