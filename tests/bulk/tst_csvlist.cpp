// SPDX-License-Identifier: GPL-3.0-or-later
// Recipient lists as CSV files the common programs write: their headers, encodings, delimiters and
// quoting, numbers as people type them, and files that are no list.
#include "bulk/CsvList.h"
#include "bulk/RecipientTable.h"
#include "toolkit/Codepage.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QByteArray windows1252(const QString& text)
{
    return Codepage::toWindows1252(text);
}

QByteArray utf16(const QString& text, bool littleEndian)
{
    QStringEncoder encoder(littleEndian ? QStringEncoder::Utf16LE : QStringEncoder::Utf16BE,
                           QStringEncoder::Flag::WriteBom);
    return encoder.encode(text);
}

// Rows as "Name|Nummer|Freitext1|Freitext2".
QStringList rowsOf(const QList<RecipientRow>& rows)
{
    QStringList out;
    for (const RecipientRow& r : rows)
        out.append(QStringList { r.Name, r.Nummer, r.Freitext1, r.Freitext2 }.join(u'|'));
    return out;
}

// Rows left out as "row:number as written".
QStringList doubtsOf(const QList<CsvList::Doubt>& doubts)
{
    QStringList out;
    for (const CsvList::Doubt& d : doubts)
        out.append(QString::number(d.row) + u':' + d.number);
    return out;
}

// The first lines of Outlook's own export header, as its German and English versions write them.
const QString OutlookGerman
    = uR"("Anrede","Vorname","Weitere Vornamen","Nachname","Suffix","Firma","Abteilung","Position","Straße geschäftlich","Ort geschäftlich","Postleitzahl geschäftlich","Telefon Assistent","Fax geschäftlich","Telefon geschäftlich","Telefon geschäftlich 2","Autotelefon","Telefon Firma","Fax privat","Telefon privat","Telefon privat 2","ISDN","Mobiltelefon","Weiteres Fax","Weiteres Telefon","Pager","Haupttelefon","E-Mail-Adresse","E-Mail: Angezeigter Name","Notizen")"_s;
const QString OutlookEnglish
    = uR"("Title","First Name","Middle Name","Last Name","Suffix","Company","Department","Job Title","Business Street","Business City","Business Postal Code",)"_s
    + u"\"Assistant's Phone\","_s
    + uR"("Business Fax","Business Phone","Business Phone 2","Car Phone","Company Main Phone","Home Fax","Home Phone","Home Phone 2","ISDN","Mobile Phone","Other Fax","Other Phone","Pager","Primary Phone","E-mail Address","E-mail Display Name","Notes")"_s;
} // namespace

class TestCsvList : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writeFile(const QString& name, const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(name);
        QFile f(path);
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            f.write(bytes);
        return path;
    }

private slots:
    void readsTheListsOfCommonPrograms_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("doubtful");
        QTest::addColumn<bool>("sure");
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QString>("delimiter");

        // The work, home and fax columns are filled first; only the mobile one counts.
        const QString outlookRow
            = uR"("","Jürgen","","Groß","","Groß & Söhne","","","Hauptstr. 1","Köln","50667","","0221 99","0221 123456","","","","","02203 555","","","0171 1234567","","","","","j@g.de","Jürgen Groß","Notiz, mit Komma")"_s;
        const QString outlookWorkOnly
            = uR"("","Eva","","Klein","","","","","","","","","","0221 777","","","","","","","","","","","","","","","")"_s;
        QTest::newRow("Outlook, German, Windows-1252")
            << windows1252(OutlookGerman + u"\r\n"_s + outlookRow + u"\r\n"_s + outlookWorkOnly + u"\r\n"_s)
            << QStringList { u"Jürgen Groß|00491711234567||"_s } << QStringList { u"3:"_s } << true << u"Windows-1252"_s
            << u","_s;
        QTest::newRow("Outlook, English")
            << (OutlookEnglish + u"\r\n"_s
                + uR"("","John","","Smith","","","","","","","","","+44 20 7946 0000","+44 20 7946 0001","","","","","","","","+44 7700 900123","","","","","","","")"_s
                + u"\r\n"_s)
                   .toUtf8()
            << QStringList { u"John Smith|00447700900123||"_s } << QStringList() << true << u"UTF-8"_s << u","_s;
        // Google's export: the number comes from whichever pair is typed as a mobile one.
        QTest::newRow("Google Contacts") << QByteArray(
            "Name,Given Name,Additional Name,Family Name,Group Membership,Phone 1 - Type,Phone 1 - "
            "Value,Phone 2 - Type,Phone 2 - Value\r\n"
            "Anna Nord,Anna,,Nord,* myContacts,Work,+49 221 1234,Mobile,+49 171 1111111\r\n"
            "Ben S\xc3\xbc"
            "d,Ben,,S\xc3\xbc"
            "d,* myContacts,* Mobile,0172 2222222 ::: 0173 3333333,,\r\n"
            "Carla,Carla,,,* myContacts,Home,0221 5555,,\r\n")
                                         << QStringList { u"Anna Nord|00491711111111||"_s,
                                                          u"Ben Süd|00491722222222||"_s }
                                         << QStringList { u"4:"_s } << true << u"UTF-8"_s << u","_s;
        // Excel's "CSV (Trennzeichen-getrennt)" on a German system: ";" and the system's code
        // page; a column formatted as a number loses a long number to its exponent form.
        QTest::newRow("Excel, Windows-1252, ;")
            << windows1252(u"Name;Handy;Freitext1;Freitext2\r\nMüller;0171/1234567;Gruß;Raum 5\r\nSchäfer;+49 "
                           "(0)172 765 43 21;;\r\nWeiß;4,91711E+11;x;y\r\n;;;\r\nÖzil;(0171) 123-4567;;\r\n"_s)
            << QStringList { u"Müller|00491711234567|Gruß|Raum 5"_s, u"Schäfer|00491727654321||"_s,
                             u"Özil|00491711234567||"_s }
            << QStringList { u"4:4,91711E+11"_s } << true << u"Windows-1252"_s << u";"_s;
        QTest::newRow("Excel Unicode-Text, UTF-16 LE, tabs")
            << utf16(u"Vorname\tNachname\tMobil\r\nŁucja\tNowak\t+48 601 234 567\r\nHans\tMeier\t0043 664 "
                     "1234567\r\n"_s,
                     true)
            << QStringList { u"Łucja Nowak|0048601234567||"_s, u"Hans Meier|00436641234567||"_s } << QStringList()
            << true << u"UTF-16LE"_s << u"\t"_s;
        QTest::newRow("UTF-16 BE") << utf16(u"Name\tMobile\r\nAnna\t01711234567\r\n"_s, false)
                                   << QStringList { u"Anna|00491711234567||"_s } << QStringList() << true
                                   << u"UTF-16BE"_s << u"\t"_s;
        // LibreOffice's default: UTF-8 and ",", values with delimiters, quotes and line breaks quoted.
        QTest::newRow("LibreOffice, UTF-8, quoting")
            << QByteArray("Name,Mobilnummer,Freitext 1,frei2\n"
                          "\"Meier, Anna\",01711234567,\"Sie sagte \"\"Hallo\"\"\",\"Zeile 1\nZeile 2\"\n"
                          "Ben,\"0172 1234567\",\"a;b\",\n")
            << QStringList { u"Meier, Anna|00491711234567|Sie sagte \"Hallo\"|Zeile 1 Zeile 2"_s,
                             u"Ben|00491721234567|a,b|"_s }
            << QStringList() << true << u"UTF-8"_s << u","_s;
        QTest::newRow("the delimiter named for Excel")
            << QByteArray("sep=;\r\nName;Mobil\r\nAnna;01711234567\r\n") << QStringList { u"Anna|00491711234567||"_s }
            << QStringList() << true << u"UTF-8"_s << u";"_s;
        QTest::newRow("UTF-8 with BOM, CR LF")
            << QByteArray("\xef\xbb\xbfName;Nummer\r\nJos\xc3\xa9;0041 79 123 45 67\r\n")
            << QStringList { u"José|0041791234567||"_s } << QStringList() << true << u"UTF-8"_s << u";"_s;
        // Without a header the columns are those of a .msms file; a comma in a name changes nothing.
        QTest::newRow("no header, as a .msms file")
            << windows1252(u"Müller, Hans;01711234567;Nord;;\r\nBen;00491721234567;;;\r\nLeer;;;;\r\n"_s)
            << QStringList { u"Müller, Hans|00491711234567|Nord|"_s, u"Ben|00491721234567||"_s }
            << QStringList { u"3:"_s } << true << u"Windows-1252"_s << u";"_s;
        QTest::newRow("no header, the first row without its number")
            << QByteArray("Leer;;;\r\nAnna;01711234567;;\r\n") << QStringList { u"Anna|00491711234567||"_s }
            << QStringList { u"1:"_s } << true << u"UTF-8"_s << u";"_s;
        QTest::newRow("no header, numbers only in the second column")
            << QByteArray("Anna,+491711234567\nBen,491721234567\n") << QStringList { u"Anna|00491711234567||"_s }
            << QStringList { u"2:491721234567"_s } << true << u"UTF-8"_s << u","_s;
        // Several columns could be the number, or none is one: the user chooses.
        QTest::newRow("two mobile columns")
            << QByteArray("Name;Handy;Mobil\nAnna;01711234567;01721234567\n")
            << QStringList { u"Anna|00491711234567||"_s } << QStringList() << false << u"UTF-8"_s << u";"_s;
        QTest::newRow("only a work number")
            << QByteArray("Vorname;Nachname;Telefon geschäftlich\nAnna;Nord;0221 1234\n") << QStringList()
            << QStringList { u"2:"_s } << false << u"UTF-8"_s << u";"_s;
        QTest::newRow("a general telephone column")
            << QByteArray("Name;Telefon\nAnna;0171 1234567\n") << QStringList { u"Anna|00491711234567||"_s }
            << QStringList() << false << u"UTF-8"_s << u";"_s;
        QTest::newRow("names of no program")
            << QByteArray("Kunde;Kontakt;Ort\nAnna;0171 1234567;Köln\n") << QStringList { u"Anna|00491711234567||"_s }
            << QStringList() << false << u"UTF-8"_s << u";"_s;
        QTest::newRow("empty file") << QByteArray() << QStringList() << QStringList() << true << u"UTF-8"_s << u";"_s;
    }

    void readsTheListsOfCommonPrograms()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, rows);
        QFETCH(QStringList, doubtful);
        QFETCH(bool, sure);
        QFETCH(QString, encoding);
        QFETCH(QString, delimiter);
        const CsvList::Result result = CsvList::read(bytes);
        QVERIFY2(result.ok, qPrintable(result.failure));
        QCOMPARE(rowsOf(result.rows), rows);
        QCOMPARE(doubtsOf(result.doubtful), doubtful);
        QCOMPARE(result.sure, sure);
        QCOMPARE(result.encoding, encoding);
        QCOMPARE(QString(result.delimiter), delimiter);
        QCOMPARE(result.rowNumbers.size(), result.rows.size());
        for (const CsvList::Doubt& d : result.doubtful)
            QVERIFY(!d.reason.isEmpty());
        QCOMPARE(result.hasHeader, !result.header.isEmpty());
        QCOMPARE(result.hasHeader, !result.headerKey.isEmpty());
    }

    void numbers_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("number"); // empty: refused
        QTest::addColumn<bool>("prefixAdded");
        QTest::newRow("as the table holds it") << u"00491711234567"_s << u"00491711234567"_s << false;
        QTest::newRow("plus and blanks") << u"+49 171 1234567"_s << u"00491711234567"_s << false;
        QTest::newRow("national with slash") << u"0171/1234567"_s << u"00491711234567"_s << true;
        QTest::newRow("brackets and dash") << u"(0171) 123-4567"_s << u"00491711234567"_s << true;
        QTest::newRow("national zero in brackets") << u"+49 (0)171 1234567"_s << u"00491711234567"_s << false;
        QTest::newRow("00 and dots") << u"0049.171.1234567"_s << u"00491711234567"_s << false;
        QTest::newRow("Austria") << u"+43 664 1234567"_s << u"00436641234567"_s << false;
        QTest::newRow("no-break spaces") << u"+41\u00a079\u202f123 45 67"_s << u"0041791234567"_s << false;
        QTest::newRow("exponent, German") << u"4,91711E+11"_s << QString() << false;
        QTest::newRow("exponent, English") << u"4.91711E+11"_s << QString() << false;
        QTest::newRow("neither 0 nor +") << u"1711234567"_s << QString() << false;
        QTest::newRow("letters") << u"0171 CALL ME"_s << QString() << false;
        QTest::newRow("an extension") << u"0171 1234567 x12"_s << QString() << false;
        QTest::newRow("plus in the middle") << u"0171+1234567"_s << QString() << false;
        QTest::newRow("zero after plus") << u"+0171 1234567"_s << QString() << false;
        QTest::newRow("no country code after 00") << u"000171234567"_s << QString() << false;
        QTest::newRow("too short") << u"0171"_s << QString() << false;
        QTest::newRow("too long") << u"+49 171 1234567 1234567"_s << QString() << false;
        QTest::newRow("empty") << u"  "_s << QString() << false;
    }

    void numbers()
    {
        QFETCH(QString, written);
        QFETCH(QString, number);
        QFETCH(bool, prefixAdded);
        const CsvList::Number n = CsvList::number(written);
        QCOMPARE(n.number, number);
        QCOMPARE(n.prefixAdded, prefixAdded);
        QCOMPARE(n.reason.isEmpty(), !number.isEmpty());
    }

    void filesThatAreNoList_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("failure");
        QTest::newRow("a quote left open")
            << QByteArray("Name;Mobil\nAnna;01711234567\n\"Ben;01721234567\nCarla;01731234567\n")
            << u"In Zeile 3 beginnt ein Wert"_s;
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x10", 20) << u"keine Textdatei"_s;
        QTest::newRow("an Excel workbook") << QByteArray("PK\x03\x04\x14\0\x06\0", 8) << u"Arbeitsmappe"_s;
        QTest::newRow("UTF-16 of odd length") << QByteArray("\xff\xfeN\0a\0m", 7) << u"Unicode-Text"_s;
    }

    void filesThatAreNoList()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, failure);
        const CsvList::Result result = CsvList::read(bytes);
        QVERIFY(!result.ok);
        QVERIFY2(result.failure.contains(failure), qPrintable(result.failure));
        QVERIFY(result.rows.isEmpty() && result.doubtful.isEmpty());
    }

    // The window asks the user about an unsure header and reads the file again with the answer;
    // the header's key finds that answer again for a file of the same layout.
    void mappingChosenByTheUser()
    {
        const QByteArray bytes("Name;Handy;Mobil;Notiz\nAnna;01711234567;01721234567;Nord\n");
        const CsvList::Result found = CsvList::read(bytes);
        QVERIFY(found.ok && !found.sure);
        QCOMPARE(found.header, (QStringList { u"Name"_s, u"Handy"_s, u"Mobil"_s, u"Notiz"_s }));
        CsvList::Mapping chosen;
        chosen.name = 0;
        chosen.number = 2;
        chosen.freitext1 = 3;
        const CsvList::Result read = CsvList::read(bytes, chosen);
        QVERIFY(read.sure);
        QCOMPARE(read.mapping, chosen);
        QCOMPARE(rowsOf(read.rows), QStringList { u"Anna|00491721234567|Nord|"_s });
        // Kept as text under the header's key, and read back.
        QCOMPARE(CsvList::Mapping::fromText(chosen.toText()), chosen);
        const CsvList::Mapping google = CsvList::read("Name,Phone 1 - Type,Phone 1 - Value\n").mapping;
        QCOMPARE(google.toText(), u"name=0;phones=1:2"_s);
        QCOMPARE(CsvList::Mapping::fromText(google.toText()), google);
        QCOMPARE(CsvList::Mapping::fromText(u"name=0;number=x"_s), std::nullopt);
        QCOMPARE(CsvList::read("  NAME ; handy;Mobil;notiz\n").headerKey, found.headerKey);
        QVERIFY(CsvList::read("Name;Handy;Mobil\n").headerKey != found.headerKey);
    }

    void tableLoadsAList_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("rows");
        QTest::addColumn<bool>("prefixAdded");
        QTest::newRow("good list") << u"liste.csv"_s << QByteArray("Name;Mobil\nAnna;01711234567\nBen;0049172123456\n")
                                   << true << 2 << true;
        QTest::newRow("international numbers only")
            << u"liste.CSV"_s << QByteArray("Name,Mobile\nAnna,+491711234567\n") << true << 1 << false;
        QTest::newRow("open quote") << u"kaputt.csv"_s << QByteArray("Name;Mobil\n\"Anna;01711234567\n") << false << 0
                                    << false;
        QTest::newRow("no file") << QString() << QByteArray() << false << 0 << false;
    }

    // All or nothing, numbered from 1, and saved as a .msms file that loads to the same rows.
    void tableLoadsAList()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, ok);
        QFETCH(int, rows);
        QFETCH(bool, prefixAdded);
        RecipientTable table;
        table.addRow(u"Alt"_s, u"00491710000000"_s, {}, {});
        const QString path = file.isEmpty() ? m_dir.filePath(u"fehlt.csv"_s) : writeFile(file, bytes);
        QVERIFY(CsvList::isCsvPath(path));
        CsvList::Result result;
        QCOMPARE(table.loadCsv(path, nullptr, &result), ok);
        QCOMPARE(result.failure.isEmpty(), ok);
        QCOMPARE(table.rowCount(), rows);
        QCOMPARE(table.entryCounter(), rows);
        QCOMPARE(table.prefixAdded(), prefixAdded);
        QCOMPARE(result.rowNumbers.size(), rows);
        for (int i = 0; i < rows; ++i)
            QCOMPARE(table.rows().at(i).Tag, i + 1);
        const QString saved = m_dir.filePath(u"liste.msms"_s);
        QVERIFY(table.save(saved));
        RecipientTable again;
        QVERIFY(again.load(saved));
        QCOMPARE(again.rows(), table.rows());
    }
};

QTEST_GUILESS_MAIN(TestCsvList)
#include "tst_csvlist.moc"
