// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolkit/CTooltip.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;

class TestCTooltip : public QObject
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

private slots:
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

QTEST_MAIN(TestCTooltip)
#include "tst_ctooltip.moc"
