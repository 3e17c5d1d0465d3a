// SPDX-License-Identifier: GPL-3.0-or-later
// The service's accounts: e-mail, password, Credits, phonebook, web groups and scheduled jobs.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct PhonebookEntry
{
    QString name;
    QString number;
};

struct WebGroup
{
    QString name;
    QString file; // the data file's name below the groups' folder
    QStringList lines; // lines of "Name;Nummer;Freitext1;Freitext2;"
    bool missing = false; // listed on the page, but its data file answers 404
};

struct ScheduledJob
{
    int id = 0;
    QString start;
    QString cron;
    QString end;
    QString recipient;
    QString text;
};

struct Account
{
    QString email;
    QString password;
    // False for an application whose mailed password hasn't been checked yet; such an address
    // may apply again.
    bool confirmed = true;
    qint64 credits = 0;
    QString name;
    QList<PhonebookEntry> phonebook;
    QList<WebGroup> groups;
    QList<ScheduledJob> jobs;
};

class Accounts
{
public:
    // The demo account demo@quellbote.test / demo with 500 Credits.
    static Accounts demo();
    // Accounts from a JSON file (format in the README); false with a message on a bad file.
    static bool fromJsonFile(const QString& path, Accounts* accounts, QString* error);

    // The account of an e-mail address, in any case; nullptr when there is none.
    Account* find(const QString& email);
    // The account when the password is right, otherwise nullptr.
    Account* login(const QString& email, const QString& password);
    Account& add(const Account& account);
    // The group whose data file has this name, in any account.
    const WebGroup* groupByFile(const QString& file) const;

    int nextJobId() { return ++m_lastJobId; }

private:
    QList<Account> m_accounts;
    int m_lastJobId = 0;
};
