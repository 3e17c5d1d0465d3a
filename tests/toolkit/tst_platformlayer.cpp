// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBoxScript.h"
#include "toolkit/Codepage.h"
#include "toolkit/MessageBox.h"
#include "toolkit/OpenInBrowser.h"
#include "toolkit/VbColor.h"

#include <QApplication>
#include <QDesktopServices>
#include <QPalette>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

// Stands in for the browser: records the addresses it is given.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened.append(url); }
};

class TestPlatformLayer : public QObject
{
    Q_OBJECT

private slots:
    // Plain colours are 0xBBGGRR and go both ways; a system colour, the high bit set (also as a
    // signed value), is the palette's.
    void colours_data()
    {
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QColor>("color");
        const QPalette palette = QApplication::palette();
        QTest::newRow("red is the low byte") << qint64(0x0000FF) << QColor(255, 0, 0);
        QTest::newRow("blue is the high byte") << qint64(0xFF0000) << QColor(0, 0, 255);
        QTest::newRow("white is no system colour") << qint64(16777215) << QColor(255, 255, 255);
        QTest::newRow("window, as a signed value") << qint64(-2147483643) << palette.color(QPalette::Base);
        QTest::newRow("button face, as a signed value") << qint64(-2147483633) << palette.color(QPalette::Button);
        QTest::newRow("button text") << qint64(0x80000012) << palette.color(QPalette::ButtonText);
        QTest::newRow("highlight") << qint64(0x8000000D) << palette.color(QPalette::Highlight);
    }

    void colours()
    {
        QFETCH(qint64, value);
        QFETCH(QColor, color);
        QCOMPARE(VbColor::toQColor(value), color);
        if (value >= 0 && value <= 0xFFFFFF)
            QCOMPARE(VbColor::fromQColor(color), value);
    }

    void messageBoxTitles()
    {
        QCoreApplication::setApplicationName(u"Testbote"_s);
        MessageBoxScript script;
        script.answer(MessageBox::Answer::No);
        script.answer(MessageBox::Answer::Ok);
        QCOMPARE(MessageBox::show(nullptr, u"Wollen Sie?"_s, MessageBox::Buttons::YesNo, MessageBox::Icon::Question,
                                  u"Titel"_s),
                 MessageBox::Answer::No);
        QCOMPARE(script.last().title, u"Titel"_s);
        QCOMPARE(script.last().icon, MessageBox::Icon::Question);
        // An empty title shows the application's name.
        MessageBox::show(nullptr, u"x"_s);
        QCOMPARE(script.last().title, u"Testbote"_s);
    }

    // A real box left by Esc or by its close box, without a button chosen: Cancel where the box
    // has one, No where it asks Yes or No, Ok where Ok is all it has. Never Yes.
    void messageBoxLeftWithoutAButton_data()
    {
        QTest::addColumn<MessageBox::Buttons>("buttons");
        QTest::addColumn<bool>("esc"); // otherwise the close box
        QTest::addColumn<MessageBox::Answer>("answer");
        QTest::newRow("yes or no, Esc") << MessageBox::Buttons::YesNo << true << MessageBox::Answer::No;
        QTest::newRow("yes or no, close box") << MessageBox::Buttons::YesNo << false << MessageBox::Answer::No;
        QTest::newRow("yes, no or cancel, Esc")
            << MessageBox::Buttons::YesNoCancel << true << MessageBox::Answer::Cancel;
        QTest::newRow("yes, no or cancel, close box")
            << MessageBox::Buttons::YesNoCancel << false << MessageBox::Answer::Cancel;
        QTest::newRow("ok or cancel, close box")
            << MessageBox::Buttons::OkCancel << false << MessageBox::Answer::Cancel;
        QTest::newRow("ok alone, Esc") << MessageBox::Buttons::Ok << true << MessageBox::Answer::Ok;
    }

    void messageBoxLeftWithoutAButton()
    {
        QFETCH(MessageBox::Buttons, buttons);
        QFETCH(bool, esc);
        QFETCH(MessageBox::Answer, answer);
        MessageBoxScript script;
        script.actOnRealBox(esc ? &MessageBoxScript::pressEsc : &MessageBoxScript::closeByItsCloseBox);
        QCOMPARE(MessageBox::show(nullptr, u"Wollen Sie?"_s, buttons, MessageBox::Icon::Question), answer);
        QCOMPARE(script.realAnswers(), QList<MessageBox::Answer> { answer });
    }

    // Addresses go on the wire in the code page of the bodies, whatever the program wrote into them.
    void urlBytes_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QByteArray>("encoded");
        QTest::newRow("Windows-1252 bytes; escapes stay, a blank becomes %20, a plus stays")
            << u"http://h/p?n=M%FCller&p=Bär€ b+c"_s << QByteArray("http://h/p?n=M%FCller&p=B%E4r%80%20b+c");
        QTest::newRow("a lone percent sign leaves the other escapes alone")
            << u"http://h/p?a=100%&b=%20ä"_s << QByteArray("http://h/p?a=100%25&b=%20%E4");
        QTest::newRow("characters beyond the code page, one of them a surrogate pair")
            << u"http://h/p?x=Ω😀y"_s << QByteArray("http://h/p?x=%3F%3Fy");
    }

    void urlBytes()
    {
        QFETCH(QString, url);
        QFETCH(QByteArray, encoded);
        QCOMPARE(Codepage::toUrl(url).toEncoded(), encoded);
    }

    void openInBrowser()
    {
        UrlCatcher catcher;
        QDesktopServices::setUrlHandler(u"http"_s, &catcher, "open");
        MessageBoxScript script;
        QVERIFY(tools::OpenInBrowser(u"http://127.0.0.1:9/a%20b"_s));
        QDesktopServices::unsetUrlHandler(u"http"_s);
        QCOMPARE(catcher.opened, QList<QUrl> { QUrl::fromEncoded("http://127.0.0.1:9/a%20b") });
        QCOMPARE(script.count(), 0);
    }
};

QTEST_MAIN(TestPlatformLayer)
#include "tst_platformlayer.moc"
