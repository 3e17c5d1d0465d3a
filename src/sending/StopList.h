// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers that never get an SMS ("Sperrliste"): people who asked to be left alone. The user
// keeps a list of their own in the store; an administrator may name a shared file in oem.inf
// ([Files] Sperrliste), one number a line, which the program only reads. Numbers are compared in
// their international form, so that "0171 1234567", "+49 171 1234567" and "00491711234567" are
// one number. Every road of sending reads the list once when it starts and refuses what is on it.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class StopList
{
public:
    // An empty list: nothing is stopped.
    StopList() = default;

    // The user's list from the store and the shared file named in oem.inf, read now.
    static StopList load();
    // Whether a number, written in any form (table form "0049…", "+49 …", "0171 …"), is stopped.
    bool contains(const QString& number) const;
    bool isEmpty() const;
    QStringList userEntries() const; // as the user wrote them, in their order
    QStringList sharedEntries() const; // the shared file's lines that hold a number
    // The file named in oem.inf, a relative name taken from the program's folder; empty when none.
    QString sharedFile() const;
    QString sharedFileError() const; // German text when the named file can't be read, else empty
    // Writes the user's list to the store; false when the store refused.
    static bool saveUserEntries(const QStringList& entries);

    // Reads numbers from a file: a CSV list (its Nummer column, via CsvList) or one number a line.
    struct Import
    {
        QStringList numbers;
        int refused = 0; // lines or rows that hold no number
        QString error; // German text when the file can't be read at all
    };
    static Import importFile(const QString& path);

    // The international form used for comparing, empty when the text holds no number.
    static QString key(const QString& written);

    // Why an SMS to a stopped number does not go out, for records and scripts.
    static QString reason();

    // A list of these entries, without the store or oem.inf: for the sending's own tests.
    static StopList of(const QStringList& userEntries, const QStringList& sharedEntries = {});

private:
    void add(const QString& entry);

    QStringList m_user;
    QStringList m_shared;
    QString m_sharedFile;
    QString m_sharedFileError;
    QSet<QString> m_keys;
};
