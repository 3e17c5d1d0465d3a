// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendArguments.h"

namespace {
// Options that take a value, and where it goes.
QString* valueOf(SendArguments& a, const QString& option)
{
    if (option == u"--file" || option == u"-f")
        return &a.file;
    if (option == u"--at")
        return &a.at;
    if (option == u"--sender") {
        a.senderGiven = true;
        return &a.sender;
    }
    if (option == u"--name")
        return &a.name;
    if (option == u"--config")
        return &a.config;
    return nullptr;
}

bool* flagOf(SendArguments& a, const QString& option)
{
    if (option == u"--reply")
        return &a.reply;
    if (option == u"--status")
        return &a.status;
    if (option == u"--long")
        return &a.longSms;
    if (option == u"--dry-run" || option == u"-n")
        return &a.dryRun;
    if (option == u"--balance")
        return &a.balance;
    if (option == u"--help" || option == u"-h")
        return &a.help;
    if (option == u"--version")
        return &a.version;
    if (option == u"--json")
        return &a.json;
    if (option == u"--resume")
        return &a.resume;
    if (option == u"--resend-unknown")
        return &a.resendUnknown;
    if (option == u"--transliterate")
        return &a.transliterate;
    if (option == u"--no-record")
        return &a.noRecord;
    if (option == u"--sent")
        return &a.sent;
    return nullptr;
}
} // namespace

SendArguments parseSendArguments(const QStringList& arguments)
{
    SendArguments a;
    QStringList positional;
    bool optionsEnd = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString argument = arguments.at(i);
        // "-" is standard input, and a number may begin with "+": neither is an option.
        if (optionsEnd || argument == u"-" || !argument.startsWith(u'-')) {
            positional.append(argument);
            continue;
        }
        if (argument == u"--") {
            optionsEnd = true;
            continue;
        }
        QString value;
        bool inlineValue = false;
        if (const qsizetype equals = argument.indexOf(u'='); argument.startsWith(u"--") && equals > 0) {
            value = argument.mid(equals + 1);
            argument.truncate(equals);
            inlineValue = true;
        }
        if (QString* target = valueOf(a, argument)) {
            if (!inlineValue) {
                if (i + 1 >= arguments.size()) {
                    a.error = QStringLiteral("Die Option %1 verlangt einen Wert.").arg(argument);
                    return a;
                }
                value = arguments.at(++i);
            }
            *target = value;
        } else if (bool* flag = flagOf(a, argument); flag && !inlineValue) {
            *flag = true;
        } else {
            a.error = QStringLiteral("Unbekannte Option: %1").arg(arguments.at(i));
            return a;
        }
    }
    if (a.help || a.version)
        return a;

    if ((a.resume || a.resendUnknown) && a.file.isEmpty()) {
        a.error = QStringLiteral("--resume und --resend-unknown gehören zu einer Liste (--file).");
        return a;
    }
    if (a.sent) {
        if (positional.size() > 1)
            a.error = QStringLiteral("--sent nimmt einen Suchtext: %1. Ein Text mit Leerzeichen steht in "
                                     "Anführungszeichen.")
                          .arg(positional.join(u' '));
        else
            a.sentText = positional.value(0);
        return a;
    }
    if (a.balance) {
        if (!positional.isEmpty())
            a.error = QStringLiteral("--balance nimmt keine Rufnummer und keinen Text.");
        return a;
    }
    if (a.file.isEmpty()) {
        if (positional.isEmpty()) {
            a.error = QStringLiteral("Es fehlt die Rufnummer des Empfängers.");
            return a;
        }
        a.number = positional.takeFirst();
    }
    if (positional.size() > 1) {
        a.error = QStringLiteral("Zu viele Angaben: %1. Ein Text mit Leerzeichen steht in Anführungszeichen.")
                      .arg(positional.mid(1).join(u' '));
        return a;
    }
    if (positional.isEmpty() || positional.constFirst() == u"-")
        a.textFromInput = true;
    else
        a.text = positional.constFirst();
    return a;
}

QString sendUsage()
{
    return QStringLiteral("Aufruf: quellbote-send [OPTIONEN] RUFNUMMER [TEXT]\n"
                          "        quellbote-send [OPTIONEN] --file LISTE.msms [TEXT]\n"
                          "        quellbote-send [--config DATEI] --balance\n"
                          "        quellbote-send [--config DATEI] [--json] --sent [TEXT]\n"
                          "\n"
                          "Versendet eine SMS über das Konto, die Adressen und die Einstellungen des Programms,\n"
                          "genau wie das Fenster sie versenden würde. Ohne TEXT oder mit \"-\" kommt der Text von\n"
                          "der Standardeingabe.\n"
                          "\n"
                          "RUFNUMMER mit Vorwahl, wie im Fenster: 0171 1234567, 01711234567, +49 171 1234567,\n"
                          "0043 664 1234567. Nummern im Ausland mit 00 oder + vorweg.\n"
                          "\n"
                          "Optionen:\n"
                          "  -f, --file LISTE.msms  MultiSMS an alle Zeilen der Datei; %name%, %frei1% und %frei2%\n"
                          "                         werden je Zeile ersetzt; auch eine CSV-Liste (.csv, .txt)\n"
                          "  --at \"JJJJ-MM-TT HH:MM\" einmaliger Terminversand (Minuten in Fünferschritten)\n"
                          "  --sender NAME          mit Absenderkennung (höchstens 11 Buchstaben und Ziffern oder\n"
                          "                         16 Ziffern)\n"
                          "  --reply                der Empfänger kann antworten\n"
                          "  --status               mit Statusbericht\n"
                          "  --long                 als Überlange-SMS (mit Absenderkennung)\n"
                          "  --resume               mit --file: nur die Zeilen senden, die beim letzten Versand\n"
                          "                         dieser Liste nicht versendet wurden; nie eine versendete\n"
                          "  --resend-unknown       mit --resume: auch die Zeilen, zu denen keine Antwort kam\n"
                          "                         und die möglicherweise schon versendet wurden\n"
                          "  --transliterate        Zeichen, die nicht per SMS gehen (Ł, ś, Emojis), durch die\n"
                          "                         nächsten einfachen Buchstaben ersetzen statt abzulehnen\n"
                          "  --json                 je SMS eine Zeile JSON: number, name, state, parts, credits,\n"
                          "                         answer\n"
                          "  --name NAME            Name des Empfängers\n"
                          "  -n, --dry-run          nichts versenden: Größe, Anzahl, Preis und Anfrage zeigen\n"
                          "  --balance              das Guthaben in Credits ausgeben\n"
                          "  --sent [TEXT]          die versendeten SMS aus dem Versandprotokoll zeigen, deren\n"
                          "                         Nummer, Name oder Text TEXT enthält, die neueste zuerst\n"
                          "  --no-record            diese SMS nicht ins Versandprotokoll schreiben\n"
                          "  --config DATEI         diese Einstellungsdatei statt der eigenen verwenden\n"
                          "  -h, --help             diese Hilfe\n"
                          "  --version              die Version\n"
                          "\n"
                          "Ohne gespeichertes Kennwort wird es von der Standardeingabe gelesen (erste Zeile).\n"
                          "\n"
                          "Jede SMS kommt ins Versandprotokoll (sendrecord.sqlite im Datenordner, mit --config\n"
                          "neben der Einstellungsdatei): Zeit, Nummer, Name, Text, Teile, Credits, Ergebnis und\n"
                          "Antwort des Servers, nie das Kennwort.\n"
                          "\n"
                          "Rückgabewert: 0 alles versendet, 1 mindestens eine SMS abgelehnt, 2 mindestens eine\n"
                          "SMS nicht versendet (keine Verbindung), 3 fehlerhafte Angaben, 4 mindestens eine SMS\n"
                          "ohne Antwort: sie ist möglicherweise versendet, also nicht blind erneut senden.\n"
                          "4 geht vor 2, 2 vor 1.\n");
}
