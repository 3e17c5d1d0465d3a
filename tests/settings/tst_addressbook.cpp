// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/AddressBook.h"
#include "settings/ComReg.h"
#include "settings/ToolRegistry.h"
#include "settings/VCardReader.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray dataFile(const QString& name)
{
    QFile file(QFINDTESTDATA(u"data/addressbook/"_s + name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data");
    return file.readAll();
}

QStringList cards(const QByteArray& bytes)
{
    QStringList list;
    for (const VCardContact& contact : VCardReader::readBytes(bytes).contacts)
        list.append(contact.displayName + u" = "_s + contact.mobileNumber());
    return list;
}

} // namespace

class TestAddressBook : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString at(const QString& relative) const { return m_dir.filePath(relative); }

    void write(const QString& relative, const QByteArray& bytes)
    {
        QFile file(at(relative));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    enum AddinState { NoKey, ChangedByHand, EmptyKey };

private slots:
    void initTestCase()
    {
        TestStore::reset();
        QVERIFY(m_dir.isValid());
        for (const auto& folder : { u"Kontakte", u"Handy", u"Mail/inner", u"Alles/sub" })
            QVERIFY(QDir(m_dir.path()).mkpath(QString::fromUtf16(folder)));
        write(u"Kontakte/desktop-export.vcf"_s, dataFile(u"desktop-export.vcf"_s));
        write(u"Handy/EXPORT.VCF"_s, dataFile(u"phone-export.vcf"_s));
        write(u"Mail/a.eml"_s, "From: a@example.org\r\n");
        write(u"Mail/inner/x.vcf"_s, dataFile(u"version4.vcf"_s));
        for (const QString& file : { u"phone-export.vcf"_s, u"desktop-export.vcf"_s, u"broken.vcf"_s })
            write(u"Alles/"_s + file, dataFile(file));
        write(u"Alles/empty.VCF"_s, QByteArray());
        write(u"Alles/notes.txt"_s, dataFile(u"version4.vcf"_s));
        write(u"Alles/sub/version4.vcf"_s, dataFile(u"version4.vcf"_s));
#ifndef Q_OS_WIN
        QVERIFY(QFile::link(at(u"Kontakte"_s), at(u"Verweis"_s)));
#endif
    }

    void readsCards_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("cards");
        QTest::addColumn<int>("skipped");
        QTest::newRow("phone export: 2.1, quoted-printable UTF-8, soft breaks, folded photo")
            << dataFile(u"phone-export.vcf"_s)
            << QStringList { u"Jürgen Müller = +49 171 2345678"_s, u"Karl-Heinz Müller-Lüdenscheid = 0170 9876543"_s }
            << 0;
        QTest::newRow("older phone: 2.1 in ISO-8859-2, N only, no mobile")
            << dataFile(u"old-phone.vcf"_s) << QStringList { u"Paweł Wróbel = "_s } << 0;
        QTest::newRow("desktop export: 3.0, many cards, groups, escapes, fold inside a character, work only")
            << dataFile(u"desktop-export.vcf"_s)
            << QStringList { u"Schmidt, Anna = +49 170 1112223"_s, u"Ayşe Öztürk = +49 (151) 555-0101"_s,
                             u"Paul Lehmann = +4915112345678"_s, u"Ohne Nummer = "_s, u"Stadtwerke Nord = "_s }
            << 0;
        QTest::newRow("3.0 in the Windows code page")
            << dataFile(u"windows-codepage.vcf"_s) << QStringList { u"Jörg Weiß = 0160 111"_s } << 0;
        QTest::newRow("4.0 with tel: addresses, cell second")
            << dataFile(u"version4.vcf"_s) << QStringList { u"Zoë Brandt = +49-151-12345678"_s } << 0;
        QTest::newRow("damaged file: junk, a card cut off by the next, one by the end")
            << dataFile(u"broken.vcf"_s) << QStringList { u"Erste Karte = 0151 1"_s, u"Zweite Karte = 0151 3"_s } << 2;
        QTest::newRow("binary junk") << QByteArray("\x00\xff\xd8\xe0:;\r\n\x01"
                                                   "BEGIN\x00VCARD",
                                                   20)
                                     << QStringList() << 1;
        QStringEncoder utf16(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
        QTest::newRow("UTF-16 with byte order mark") << QByteArray(
            utf16.encode(u"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Łukasz Nowak\r\nTEL;TYPE=CELL:0172 5\r\nEND:VCARD\r\n"))
                                                     << QStringList { u"Łukasz Nowak = 0172 5"_s } << 0;
        QTest::newRow("lone CR line ends") << QByteArray("BEGIN:VCARD\rVERSION:2.1\rFN:Max\rTEL;CELL:0171\rEND:VCARD\r")
                                           << QStringList { u"Max = 0171"_s } << 0;
        QTest::newRow("lower case, LF, folded with a tab")
            << QByteArray("begin:vcard\nversion:3.0\nfn:Eva \n\tMaria\ntel;type=Cell:01\nend:vcard\n")
            << QStringList { u"Eva Maria = 01"_s } << 0;
        QTest::newRow("quoted-printable value ending in = before END")
            << QByteArray("BEGIN:VCARD\r\nFN;QUOTED-PRINTABLE:Max=\r\nEND:VCARD\r\n") << QStringList { u"Max = "_s }
            << 0;
        QTest::newRow("unknown charset falls back by the bytes")
            << QByteArray("BEGIN:VCARD\r\nN;CHARSET=X-NONE:Gr\xfcn;Lena\r\nEND:VCARD\r\n")
            << QStringList { u"Lena Grün = "_s } << 0;
        // A landline, work or untyped number is no mobile one.
        QTest::newRow("empty cell number, then home and untyped ones")
            << QByteArray("BEGIN:VCARD\r\nFN:A\r\nTEL;CELL:\r\nTEL;HOME:030 1\r\nTEL:030 2\r\nEND:VCARD\r\n")
            << QStringList { u"A = "_s } << 0;
    }

    void readsCards()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, cards);
        QFETCH(int, skipped);
        QCOMPARE(::cards(bytes), cards);
        QCOMPARE(VCardReader::readBytes(bytes).skipped, skipped);
    }

    void cutFilesAreSafe_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* file : { "phone-export.vcf", "desktop-export.vcf", "version4.vcf", "broken.vcf" })
            QTest::newRow(file) << QString::fromLatin1(file);
    }

    void cutFilesAreSafe()
    {
        QFETCH(QString, file);
        const QByteArray bytes = dataFile(file);
        const qsizetype whole = VCardReader::readBytes(bytes).contacts.size();
        for (qsizetype length = 0; length <= bytes.size(); ++length) {
            const VCardReader::Result cut = VCardReader::readBytes(bytes.left(length));
            QVERIFY2(cut.contacts.size() <= whole, qPrintable(QString::number(length)));
            QVERIFY2(!cut.contacts.isEmpty() || cut.skipped > 0, qPrintable(QString::number(length)));
        }
    }

    void readsFolder()
    {
        const VCardReader::Result result = VCardReader::read(at(u"Alles"_s));
        QCOMPARE(result.contacts.size(), 2 + 5 + 2);
        QCOMPARE(result.skipped, 2 + 1);
        QCOMPARE(result.contacts.constFirst().displayName, u"Erste Karte"_s);
        QCOMPARE(result.contacts.at(2).displayName, u"Schmidt, Anna"_s);
        QCOMPARE(result.contacts.constLast().displayName, u"Karl-Heinz Müller-Lüdenscheid"_s);

        QCOMPARE(VCardReader::read(at(u"Handy/EXPORT.VCF"_s)).contacts.size(), 2);
        QCOMPARE(VCardReader::read(at(u"Alles/notes.txt"_s)).contacts.size(), 0);
    }

    void folderChoice_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name"); // null: refused
        QTest::newRow("folder with a vCard file") << u"Kontakte"_s << u"Kontakte"_s;
        QTest::newRow("upper-case suffix") << u"Handy"_s << u"Handy"_s;
        QTest::newRow("one vCard file") << u"Kontakte/desktop-export.vcf"_s << u"desktop-export"_s;
        QTest::newRow("cards only one level down") << u"Mail"_s << QString();
        QTest::newRow("a file of another kind") << u"Mail/a.eml"_s << QString();
        QTest::newRow("missing folder") << u"Fehlt"_s << QString();
    }

    void folderChoice()
    {
        QFETCH(QString, path);
        QFETCH(QString, name);
        const std::optional<AddressBook::ContactFolder> folder = AddressBook::chooseFolder(at(path));
        QCOMPARE(folder.has_value(), !name.isNull());
        if (!folder)
            return;
        QCOMPARE(folder->name, name);
        static const QRegularExpression id(u"^[0-9A-F]{40}$"_s);
        QVERIFY(id.match(folder->storeID).hasMatch());
        QVERIFY(id.match(folder->entryID).hasMatch());
    }

    void identifiers()
    {
        // The same folder spelled otherwise has the same identifiers.
        const QString folder = at(u"Kontakte"_s);
        QStringList spellings { u"Kontakte/"_s, u"Mail/../Kontakte/."_s };
#ifndef Q_OS_WIN
        spellings.append(u"Verweis"_s);
#endif
        for (const QString& spelling : spellings) {
            QVERIFY2(AddressBook::entryID(at(spelling)) == AddressBook::entryID(folder), qPrintable(spelling));
            QVERIFY2(AddressBook::storeID(at(spelling)) == AddressBook::storeID(folder), qPrintable(spelling));
        }
        // A file's store is its folder, a folder's store the one above it; folders differ.
        QCOMPARE(AddressBook::storeID(at(u"Kontakte/desktop-export.vcf"_s)), AddressBook::entryID(folder));
        QCOMPARE(AddressBook::storeID(folder), AddressBook::entryID(m_dir.path()));
        QVERIFY(AddressBook::entryID(folder) != AddressBook::entryID(at(u"Handy"_s)));
        QCOMPARE(AddressBook::entryID(at(u"Fehlt"_s)), QString());
#ifndef Q_OS_WIN
        // Stored identifiers must still match after an update: SHA-1 of the path, upper case.
        QCOMPARE(AddressBook::entryID(u"/"_s), u"42099B4AF021E53FD8FD4E056C2568D7C2E3FFA8"_s);
#endif
    }

    void profileNames_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("foundAgain");
        const QString root = AddressBook::profilesRoot();
        const QString login = AddressBook::loginName();
        QTest::newRow("the default profile: the user's name") << root << login << root;
        QTest::newRow("a profile in the root: its name") << root + u"/Firma/"_s << u"Firma"_s << root + u"/Firma"_s;
        const QString elsewhere = at(u"Kontakte"_s);
        QTest::newRow("a folder elsewhere: its path") << elsewhere << QDir::toNativeSeparators(elsewhere) << elsewhere;
    }

    void profileNames()
    {
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, foundAgain);
        QVERIFY(!AddressBook::loginName().isEmpty());
        QCOMPARE(AddressBook::profileName(folder), name);
        QCOMPARE(AddressBook::profileFolder(name), foundAgain);
        QCOMPARE(AddressBook::profileFolder(QString()), AddressBook::profilesRoot());
    }

    void pickedNumbers_data()
    {
        QTest::addColumn<QString>("txtAn");
        QTest::addColumn<QByteArray>("cards");
        QTest::addColumn<QString>("result");
        const QByteArray anna = "BEGIN:VCARD\nFN:Anna\nTEL:030 9\nTEL;CELL:0171 1\nEND:VCARD\n";
        const QByteArray ben = "BEGIN:VCARD\nFN:Ben\nTEL;TYPE=cell:0172 2\nEND:VCARD\n";
        const QByteArray landline = "BEGIN:VCARD\nFN:Festnetz\nTEL;TYPE=HOME,VOICE:030 5\nEND:VCARD\n";
        QTest::newRow("two numbers, each closed") << QString() << anna + ben << u"0171 1; 0172 2; "_s;
        QTest::newRow("earlier text stays in front") << u"0049301; "_s << ben << u"0049301; 0172 2; "_s;
        QTest::newRow("contact with a landline only adds nothing") << QString() << landline + anna << u"0171 1; "_s;
        QTest::newRow("nobody chosen") << u"x"_s << QByteArray() << u"x"_s;
    }

    void pickedNumbers()
    {
        QFETCH(QString, txtAn);
        QFETCH(QByteArray, cards);
        QFETCH(QString, result);
        QCOMPARE(AddressBook::appendMobileNumbers(txtAn, VCardReader::readBytes(cards).contacts), result);
    }

    void registerAddin_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<QString>("loadBehavior");
        QTest::addColumn<QString>("description");
        const QString description = u"Mit Hilfe von Quellbote eine SMS aus Outlook heraus versenden."_s;
        QTest::newRow("new key gets the values") << int(NoKey) << u"3"_s << description;
        QTest::newRow("values changed by hand stay") << int(ChangedByHand) << u"2"_s << QString();
        QTest::newRow("an existing empty key stays empty") << int(EmptyKey) << QString() << QString();
    }

    void registerAddin()
    {
        QFETCH(int, before);
        QFETCH(QString, loadBehavior);
        QFETCH(QString, description);
        TestStore::reset();
        const QString key = ComReg::addinKey(u"Outlook"_s);
        QCOMPARE(key, u"Software\\Microsoft\\Office\\Outlook\\Addins\\Quellbote_OutlookAddin.Connect"_s);
        if (before == EmptyKey)
            QCOMPARE(ToolRegistry::CreateRegKey(key), 1);
        else if (before != NoKey)
            ComReg::RegisterAddin(u"Outlook"_s);
        if (before == ChangedByHand) {
            ToolRegistry::SaveRegString(key, u"LoadBehavior"_s, u"2"_s);
            ToolRegistry::SaveRegString(key, u"Description"_s, QString());
        }

        ComReg::RegisterAddin(u"Outlook"_s);

        const bool filled = before != EmptyKey;
        QCOMPARE(ToolRegistry::GetRegString(key, u"LoadBehavior"_s), loadBehavior);
        QCOMPARE(ToolRegistry::GetRegString(key, u"Description"_s), description);
        QCOMPARE(ToolRegistry::GetRegString(key, u"FriendlyName"_s),
                 filled ? u"Quellbote_OutlookAddin.Connect"_s : QString());
        QCOMPARE(ToolRegistry::GetRegString(key, u"CommandLineSafe"_s), filled ? u"0"_s : QString());
        // The program's own settings are not touched.
        QVERIFY(!TestStore::has(u"FriendlyName"_s));
    }
};

QTEST_GUILESS_MAIN(TestAddressBook)
#include "tst_addressbook.moc"
