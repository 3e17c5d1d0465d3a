// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolkit/CTooltip.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

class TestCTooltip : public QObject
{
    Q_OBJECT

    static int tipWindows()
    {
        int count = 0;
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->objectName() == u"balloon")
                ++count;
        }
        return count;
    }

private slots:
    void defaults()
    {
        CTooltip tip;
        QCOMPARE(tip.DelayTime(), 500);
        QCOMPARE(tip.VisibleTime(), 5000);
        QCOMPARE(tip.Style(), 0);
        QVERIFY(!tip.BackColor().isValid());
    }

    void createTwiceLeavesOneTip()
    {
        QWidget control;
        control.show();
        CTooltip tip;
        tip.setTipText(QStringLiteral("vorher gesetzt"));
        tip.Create(&control);
        tip.Create(&control);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(tipWindows(), 1);
        QCOMPARE(tip.tipWindow()->findChild<QLabel*>(QStringLiteral("tipText"))->text(),
                 QStringLiteral("vorher gesetzt"));
        tip.Destroy();
        QCOMPARE(tipWindows(), 0);
    }

    void showsAfterTheDelayAndFollowsItsTexts()
    {
        QWidget control;
        control.resize(100, 30);
        control.show();
        CTooltip tip;
        tip.setDelayTime(10);
        tip.setVisibleTime(100000);
        tip.setTitle(QStringLiteral("Guthaben"));
        tip.setTipText(QStringLiteral("eins\r\nzwei"));
        tip.Create(&control);
        QVERIFY(!tip.isTipVisible());
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(&control, &enter);
        QTRY_VERIFY(tip.isTipVisible());
        auto* text = tip.tipWindow()->findChild<QLabel*>(QStringLiteral("tipText"));
        QCOMPARE(text->text(), QStringLiteral("eins\nzwei"));
        tip.setTipText(QStringLiteral("neu"));
        QCOMPARE(text->text(), QStringLiteral("neu"));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&control, &leave);
        QVERIFY(!tip.isTipVisible());
    }

    void hidesAfterItsVisibleTime()
    {
        QWidget control;
        control.show();
        CTooltip tip;
        tip.setDelayTime(0);
        tip.setVisibleTime(20);
        tip.Create(&control);
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(&control, &enter);
        QTRY_VERIFY(tip.isTipVisible());
        QTRY_VERIFY(!tip.isTipVisible());
    }
};

QTEST_MAIN(TestCTooltip)
#include "tst_ctooltip.moc"
