// SPDX-License-Identifier: GPL-3.0-or-later
// Job files for the local server program: instead of going to the gateway, each SMS part is
// written as a small XML file into a watched folder. The single-account form carries login and
// password; the group form carries neither and is signed by an MD5 hash over its fields and a
// secret key.
#pragma once

#include <QByteArray>
#include <QString>

class cOptionen;

namespace xmlServer {

// The outcome of a write: the file's path in the target folder, or what went wrong.
struct WriteResult
{
    bool ok = false;
    QString path;
    QString error;
};

WriteResult writeSingleAccountJob(const QString& login, const QString& password, const QString& user, const QString& to,
                                  const QString& from, const QString& text, const QString& name, const QString& version,
                                  const QString& targetFolder);
WriteResult writeGroupJob(const QString& group, const QString& user, const QString& to, const QString& from,
                          const QString& text, const QString& name, const QString& version, const QString& secretKey,
                          const QString& targetFolder);

// The job file of one part as the program's settings ask for it: the single-account form, the
// group form or, with neither chosen or a folder of fewer than three characters, none (which
// counts as done, with no path). to is the number in international form with "00".
WriteResult writeJob(const cOptionen& options, const QString& password, const QString& to, const QString& text);

// The documents as written, for the two forms.
QByteArray singleAccountDocument(const QString& login, const QString& password, const QString& user, const QString& to,
                                 const QString& from, const QString& text, const QString& name, const QString& version);
QByteArray groupDocument(const QString& group, const QString& user, const QString& to, const QString& from,
                         const QString& text, const QString& name, const QString& version, const QString& secretKey);

// "&", "<", ">" escaped, then every euro sign replaced by "E". Only the text is escaped.
QString escapeText(const QString& text);
// The first "00" of the number, wherever it stands, becomes "+".
QString recipient(const QString& number);
// The folder for the file before it is copied: the variable "temp", or the platform's.
QString temporaryFolder();

} // namespace xmlServer
