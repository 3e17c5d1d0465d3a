// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskFull.h"
#include "bulk/RecipientTable.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class TestRecipientTable : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writeFile(const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(u"in.msms"_s);
        QFile f(path);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(bytes);
        return path;
    }

    QByteArray readFile(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("not there");
    }

private slots:
    void parseLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("row"); // the four fields as read, joined by ";"; empty: no row
        QTest::addColumn<bool>("prefixAdded");
        QTest::newRow("a;1 is too short") << u"a;1"_s << true << QString() << false;
        QTest::newRow("abcd has no number") << u"abcd"_s << false << QString() << false;
        QTest::newRow("empty number field") << u"Max;;Text"_s << false << QString() << false;
        QTest::newRow("ab;1 gets the German prefix") << u"ab;1"_s << true << u"ab;0049;;"_s << true;
        QTest::newRow("two fields") << u"Anna;0041791234567"_s << true << u"Anna;0041791234567;;"_s << false;
        QTest::newRow("three fields lose the third")
            << u"Anna;0041791234567;Eins"_s << true << u"Anna;0041791234567;;"_s << false;
        QTest::newRow("trailing ;") << u"Anna;0041791234567;Eins;Zwei;"_s << true << u"Anna;0041791234567;Eins;Zwei"_s
                                    << false;
        QTest::newRow("more fields are dropped")
            << u"Anna;0041791234567;Eins;Zwei;Drei;Vier"_s << true << u"Anna;0041791234567;Eins;Zwei"_s << false;
        QTest::newRow("leading zero dropped") << u"M;01711234567"_s << true << u"M;00491711234567;;"_s << true;
        QTest::newRow("plus sign dropped too") << u"M;+491711234567"_s << true << u"M;0049491711234567;;"_s << true;
    }

    void parseLine()
    {
        QFETCH(QString, line);
        QFETCH(bool, ok);
        QFETCH(QString, row);
        QFETCH(bool, prefixAdded);
        RecipientTable table;
        QCOMPARE(table.parseLine(line), ok);
        QCOMPARE(table.rows().size(), row.isEmpty() ? 0 : 1);
        QCOMPARE(table.prefixAdded(), prefixAdded);
        if (!row.isEmpty()) {
            const RecipientRow& r = table.rows().first();
            QCOMPARE((QStringList { r.Name, r.Nummer, r.Freitext1, r.Freitext2 }).join(u';'), row);
            QCOMPARE(r.Tag, 1);
        }
    }

    void loadIsAllOrNothing()
    {
        RecipientTable table;
        // CR alone ends a line, a lone LF does not: it stays in the field.
        QVERIFY(table.load(writeFile("A;0049171;x;y\rB;0049172;a\nb;c;\r\n")));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.rows().at(1).Freitext1, u"a\nb"_s);
        QVERIFY(!table.load(writeFile("A;0049171;x;y;\r\nB;0049172;;;\r\nabcd\r\nC;0049173;;;\r\n")));
        QCOMPARE(table.rowCount(), 0);
        QCOMPARE(table.entryCounter(), 0);
        QVERIFY(!table.load(m_dir.filePath(u"missing.msms"_s)));
    }

    void webGroupReplacesWholeOrNotAtAll()
    {
        RecipientTable table;
        QVERIFY(table.parseLine(u"Alt;0049170;;;"_s));
        // Lines end at LF; blanks go, a CR stays in a field past the free texts.
        QVERIFY(table.loadGroup(u"  Jana;01701;eins;zwei;\r\n\nab;\nTom;0049172;a;b\r\n"_s));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.rows().at(0).Nummer, u"00491701"_s);
        QCOMPARE(table.rows().at(1).Freitext2, u"b\r"_s);
        QCOMPARE(table.rows().at(1).Tag, 2);
        QVERIFY(table.prefixAdded());
        // An error page of the server breaks the grammar: the group before stays whole.
        QVERIFY(!table.loadGroup(u"Eva;0049173;;;\n<html><body>Not Found</body></html>\n"_s));
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.entryCounter(), 2);
        QVERIFY(table.loadGroup(QString()));
        QCOMPARE(table.rowCount(), 0);
    }

    void saving()
    {
        const QString out = m_dir.filePath(u"out.msms"_s);
        RecipientTable table;
        QVERIFY(table.save(out));
        QCOMPARE(QFileInfo(out).size(), 0);
        QVERIFY(table.load(writeFile("M\xfcller;00491711234567;Gru\xdf;Raum 5;\r\n")));
        table.addRow(u"Neu"_s, u"0043664"_s, QString(), QString());
        QCOMPARE(table.rows().last().Tag, 2);
        QList<QPair<int, int>> steps;
        QVERIFY(table.save(out, [&](int v, int m) { steps.append({ v, m }); }));
        QCOMPARE(readFile(out), QByteArray("M\xfcller;00491711234567;Gru\xdf;Raum 5;\r\nNeu;0043664;;;\r\n"));
        QCOMPARE(steps.first(), qMakePair(0, 5));
        QCOMPARE(steps.last(), qMakePair(5, 5));
        // A ";" in a name is written as it stands and shifts the fields on the next load.
        table.Clear();
        table.addRow(u"Max;Moritz"_s, u"00491711234567"_s, QString(), QString());
        QVERIFY(table.save(out));
        QVERIFY(table.load(out));
        QCOMPARE(table.rows().first().Nummer, u"0049oritz"_s);
        QCOMPARE(table.rows().first().Freitext1, u"00491711234567"_s);
    }

    // A save that breaks off leaves the file as it was: the disk runs full, or the program is
    // killed after the new file was begun but before it took the old one's place.
    void interruptedSaveKeepsTheOldFile_data()
    {
        QTest::addColumn<bool>("killed");
        QTest::newRow("disk full") << false;
        QTest::newRow("killed before the rename") << true;
    }

    void interruptedSaveKeepsTheOldFile()
    {
        QFETCH(bool, killed);
        const QByteArray old = "Alt;00491711234567;;;\r\n";
        const QString path = writeFile(old);
        RecipientTable table;
        for (int i = 0; i < 20; ++i)
            table.addRow(u"Neu %1"_s.arg(i), u"00491711234567"_s, u"frei"_s, QString());
        if (killed) {
            const pid_t child = fork();
            if (child == 0) {
                table.save(path, [](int value, int) {
                    if (value > 0)
                        raise(SIGKILL);
                });
                _exit(0);
            }
            int status = 0;
            QCOMPARE(waitpid(child, &status, 0), child);
            QVERIFY(WIFSIGNALED(status));
        } else {
            const auto full = diskFullAfter(64);
            FileFailure failure;
            QVERIFY(!table.save(path, {}, &failure));
        }
        QCOMPARE(readFile(path), old);
    }

    void figuresAndClear()
    {
        RecipientTable table;
        table.parseLine(u"Anna;0049171;eins;zwei;"_s);
        table.parseLine(u"Maximilian;0049172;x;;"_s);
        table.recalcMaxSizes();
        QCOMPARE(table.getMaxNameSize(), qint16(10));
        QCOMPARE(table.getMaxFrei1Size(), qint16(4));
        QCOMPARE(table.getMaxFrei2Size(), qint16(4));
        QCOMPARE(table.headerData(2, Qt::Horizontal).toString(), u"Freitext1"_s);
        QCOMPARE(table.data(table.index(1, 1)).toString(), u"0049172"_s);
        table.Clear();
        QCOMPARE(table.rowCount(), 0);
        QCOMPARE(table.getMaxNameSize(), qint16(10)); // until the next recalcMaxSizes
        table.parseLine(u"Neu;0049173"_s);
        QCOMPARE(table.rows().first().Tag, 1);
        // The placeholders count as the values go on the wire: an emoji is one character.
        table.parseLine(u"Li;0049174;😀😀😀😀😀;;"_s);
        table.recalcMaxSizes();
        QCOMPARE(table.getMaxFrei1Size(), qint16(5));
    }

    // A value that goes into the message with characters that can't go out names them in its
    // tooltip and to a screen reader; the number, and values that go out whole, have none.
    void unsendableValuesAreNamed_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("named"); // empty: no tooltip
        QTest::newRow("name") << 0 << u"Ł, ś"_s;
        QTest::newRow("number is not looked at") << 1 << QString();
        QTest::newRow("first free text") << 2 << u"😀"_s;
        QTest::newRow("second free text goes out whole") << 3 << QString();
    }

    void unsendableValuesAreNamed()
    {
        QFETCH(int, column);
        QFETCH(QString, named);
        RecipientTable table;
        table.addRow(u"Łukasz Woś"_s, u"0048601ł"_s, u"Hi 😀"_s, u"Grüße „x“ €"_s);
        const QModelIndex cell = table.index(0, column);
        QCOMPARE(table.hasUnsendable(cell), !named.isEmpty());
        const QString tip = table.data(cell, Qt::ToolTipRole).toString();
        QCOMPARE(tip.isEmpty(), named.isEmpty());
        QVERIFY2(tip.endsWith(named), qPrintable(tip));
        QCOMPARE(table.data(cell, Qt::AccessibleDescriptionRole).toString(), tip);
    }
};

QTEST_GUILESS_MAIN(TestRecipientTable)
#include "tst_recipienttable.moc"
