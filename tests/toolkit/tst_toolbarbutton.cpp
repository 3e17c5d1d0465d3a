// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolkit/ToolbarButton.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class TestToolbarButton : public QObject
{
    Q_OBJECT

private slots:
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
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(&button, &enter);
        QVERIFY(button.isHot());
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        QVERIFY(!button.isHot());
    }
};

QTEST_MAIN(TestToolbarButton)
#include "tst_toolbarbutton.moc"
