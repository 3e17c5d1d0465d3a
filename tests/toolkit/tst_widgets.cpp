// SPDX-License-Identifier: GPL-3.0-or-later
#include "DarkDesktop.h"
#include "toolkit/CTooltip.h"
#include "toolkit/FieldColors.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/TextContrast.h"
#include "toolkit/ToolbarButton.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

// The toolkit's own widgets: flat buttons, marked fields, balloon hints and the message box.
class TestWidgets : public QObject
{
    Q_OBJECT

    static int tipWindows()
    {
        int count = 0;
        for (QWidget* w : QApplication::topLevelWidgets())
            count += w->objectName() == u"balloon";
        return count;
    }

    static void enter(QWidget* control)
    {
        QEnterEvent event(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(control, &event);
    }

    static QLabel* tipText(const CTooltip& tip) { return tip.tipWindow()->findChild<QLabel*>(u"tipText"_s); }

    // The most that any pixel of what a widget shows stands out from its background: the text's.
    static double strongestContrast(QWidget* widget, const QRect& area, const QColor& background)
    {
        const QImage image = widget->grab(area).toImage();
        double strongest = 1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                strongest
                    = qMax(strongest, TextContrast::ratio(image.pixel(x, y) & 0xFFFFFF, background.rgb() & 0xFFFFFF));
        }
        return strongest;
    }

private slots:
    // On a dark desktop, the desktop's light text painted on the program's own light backgrounds
    // turns dark enough to read.
    void darkDesktopTextStaysReadable_data()
    {
        QTest::addColumn<bool>("field");
        QTest::addColumn<QColor>("background");
        QTest::newRow("field in error") << true << FieldColors::LightRed;
        QTest::newRow("fields that differ") << true << FieldColors::LightYellow;
        QTest::newRow("chosen pane's button") << false << QColor(0xCB, 0xD7, 0xFF);
        QTest::newRow("pane's button") << false << QColor(Qt::white);
    }

    void darkDesktopTextStaysReadable()
    {
        QFETCH(bool, field);
        QFETCH(QColor, background);
        const DarkDesktop dark;
        std::unique_ptr<QWidget> widget;
        if (field) {
            auto* edit = new QLineEdit(u"Fehler"_s);
            widget.reset(edit);
            // No cursor, which is not text.
            edit->setFocusPolicy(Qt::NoFocus);
            FieldColors::setBackground(edit, background);
        } else {
            auto* button = new TreeButton;
            widget.reset(button);
            button->setCaption(u"Kontodaten"_s);
            button->setThemedBackColor(background);
        }
        widget->resize(widget->sizeHint().expandedTo(QSize(120, 30)));
        widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(widget.get()));
        // Inside the frame, where only the text stands on the background.
        const QRect area = widget->rect().adjusted(4, 4, -4, -4);
        QVERIFY2(strongestContrast(widget.get(), area, background) >= TextContrast::Readable,
                 qPrintable(QString::number(strongestContrast(widget.get(), area, background))));
    }

    void keyboardActivationAndAccessibleName_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("space") << int(Qt::Key_Space);
        QTest::newRow("enter") << int(Qt::Key_Return);
    }

    void keyboardActivationAndAccessibleName()
    {
        QFETCH(int, key);
        ToolbarButton button;
        QCOMPARE(button.Caption(), u"Quellbote"_s);
        button.setCaption(u"Senden"_s);
        QCOMPARE(button.accessibleName(), u"Senden"_s);
        QCOMPARE(button.focusPolicy(), Qt::StrongFocus);
        button.show();
        QSignalSpy clicked(&button, &QAbstractButton::clicked);
        button.setFocus();
        QTest::keyClick(&button, Qt::Key(key));
        QTRY_COMPARE(clicked.count(), 1);
    }

    void clickComesOnRelease_data()
    {
        QTest::addColumn<int>("mouseButton");
        QTest::addColumn<QPoint>("releaseAt");
        QTest::newRow("left, let go on the button") << int(Qt::LeftButton) << QPoint(10, 10);
        QTest::newRow("left, let go outside") << int(Qt::LeftButton) << QPoint(400, -50);
        QTest::newRow("middle button, let go outside") << int(Qt::MiddleButton) << QPoint(-20, 300);
    }

    void clickComesOnRelease()
    {
        QFETCH(int, mouseButton);
        QFETCH(QPoint, releaseAt);
        ToolbarButton button;
        button.resize(120, 30);
        button.show();
        QSignalSpy clicked(&button, &QAbstractButton::clicked);
        QTest::mousePress(&button, Qt::MouseButton(mouseButton), {}, QPoint(10, 10));
        QVERIFY(button.isDown());
        QCOMPARE(clicked.count(), 0);
        QTest::mouseRelease(&button, Qt::MouseButton(mouseButton), {}, releaseAt);
        QVERIFY(!button.isDown());
        QCOMPARE(clicked.count(), 1);
    }

    // The limit counts an emoji once, as it goes out, and never leaves half of one in the box.
    void messageBoxLimit_data()
    {
        QTest::addColumn<bool>("pasted");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kept");
        QTest::newRow("set: an emoji counts one") << false << u"ab😀"_s << u"ab😀"_s;
        QTest::newRow("set: the cut takes a whole emoji") << false << u"ab😀😀"_s << u"ab😀"_s;
        QTest::newRow("set: a line break counts two") << false << u"a\nbc"_s << u"a\r\n"_s;
        QTest::newRow("pasted: the cut takes a whole emoji") << true << u"😀😀😀😀"_s << u"😀😀😀"_s;
    }

    void messageBoxLimit()
    {
        QFETCH(bool, pasted);
        QFETCH(QString, text);
        QFETCH(QString, kept);
        SmsTextEdit box;
        box.setMaxLength(3);
        if (pasted)
            box.replaceSelection(text);
        else
            box.setText(text);
        QCOMPARE(box.text(), kept);
    }

    void treeButtonIgnoresClicksWhileDisabled()
    {
        TreeButton button;
        button.setCaption(u"Kontodaten"_s);
        button.resize(button.sizeHint());
        button.show();
        QSignalSpy clicked(&button, &QAbstractButton::clicked);
        QTest::mouseClick(&button, Qt::LeftButton);
        button.setEnabled(false);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(button.sizeHint().height() > button.sizeHint().width() / 4);
    }

    void hotStateFollowsTheMouse()
    {
        ToolbarButton button;
        button.resize(120, 30);
        button.show();
        QVERIFY(!button.isHot());
        enter(&button);
        QVERIFY(button.isHot());
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        QVERIFY(!button.isHot());
    }

    void createTwiceLeavesOneTip()
    {
        QWidget control;
        control.show();
        CTooltip tip;
        QCOMPARE(tip.DelayTime(), 500);
        QCOMPARE(tip.VisibleTime(), 5000);
        tip.setTipText(u"vorher gesetzt"_s);
        tip.Create(&control);
        tip.Create(&control);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(tipWindows(), 1);
        QCOMPARE(tipText(tip)->text(), u"vorher gesetzt"_s);
        tip.Destroy();
        QCOMPARE(tipWindows(), 0);
    }

    void showsAfterTheDelayHidesAfterItsTime()
    {
        QWidget control;
        control.resize(100, 30);
        control.show();
        CTooltip tip;
        tip.setDelayTime(10);
        tip.setVisibleTime(100000);
        tip.setTitle(u"Guthaben"_s);
        tip.setTipText(u"eins\r\nzwei"_s);
        tip.Create(&control);
        enter(&control);
        QVERIFY(!tip.isTipVisible());
        QTRY_VERIFY(tip.isTipVisible());
        QCOMPARE(tipText(tip)->text(), u"eins\nzwei"_s);
        tip.setTipText(u"neu"_s);
        QCOMPARE(tipText(tip)->text(), u"neu"_s);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&control, &leave);
        QVERIFY(!tip.isTipVisible());
        // The times take effect at the next Create.
        tip.setDelayTime(0);
        tip.setVisibleTime(20);
        tip.Create(&control);
        enter(&control);
        QTRY_VERIFY(tip.isTipVisible());
        QTRY_VERIFY(!tip.isTipVisible());
    }
};

QTEST_MAIN(TestWidgets)
#include "tst_widgets.moc"
