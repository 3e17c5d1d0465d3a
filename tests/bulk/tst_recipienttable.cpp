// SPDX-License-Identifier: GPL-3.0-or-later
#include "bulk/RecipientTable.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {
QStringList L(std::initializer_list<const char*> items)
{
    QStringList list;
    for (const char* item : items)
        list.append(QString::fromUtf8(item));
    return list;
}
} // namespace

class TestRecipientTable : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writeFile(const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(QStringLiteral("in.msms"));
        QFile f(path);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(bytes);
        return path;
    }

private slots:
    void parseLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("row"); // empty: no row
        QTest::addColumn<bool>("prefixAdded");
        QTest::newRow("empty line") << "" << true << QStringList() << false;
        QTest::newRow("a;1 is too short") << "a;1" << true << QStringList() << false;
        QTest::newRow("ab; is too short") << "ab;" << true << QStringList() << false;
        QTest::newRow("abcd has no number") << "abcd" << false << QStringList() << false;
        QTest::newRow("empty number field") << "Max;;Text" << false << QStringList() << false;
        QTest::newRow("ab;1 gets the German prefix") << "ab;1" << true << L({ "ab", "0049", "", "" }) << true;
        QTest::newRow("two fields") << "Anna;0041791234567" << true << L({ "Anna", "0041791234567", "", "" }) << false;
        QTest::newRow("three fields lose the third")
            << "Anna;0041791234567;Eins" << true << L({ "Anna", "0041791234567", "", "" }) << false;
        QTest::newRow("four fields") << "Anna;0041791234567;Eins;Zwei" << true
                                     << L({ "Anna", "0041791234567", "Eins", "Zwei" }) << false;
        QTest::newRow("trailing ;") << "Anna;0041791234567;Eins;Zwei;" << true
                                    << L({ "Anna", "0041791234567", "Eins", "Zwei" }) << false;
        QTest::newRow("more fields are dropped") << "Anna;0041791234567;Eins;Zwei;Drei;Vier" << true
                                                 << L({ "Anna", "0041791234567", "Eins", "Zwei" }) << false;
        QTest::newRow("leading zero dropped")
            << "M;01711234567" << true << L({ "M", "00491711234567", "", "" }) << true;
        QTest::newRow("any first character dropped")
            << "M;491711234567" << true << L({ "M", "004991711234567", "", "" }) << true;
        QTest::newRow("plus sign dropped too")
            << "M;+491711234567" << true << L({ "M", "0049491711234567", "", "" }) << true;
    }

    void parseLine()
    {
        QFETCH(QString, line);
        QFETCH(bool, ok);
        QFETCH(QStringList, row);
        QFETCH(bool, prefixAdded);
        RecipientTable table;
        QCOMPARE(table.parseLine(line), ok);
        QCOMPARE(table.rows().size(), row.isEmpty() ? 0 : 1);
        QCOMPARE(table.prefixAdded(), prefixAdded);
        if (!row.isEmpty()) {
            const RecipientRow& r = table.rows().first();
            QCOMPARE((QStringList { r.Name, r.Nummer, r.Freitext1, r.Freitext2 }), row);
            QCOMPARE(r.Tag, 1);
        }
    }

    void loadIsAllOrNothing()
    {
        RecipientTable table;
        QVERIFY(table.load(writeFile("A;0049171;x;y;\r\nB;0049172;;;\r\n")));
        QCOMPARE(table.rowCount(), 2);
        QVERIFY(!table.load(writeFile("A;0049171;x;y;\r\nB;0049172;;;\r\nabcd\r\nC;0049173;;;\r\n")));
        QCOMPARE(table.rowCount(), 0);
        QCOMPARE(table.entryCounter(), 0);
        QVERIFY(!table.load(m_dir.filePath(QStringLiteral("missing.msms"))));
    }

    void webGroupReplacesWholeOrNotAtAll()
    {
        RecipientTable table;
        QVERIFY(table.parseLine(QStringLiteral("Alt;0049170;;;")));
        // Lines end at LF; blanks go, a CR stays in a field past the free texts.
        QVERIFY(table.loadGroup(QStringLiteral("  Jana;01701;eins;zwei;\r\n\nab;\nTom;0049172;a;b\r\n")));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.rows().at(0).Nummer, QStringLiteral("00491701"));
        QCOMPARE(table.rows().at(1).Freitext2, QStringLiteral("b\r"));
        QCOMPARE(table.rows().at(1).Tag, 2);
        QVERIFY(table.prefixAdded());
        // An error page of the server breaks the grammar: the group before stays whole.
        QVERIFY(!table.loadGroup(QStringLiteral("Eva;0049173;;;\n<html><body>Not Found</body></html>\n")));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.entryCounter(), 2);
        QVERIFY(table.loadGroup(QString()));
        QCOMPARE(table.rowCount(), 0);
    }

    void lineEnds()
    {
        RecipientTable table;
        // CR alone ends a line, a lone LF does not: it stays in the field.
        QVERIFY(table.load(writeFile("A;0049171;x;y\rB;0049172;a\nb;c;\r\n")));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.rows().at(1).Freitext1, QStringLiteral("a\nb"));
    }

    void windows1252AndRoundTrip()
    {
        RecipientTable table;
        QVERIFY(table.load(writeFile("M\xfcller;00491711234567;Gru\xdf;Raum 5;\r\n")));
        QCOMPARE(table.rows().first().Name, QStringLiteral("Müller"));
        table.addRow(QStringLiteral("Neu"), QStringLiteral("0043664"), QString(), QString());
        QCOMPARE(table.rows().last().Tag, 2);
        const QString out = m_dir.filePath(QStringLiteral("out.msms"));
        QList<QPair<int, int>> steps;
        QVERIFY(table.save(out, [&](int v, int m) { steps.append({ v, m }); }));
        QFile f(out);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("M\xfcller;00491711234567;Gru\xdf;Raum 5;\r\nNeu;0043664;;;\r\n"));
        QCOMPARE(steps.first(), qMakePair(0, 5));
        QCOMPARE(steps.last(), qMakePair(5, 5));
        RecipientTable again;
        QVERIFY(again.load(out));
        QCOMPARE(again.rowCount(), 2);
        QCOMPARE(again.rows().at(1).Tag, 2);
    }

    void nameWithSemicolonShiftsTheFields()
    {
        RecipientTable table;
        table.addRow(QStringLiteral("Max;Moritz"), QStringLiteral("00491711234567"), QString(), QString());
        const QString out = m_dir.filePath(QStringLiteral("shift.msms"));
        QVERIFY(table.save(out));
        QVERIFY(table.load(out));
        QCOMPARE(table.rows().first().Nummer, QStringLiteral("0049oritz"));
        QCOMPARE(table.rows().first().Freitext1, QStringLiteral("00491711234567"));
    }

    void figuresAndClear()
    {
        RecipientTable table;
        table.parseLine(QStringLiteral("Anna;0049171;eins;zwei;"));
        table.parseLine(QStringLiteral("Maximilian;0049172;x;;"));
        table.recalcMaxSizes();
        QCOMPARE(table.getMaxNameSize(), qint16(10));
        QCOMPARE(table.getMaxFrei1Size(), qint16(4));
        QCOMPARE(table.getMaxFrei2Size(), qint16(4));
        table.Clear();
        QCOMPARE(table.rowCount(), 0);
        QCOMPARE(table.getMaxNameSize(), qint16(10)); // until the next recalcMaxSizes
        table.parseLine(QStringLiteral("Neu;0049173"));
        QCOMPARE(table.rows().first().Tag, 1);
    }

    void modelColumns()
    {
        RecipientTable table;
        table.parseLine(QStringLiteral("Anna;0049171;eins;zwei;"));
        QCOMPARE(table.columnCount(), 4);
        QCOMPARE(table.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Freitext1"));
        QCOMPARE(table.data(table.index(0, 1)).toString(), QStringLiteral("0049171"));
    }

    void emptyTableWritesAnEmptyFile()
    {
        RecipientTable table;
        const QString out = m_dir.filePath(QStringLiteral("empty.msms"));
        QVERIFY(table.save(out));
        QCOMPARE(QFileInfo(out).size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestRecipientTable)
#include "tst_recipienttable.moc"
