// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBoxScript.h"
#include "toolkit/Codepage.h"
#include "toolkit/MessageBox.h"
#include "toolkit/OpenInBrowser.h"
#include "toolkit/Twips.h"
#include "toolkit/VbColor.h"

#include <QApplication>
#include <QDesktopServices>
#include <QPalette>
#include <QTest>
#include <QUrl>

// Stands in for the browser: records the addresses it is given.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    explicit UrlCatcher(QList<QUrl>* opened)
        : m_opened(opened)
    {
    }

public slots:
    void open(const QUrl& url) { m_opened->append(url); }

private:
    QList<QUrl>* m_opened;
};

class TestPlatformLayer : public QObject
{
    Q_OBJECT

private slots:
    void plainColours_data()
    {
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QColor>("color");
        QTest::newRow("black") << qint64(0) << QColor(0, 0, 0);
        QTest::newRow("white") << qint64(16777215) << QColor(255, 255, 255);
        QTest::newRow("red is the low byte") << qint64(0x0000FF) << QColor(255, 0, 0);
        QTest::newRow("blue is the high byte") << qint64(0xFF0000) << QColor(0, 0, 255);
        QTest::newRow("light red of marked fields") << qint64(0xC0C0FF) << QColor(255, 192, 192);
        QTest::newRow("tree button highlight") << qint64(16766923) << QColor(0xCB, 0xD7, 0xFF);
    }

    void plainColours()
    {
        QFETCH(qint64, value);
        QFETCH(QColor, color);
        QCOMPARE(VbColor::toQColor(value), color);
        QCOMPARE(VbColor::fromQColor(color), value);
    }

    void systemColours_data()
    {
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("role");
        QTest::newRow("window, as a signed value") << qint64(-2147483643) << "Window" << int(QPalette::Base);
        QTest::newRow("button face, as a signed value") << qint64(-2147483633) << "ButtonFace" << int(QPalette::Button);
        QTest::newRow("button text") << qint64(0x80000012) << "ButtonText" << int(QPalette::ButtonText);
        QTest::newRow("highlight") << qint64(0x8000000D) << "Highlight" << int(QPalette::Highlight);
    }

    void systemColours()
    {
        QFETCH(qint64, value);
        QFETCH(QString, name);
        QFETCH(int, role);
        QCOMPARE(VbColor::systemColorName(int(value & 0xFF)), name);
        QCOMPARE(VbColor::toQColor(value), QApplication::palette().color(QPalette::ColorRole(role)));
    }

    void systemColourNamesEndAtInfoBackground()
    {
        QCOMPARE(VbColor::systemColorName(0), QStringLiteral("Scrollbar"));
        QCOMPARE(VbColor::systemColorName(24), QStringLiteral("InfoBackground"));
        QCOMPARE(VbColor::systemColorName(25), QString());
        QCOMPARE(VbColor::systemColorName(-1), QString());
    }

    void twips()
    {
        QCOMPARE(Twips::toPixels(15), 1);
        QCOMPARE(Twips::toPixels(2580), 172);
        QCOMPARE(Twips::fromPixels(36), 540);
    }

    void messageBoxGoesThroughTheScript()
    {
        MessageBoxScript script;
        script.answer(MessageBox::Answer::No);
        const auto answer = MessageBox::show(nullptr, QStringLiteral("Wollen Sie?"), MessageBox::Buttons::YesNo,
                                             MessageBox::Icon::Question, QStringLiteral("Titel"));
        QCOMPARE(answer, MessageBox::Answer::No);
        QCOMPARE(script.count(), 1);
        QCOMPARE(script.last().title, QStringLiteral("Titel"));
        QCOMPARE(script.last().text, QStringLiteral("Wollen Sie?"));
        QCOMPARE(script.last().icon, MessageBox::Icon::Question);
        QCOMPARE(script.last().buttons, MessageBox::Buttons::YesNo);
    }

    void emptyTitleShowsTheApplicationName()
    {
        QCoreApplication::setApplicationName(QStringLiteral("Testbote"));
        MessageBoxScript script;
        script.answer(MessageBox::Answer::Ok);
        MessageBox::show(nullptr, QStringLiteral("x"));
        QCOMPARE(script.last().title, QStringLiteral("Testbote"));
    }

    // Addresses go on the wire in the code page of the bodies, whatever the program wrote into them.
    void urlBytes_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QByteArray>("encoded");
        QTest::newRow("umlaut and euro sign as their Windows-1252 bytes")
            << QStringLiteral("http://h/c?email=a@b&password=Bär€")
            << QByteArray("http://h/c?email=a@b&password=B%E4r%80");
        QTest::newRow("escapes stay, a blank becomes %20, a plus stays")
            << QStringLiteral("http://h/p?n=M%FCller&p=a b+c") << QByteArray("http://h/p?n=M%FCller&p=a%20b+c");
        QTest::newRow("a lone percent sign leaves the other escapes alone")
            << QStringLiteral("http://h/p?a=100%&b=%20ä") << QByteArray("http://h/p?a=100%25&b=%20%E4");
        QTest::newRow("characters beyond the code page, one of them a surrogate pair")
            << QStringLiteral("http://h/p?x=Ω😀y") << QByteArray("http://h/p?x=%3F%3Fy");
    }

    void urlBytes()
    {
        QFETCH(QString, url);
        QFETCH(QByteArray, encoded);
        QCOMPARE(Codepage::toUrl(url).toEncoded(), encoded);
    }

    void openInBrowser()
    {
        QList<QUrl> opened;
        UrlCatcher catcher(&opened);
        QDesktopServices::setUrlHandler(QStringLiteral("http"), &catcher, "open");
        MessageBoxScript script;
        QVERIFY(tools::OpenInBrowser(QStringLiteral("http://127.0.0.1:9/a%20b")));
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().toEncoded(), QByteArray("http://127.0.0.1:9/a%20b"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("http"));
        QCOMPARE(script.count(), 0);
    }
};

QTEST_MAIN(TestPlatformLayer)
#include "tst_platformlayer.moc"
