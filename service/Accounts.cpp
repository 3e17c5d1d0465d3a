// SPDX-License-Identifier: GPL-3.0-or-later
#include "Accounts.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

Accounts Accounts::demo()
{
    Accounts accounts;
    Account demo;
    demo.email = QStringLiteral("demo@quellbote.test");
    demo.password = QStringLiteral("demo");
    demo.credits = 500;
    demo.name = QStringLiteral("Demo GmbH");
    demo.phonebook = {
        { QStringLiteral("Max Mustermann"), QStringLiteral("00491711234567") },
        { QStringLiteral("Anna Huber"), QStringLiteral("00436641234567") },
        { QStringLiteral("Beat Keller"), QStringLiteral("0041791234567") },
        { QStringLiteral("Jean Dupont"), QStringLiteral("0033612345678") },
        { QStringLiteral("Lisa Schmidt"), QStringLiteral("0049176/1234567") },
        { QStringLiteral("Büro"), QStringLiteral("004915201234567") },
        { QStringLiteral("Sepp Gruber"), QStringLiteral("0043/664/1234567") },
        // No number: its link has no "@".
        { QStringLiteral("Kaputter Eintrag"), QString() },
    };
    demo.groups = {
        { QStringLiteral("Vertrieb"),
          QStringLiteral("vertrieb.txt"),
          { QStringLiteral("Max Mustermann;00491711234567;Nord;Raum 5;"),
            QStringLiteral("Lisa Schmidt;00491761234567;Süd;Raum 7;"),
            QStringLiteral("Anna Huber;00436641234567;Österreich;;") } },
        { QStringLiteral("Fußballverein"),
          QStringLiteral("fussball.txt"),
          { QStringLiteral("Tom;01701112223;Stürmer;Sonntag;"), QStringLiteral("Jens;01512223334;Tor;Sonntag;") } },
        { QStringLiteral("Familie Jäger"),
          QStringLiteral("jaeger.txt"),
          { QStringLiteral("Jürgen Jäger;00491711234567;Großvater;„Opa“;"),
            QStringLiteral("Zoë Weiß;00436641234567;Enkelin;Grüße – Zoë;") } },
        // The second line breaks the file grammar (four characters or more, no ";").
        { QStringLiteral("Kaputte Liste"),
          QStringLiteral("kaputt.txt"),
          { QStringLiteral("Anna;00491711234567;eins;zwei;"), QStringLiteral("kaputt"),
            QStringLiteral("Max;00491761234567;drei;vier;") } },
        { QStringLiteral("Verschwundene Gruppe"), QStringLiteral("fehlt.txt"), {}, true },
    };
    accounts.add(demo);
    return accounts;
}

bool Accounts::fromJsonFile(const QString& path, Accounts* accounts, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read ") + path;
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!doc.isObject()) {
        *error = QStringLiteral("not a JSON object: ") + parseError.errorString();
        return false;
    }
    Accounts result;
    for (const QJsonValue& a : doc.object().value(u"accounts").toArray()) {
        const QJsonObject o = a.toObject();
        Account account;
        account.email = o.value(u"email").toString();
        account.password = o.value(u"password").toString();
        account.credits = o.value(u"credits").toInteger();
        account.name = o.value(u"name").toString();
        for (const QJsonValue& e : o.value(u"phonebook").toArray())
            account.phonebook.append({ e[u"name"].toString(), e[u"number"].toString() });
        for (const QJsonValue& g : o.value(u"groups").toArray()) {
            WebGroup group { g[u"name"].toString(), g[u"file"].toString(), {}, g[u"missing"].toBool() };
            for (const QJsonValue& line : g[u"lines"].toArray())
                group.lines.append(line.toString());
            account.groups.append(group);
        }
        if (account.email.isEmpty()) {
            *error = QStringLiteral("an account without e-mail");
            return false;
        }
        result.add(account);
    }
    *accounts = result;
    return true;
}

Account* Accounts::find(const QString& email)
{
    for (Account& a : m_accounts) {
        if (a.email.compare(email.trimmed(), Qt::CaseInsensitive) == 0)
            return &a;
    }
    return nullptr;
}

Account* Accounts::login(const QString& email, const QString& password)
{
    Account* account = find(email);
    return account && account->password == password ? account : nullptr;
}

Account& Accounts::add(const Account& account)
{
    m_accounts.append(account);
    return m_accounts.last();
}

const WebGroup* Accounts::groupByFile(const QString& file) const
{
    for (const Account& a : m_accounts) {
        for (const WebGroup& g : a.groups) {
            if (g.file == file)
                return &g;
        }
    }
    return nullptr;
}
