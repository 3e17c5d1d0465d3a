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

namespace {

QByteArray dataFile(const QString& name)
{
    QFile file(QFINDTESTDATA(QStringLiteral("data/addressbook/") + name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data");
    return file.readAll();
}

QStringList names(const VCardReader::Result& result)
{
    QStringList list;
    for (const VCardContact& contact : result.contacts)
        list.append(contact.displayName);
    return list;
}

QStringList mobileNumbers(const VCardReader::Result& result)
{
    QStringList list;
    for (const VCardContact& contact : result.contacts)
        list.append(contact.mobileNumber());
    return list;
}

void write(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class TestAddressBook : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString at(const QString& relative) const { return m_dir.filePath(relative); }

    enum AddinState { NoKey, Registered, ChangedByHand, EmptyKey, OtherApplication };

private slots:
    void initTestCase()
    {
        TestStore::reset();
        QVERIFY(m_dir.isValid());
        QDir root(m_dir.path());
        for (const auto& folder : { u"Kontakte", u"Handy", u"Mail/inner", u"Leer", u"Alles/sub" })
            QVERIFY(root.mkpath(QString::fromUtf16(folder)));
        write(at(QStringLiteral("Kontakte/desktop-export.vcf")), dataFile(QStringLiteral("desktop-export.vcf")));
        write(at(QStringLiteral("Handy/EXPORT.VCF")), dataFile(QStringLiteral("phone-export.vcf")));
        write(at(QStringLiteral("Mail/a.eml")), "From: a@example.org\r\n");
        write(at(QStringLiteral("Mail/inner/x.vcf")), dataFile(QStringLiteral("version4.vcf")));
        for (const auto& file : { u"phone-export.vcf", u"desktop-export.vcf", u"broken.vcf" })
            write(at(u"Alles/" + QString::fromUtf16(file)), dataFile(QString::fromUtf16(file)));
        write(at(QStringLiteral("Alles/empty.VCF")), QByteArray());
        write(at(QStringLiteral("Alles/notes.txt")), dataFile(QStringLiteral("version4.vcf")));
        write(at(QStringLiteral("Alles/sub/version4.vcf")), dataFile(QStringLiteral("version4.vcf")));
#ifndef Q_OS_WIN
        QVERIFY(QFile::link(at(QStringLiteral("Kontakte")), at(QStringLiteral("Verweis"))));
#endif
    }

    void readsCards_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("mobiles");
        QTest::addColumn<int>("skipped");

        const auto list = [](std::initializer_list<const char16_t*> items) {
            QStringList l;
            for (const char16_t* item : items)
                l.append(QString::fromUtf16(item));
            return l;
        };

        QTest::newRow("phone export: 2.1, quoted-printable UTF-8, soft breaks, folded photo")
            << dataFile(QStringLiteral("phone-export.vcf"))
            << list({ u"Jürgen Müller", u"Karl-Heinz Müller-Lüdenscheid" })
            << list({ u"+49 171 2345678", u"0170 9876543" }) << 0;
        QTest::newRow("older phone: 2.1 in ISO-8859-2, N only, no mobile")
            << dataFile(QStringLiteral("old-phone.vcf")) << list({ u"Paweł Wróbel" }) << list({ u"+48 22 1234" }) << 0;
        QTest::newRow("desktop export: 3.0, many cards, groups, escapes, fold inside a character")
            << dataFile(QStringLiteral("desktop-export.vcf"))
            << list({ u"Schmidt, Anna", u"Ayşe Öztürk", u"Paul Lehmann", u"Ohne Nummer", u"Stadtwerke Nord" })
            << list({ u"+49 170 1112223", u"+49 (151) 555-0101", u"+4915112345678", u"", u"+49 40 555" }) << 0;
        QTest::newRow("3.0 in the Windows code page")
            << dataFile(QStringLiteral("windows-codepage.vcf")) << list({ u"Jörg Weiß" }) << list({ u"0160 111" }) << 0;
        QTest::newRow("4.0 with tel: addresses, cell second")
            << dataFile(QStringLiteral("version4.vcf")) << list({ u"Zoë Brandt" }) << list({ u"+49-151-12345678" })
            << 0;
        QTest::newRow("damaged file: junk, a card cut off by the next, one by the end")
            << dataFile(QStringLiteral("broken.vcf")) << list({ u"Erste Karte", u"Zweite Karte" })
            << list({ u"0151 1", u"0151 3" }) << 2;

        QTest::newRow("empty file") << QByteArray() << QStringList() << QStringList() << 1;
        QTest::newRow("binary junk") << QByteArray("\x00\xff\xd8\xe0:;\r\n\x01"
                                                   "BEGIN\x00VCARD",
                                                   20)
                                     << QStringList() << QStringList() << 1;
        QStringEncoder utf16(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
        QTest::newRow("UTF-16 with byte order mark")
            << QByteArray(utf16.encode(u"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Łukasz Nowak\r\nTEL:0172 5\r\nEND:VCARD\r\n"))
            << list({ u"Łukasz Nowak" }) << list({ u"0172 5" }) << 0;
        QTest::newRow("lone CR line ends") << QByteArray("BEGIN:VCARD\rVERSION:2.1\rFN:Max\rTEL;CELL:0171\rEND:VCARD\r")
                                           << list({ u"Max" }) << list({ u"0171" }) << 0;
        QTest::newRow("lower case, LF, folded with a tab")
            << QByteArray("begin:vcard\nversion:3.0\nfn:Eva \n\tMaria\ntel;type=Cell:01\nend:vcard\n")
            << list({ u"Eva Maria" }) << list({ u"01" }) << 0;
        QTest::newRow("quoted-printable value ending in = before END")
            << QByteArray("BEGIN:VCARD\r\nFN;QUOTED-PRINTABLE:Max=\r\nEND:VCARD\r\n") << list({ u"Max" })
            << list({ u"" }) << 0;
        QTest::newRow("unknown charset falls back by the bytes")
            << QByteArray("BEGIN:VCARD\r\nN;CHARSET=X-NONE:Gr\xfcn;Lena\r\nEND:VCARD\r\n") << list({ u"Lena Grün" })
            << list({ u"" }) << 0;
        QTest::newRow("empty cell number is passed over")
            << QByteArray("BEGIN:VCARD\r\nFN:A\r\nTEL;CELL:\r\nTEL;HOME:030 1\r\nEND:VCARD\r\n") << list({ u"A" })
            << list({ u"030 1" }) << 0;
        QTest::newRow("card with nothing in it")
            << QByteArray("BEGIN:VCARD\r\nEND:VCARD\r\n") << list({ u"" }) << list({ u"" }) << 0;
    }

    void readsCards()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, names);
        QFETCH(QStringList, mobiles);
        QFETCH(int, skipped);
        const VCardReader::Result result = VCardReader::readBytes(bytes);
        QCOMPARE(::names(result), names);
        QCOMPARE(mobileNumbers(result), mobiles);
        QCOMPARE(result.skipped, skipped);
    }

    // Every cut of a real file is read without harm, and never yields more than the whole.
    void cutFilesAreSafe_data()
    {
        QTest::addColumn<QString>("file");
        for (const auto& file : { u"phone-export.vcf", u"desktop-export.vcf", u"version4.vcf", u"broken.vcf" })
            QTest::newRow(QString::fromUtf16(file).toUtf8().constData()) << QString::fromUtf16(file);
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
        // Files in the order of their names, sub-folders and other files left alone, the empty
        // file and the broken cards counted.
        const VCardReader::Result result = VCardReader::read(at(QStringLiteral("Alles")));
        QCOMPARE(result.contacts.size(), 2 + 5 + 2);
        QCOMPARE(result.skipped, 2 + 1);
        QCOMPARE(result.contacts.constFirst().displayName, QStringLiteral("Erste Karte"));
        QCOMPARE(result.contacts.at(2).displayName, QStringLiteral("Schmidt, Anna"));
        QCOMPARE(result.contacts.constLast().displayName, QStringLiteral("Karl-Heinz Müller-Lüdenscheid"));

        QCOMPARE(VCardReader::read(at(QStringLiteral("Handy/EXPORT.VCF"))).contacts.size(), 2);
        QCOMPARE(VCardReader::read(at(QStringLiteral("Alles/notes.txt"))).contacts.size(), 0);
        QCOMPARE(VCardReader::read(at(QStringLiteral("Fehlt"))).skipped, 0);
    }

    void folderChoice_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("name");
        QTest::newRow("folder with a vCard file") << QStringLiteral("Kontakte") << true << QStringLiteral("Kontakte");
        QTest::newRow("upper-case suffix") << QStringLiteral("Handy") << true << QStringLiteral("Handy");
        QTest::newRow("one vCard file") << QStringLiteral("Kontakte/desktop-export.vcf") << true
                                        << QStringLiteral("desktop-export");
        QTest::newRow("cards only one level down") << QStringLiteral("Mail") << false << QString();
        QTest::newRow("empty folder") << QStringLiteral("Leer") << false << QString();
        QTest::newRow("a file of another kind") << QStringLiteral("Mail/a.eml") << false << QString();
        QTest::newRow("missing folder") << QStringLiteral("Fehlt") << false << QString();
    }

    void folderChoice()
    {
        QFETCH(QString, path);
        QFETCH(bool, accepted);
        QFETCH(QString, name);
        const std::optional<AddressBook::ContactFolder> folder = AddressBook::chooseFolder(at(path));
        QCOMPARE(folder.has_value(), accepted);
        if (!folder)
            return;
        QCOMPARE(folder->name, name);
        static const QRegularExpression id(QStringLiteral("^[0-9A-F]{40}$"));
        QVERIFY(id.match(folder->storeID).hasMatch());
        QVERIFY(id.match(folder->entryID).hasMatch());
    }

    void identifiersFollowTheFolderNotItsSpelling_data()
    {
        QTest::addColumn<QString>("spelling");
        QTest::newRow("trailing slash") << QStringLiteral("Kontakte/");
        QTest::newRow("dot segments") << QStringLiteral("Mail/../Kontakte/.");
#ifndef Q_OS_WIN
        QTest::newRow("symbolic link") << QStringLiteral("Verweis");
#endif
    }

    void identifiersFollowTheFolderNotItsSpelling()
    {
        QFETCH(QString, spelling);
        const QString folder = at(QStringLiteral("Kontakte"));
        QCOMPARE(AddressBook::entryID(at(spelling)), AddressBook::entryID(folder));
        QCOMPARE(AddressBook::storeID(at(spelling)), AddressBook::storeID(folder));

        // A file's store is its folder, a folder's store the one above it; folders differ.
        QCOMPARE(AddressBook::storeID(at(QStringLiteral("Kontakte/desktop-export.vcf"))), AddressBook::entryID(folder));
        QCOMPARE(AddressBook::storeID(folder), AddressBook::entryID(m_dir.path()));
        QVERIFY(AddressBook::entryID(folder) != AddressBook::entryID(at(QStringLiteral("Handy"))));
        QCOMPARE(AddressBook::entryID(at(QStringLiteral("Fehlt"))), QString());
#ifndef Q_OS_WIN
        // Stored identifiers must still match after an update: SHA-1 of the path, upper case.
        QCOMPARE(AddressBook::entryID(QStringLiteral("/")), QStringLiteral("42099B4AF021E53FD8FD4E056C2568D7C2E3FFA8"));
#endif
    }

    void profileNames_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("foundAgain");
        const QString root = AddressBook::profilesRoot();
        const QString login = AddressBook::loginName();
        QTest::newRow("no folder: the user's name") << QString() << login << root;
        QTest::newRow("the default profile: the user's name") << root << login << root;
        QTest::newRow("a profile in the root: its name")
            << root + QStringLiteral("/Firma/") << QStringLiteral("Firma") << root + QStringLiteral("/Firma");
        const QString elsewhere = at(QStringLiteral("Kontakte"));
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
        const QByteArray none = "BEGIN:VCARD\nFN:Ohne\nEND:VCARD\n";
        QTest::newRow("two numbers, each closed") << QString() << anna + ben << QStringLiteral("0171 1; 0172 2; ");
        QTest::newRow("earlier text stays in front")
            << QStringLiteral("0049301; ") << ben << QStringLiteral("0049301; 0172 2; ");
        QTest::newRow("contact without a number adds nothing")
            << QString() << none + anna << QStringLiteral("0171 1; ");
        QTest::newRow("nobody chosen") << QStringLiteral("x") << QByteArray() << QStringLiteral("x");
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
        const QString description = QStringLiteral("Mit Hilfe von Quellbote eine SMS aus Outlook heraus versenden.");
        QTest::newRow("new key gets the values") << int(NoKey) << QStringLiteral("3") << description;
        QTest::newRow("second registration changes nothing") << int(Registered) << QStringLiteral("3") << description;
        QTest::newRow("values changed by hand stay") << int(ChangedByHand) << QStringLiteral("2") << QString();
        QTest::newRow("an existing empty key stays empty") << int(EmptyKey) << QString() << QString();
        QTest::newRow("another application's key is apart")
            << int(OtherApplication) << QStringLiteral("3") << description;
    }

    void registerAddin()
    {
        QFETCH(int, before);
        QFETCH(QString, loadBehavior);
        QFETCH(QString, description);
        TestStore::reset();
        const QString key = ComReg::addinKey(QStringLiteral("Outlook"));
        QCOMPARE(key, QStringLiteral("Software\\Microsoft\\Office\\Outlook\\Addins\\Quellbote_OutlookAddin.Connect"));
        switch (before) {
        case Registered:
            ComReg::RegisterAddin(QStringLiteral("Outlook"));
            break;
        case ChangedByHand:
            ComReg::RegisterAddin(QStringLiteral("Outlook"));
            ToolRegistry::SaveRegString(key, QStringLiteral("LoadBehavior"), QStringLiteral("2"));
            ToolRegistry::SaveRegString(key, QStringLiteral("Description"), QString());
            break;
        case EmptyKey:
            QCOMPARE(ToolRegistry::CreateRegKey(key), 1);
            break;
        case OtherApplication:
            ComReg::RegisterAddin(QStringLiteral("Word"));
            break;
        }

        ComReg::RegisterAddin(QStringLiteral("Outlook"));

        QCOMPARE(ToolRegistry::GetRegString(key, QStringLiteral("LoadBehavior")), loadBehavior);
        QCOMPARE(ToolRegistry::GetRegString(key, QStringLiteral("Description")), description);
        QCOMPARE(ToolRegistry::GetRegString(key, QStringLiteral("FriendlyName")),
                 before == EmptyKey ? QString() : QStringLiteral("Quellbote_OutlookAddin.Connect"));
        QCOMPARE(ToolRegistry::GetRegString(key, QStringLiteral("CommandLineSafe")),
                 before == EmptyKey ? QString() : QStringLiteral("0"));
        // The program's own settings are not touched.
        QVERIFY(!TestStore::has(QStringLiteral("FriendlyName")));
    }
};

QTEST_GUILESS_MAIN(TestAddressBook)
#include "tst_addressbook.moc"
