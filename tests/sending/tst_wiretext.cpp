// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/WireText.h"
#include "toolkit/Codepage.h"

#include <QTest>

using namespace WireText;
using namespace Qt::StringLiterals;

namespace {
const QString loneHigh(QChar(0xD83D));
const QString loneLow(QChar(0xDE00));
} // namespace

// What of a message reaches the gateway, and the plain letters offered for the rest.
class TestWireText : public QObject
{
    Q_OBJECT

private slots:
    void wireForm_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("wire");
        const QString cp1252 = u"Grüße, „Tür“ – 10 € … ‘ja’ — Œ™"_s;
        QTest::newRow("everything Windows-1252 holds stays") << cp1252 << cp1252;
        QTest::newRow("Polish letters") << u"Łódź"_s << u"?ód?"_s;
        QTest::newRow("an emoji is one character") << u"Hi 😀!"_s << u"Hi ?!"_s;
        QTest::newRow("two emoji side by side") << u"😀🙂"_s << u"??"_s;
        QTest::newRow("Chinese") << u"中文"_s << u"??"_s;
        QTest::newRow("a high surrogate alone keeps the next letter") << loneHigh + u"a"_s << u"?a"_s;
        QTest::newRow("a low surrogate alone") << u"a"_s + loneLow << u"a?"_s;
        QTest::newRow("a high surrogate at the end") << u"a"_s + loneHigh << u"a?"_s;
    }

    // The size counts the wire form, and the bytes of the request body read back as that form.
    void wireForm()
    {
        QFETCH(QString, text);
        QFETCH(QString, wire);
        QCOMPARE(WireText::wireForm(text), wire);
        QCOMPARE(wireLength(text), wire.size());
        QCOMPARE(Codepage::fromWindows1252(Codepage::toWindows1252(text)), wire);
        QCOMPARE(isSendable(text), text == wire);
    }

    void unsendable_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("characters");
        QTest::newRow("none") << u"Grüße „x“ € …"_s << QStringList();
        QTest::newRow("each once, in the order first met") << u"śŁaśŁź"_s << QStringList { u"ś"_s, u"Ł"_s, u"ź"_s };
        QTest::newRow("an emoji is one character") << u"😀x😀🙂"_s << QStringList { u"😀"_s, u"🙂"_s };
        QTest::newRow("a surrogate alone") << loneHigh + u"a"_s << QStringList { loneHigh };
    }

    void unsendable()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, characters);
        QCOMPARE(WireText::unsendable(text), characters);
    }

    void transliterate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("plain");
        const QString cp1252 = u"ä ö ü ß € „ “ ” ‘ ’ – — … Ø ½"_s;
        QTest::newRow("what Windows-1252 holds is untouched") << cp1252 << cp1252;
        QTest::newRow("Polish") << u"Łódź, Gdańsk"_s << u"Lódz, Gdansk"_s;
        QTest::newRow("Hungarian") << u"Erdős Pál"_s << u"Erdos Pál"_s;
        QTest::newRow("signs beyond the code page, quote inside stays")
            << u"a\u2010b \u2212 5 \u201Fx\u201D"_s << u"a-b - 5 \"x\u201D"_s;
        QTest::newRow("Cyrillic word") << u"Привет"_s << u"Privet"_s;
        QTest::newRow("emoji removed") << u"Hallo 😀!"_s << u"Hallo !"_s;
        QTest::newRow("emoji with its variation selector removed") << u"Ich ❤\uFE0F dich"_s << u"Ich  dich"_s;
        QTest::newRow("Chinese removed, not turned into Pinyin") << u"中文 ok"_s << u" ok"_s;
        QTest::newRow("letter and separate accent become the held letter") << u"Cafe\u0301"_s << u"Café"_s;
        QTest::newRow("a surrogate alone is removed") << loneHigh + u"a"_s << u"a"_s;
    }

    void transliterate()
    {
        QFETCH(QString, text);
        QFETCH(QString, plain);
        const QString result = WireText::transliterate(text);
        QCOMPARE(result, plain);
        QVERIFY(isSendable(result));
    }

    void unsendableNotice_data()
    {
        QTest::addColumn<QStringList>("characters");
        QTest::addColumn<QString>("notice");
        const QString many = u"Diese Zeichen können nicht per SMS übertragen werden und kommen jeweils als „?“ an: "_s;
        QTest::newRow("none") << QStringList() << QString();
        QTest::newRow("one") << QStringList { u"Ł"_s }
                             << u"Dieses Zeichen kann nicht per SMS übertragen werden und kommt als „?“ an: Ł"_s;
        QTest::newRow("three") << QStringList { u"Ł"_s, u"ś"_s, u"😀"_s } << many + u"Ł, ś, 😀"_s;
        QTest::newRow("invisible ones by their code") << QStringList { u"\u200D"_s, u"\u2009"_s, u"\u0301"_s, loneHigh }
                                                      << many + u"U+200D, U+2009, U+0301, U+D83D"_s;
        QStringList twelve;
        for (char16_t c = u'α'; twelve.size() < 12; ++c)
            twelve.append(QString(QChar(c)));
        QTest::newRow("ten named, the rest counted")
            << twelve << many + u"α, β, γ, δ, ε, ζ, η, θ, ι, κ und 2 weitere"_s;
    }

    void unsendableNotice()
    {
        QFETCH(QStringList, characters);
        QFETCH(QString, notice);
        QCOMPARE(WireText::unsendableNotice(characters), notice);
    }
};

QTEST_GUILESS_MAIN(TestWireText)
#include "tst_wiretext.moc"
