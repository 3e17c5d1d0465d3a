// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmlServer.h"

#include "CMD5.h"
#include "Version.h"
#include "sending/GatewayRequest.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"
#include "toolkit/Codepage.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUuid>

namespace xmlServer {
namespace {
// The files are Windows-1252, which is ISO-8859-1 wherever that has the character and holds the
// typographic quotes, dashes and the euro sign beside; the server expects this declaration.
const QString Declaration = QStringLiteral("<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\" ?>");

QString element(const QString& tag, const QString& value, int indent = 1)
{
    return QString(indent, u'\t') + u'<' + tag + u'>' + value + QStringLiteral("</") + tag + QStringLiteral(">\n");
}

QString application(const QString& name, const QString& version)
{
    return QStringLiteral("\t<application>\n") + element(QStringLiteral("name"), name, 2)
        + element(QStringLiteral("version"), version, 2) + QStringLiteral("\t</application>\n");
}

QString euroToE(QString text)
{
    return text.replace(QChar(0x20AC), QLatin1Char('E'));
}

// The file whole or not at all. Unbuffered, so that a write the disk cuts short shows here;
// through Qt's buffer a full disk could pass for a written file.
bool writeWhole(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size()
        && file.commit();
}

// Written whole in the temporary folder first, then copied, so that the server only ever sees a
// whole file.
WriteResult write(const QByteArray& document, const QString& targetFolder)
{
    WriteResult result;
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + QStringLiteral(".xml");
    const QString temporary = temporaryFolder() + u'/' + name;
    if (!writeWhole(temporary, document)) {
        result.error = QStringLiteral("Die Datei ") + temporary + QStringLiteral(" konnte nicht geschrieben werden.");
        return result;
    }
    // A temporary file that is gone already is copied nowhere, without a word.
    QFile written(temporary);
    if (!written.open(QIODevice::ReadOnly))
        return result;
    const QByteArray copy = written.readAll();
    written.close();
    // The folder setting gets a separator behind it, whether it ends in one or not.
    result.path = targetFolder + u'/' + name;
    if (!writeWhole(result.path, copy)) {
        result.error
            = QStringLiteral("Die Datei konnte nicht nach ") + targetFolder + QStringLiteral(" kopiert werden.");
        QFile::remove(temporary);
        return result;
    }
    QFile::remove(temporary);
    result.ok = true;
    return result;
}
} // namespace

QString escapeText(const QString& text)
{
    QString escaped = text;
    escaped.replace(u'&', QStringLiteral("&amp;"));
    escaped.replace(u'<', QStringLiteral("&lt;"));
    escaped.replace(u'>', QStringLiteral("&gt;"));
    return euroToE(escaped);
}

QString recipient(const QString& number)
{
    QString to = number;
    const qsizetype at = to.indexOf(QStringLiteral("00"));
    if (at >= 0)
        to.replace(at, 2, QStringLiteral("+"));
    return to;
}

QString temporaryFolder()
{
    const QString temp = qEnvironmentVariable("temp");
    return temp.isEmpty() ? QDir::tempPath() : temp;
}

QByteArray singleAccountDocument(const QString& login, const QString& password, const QString& user, const QString& to,
                                 const QString& from, const QString& text, const QString& name, const QString& version)
{
    const QString doc = Declaration + QStringLiteral("\n<SMS>\n") + element(QStringLiteral("login"), login)
        + element(QStringLiteral("password"), password) + element(QStringLiteral("user"), user)
        + element(QStringLiteral("to"), recipient(to)) + element(QStringLiteral("from"), from)
        + element(QStringLiteral("text"), escapeText(text)) + application(name, version) + QStringLiteral("</SMS>\n");
    return Codepage::toWindows1252(doc);
}

QByteArray groupDocument(const QString& group, const QString& user, const QString& to, const QString& from,
                         const QString& text, const QString& name, const QString& version, const QString& secretKey)
{
    const QString number = recipient(to);
    // The hash is taken over the unescaped text, its euro signs already "E".
    const QString hash = CMD5().MD5(group + user + number + from + euroToE(text) + name + version + secretKey);
    const QString doc = Declaration + QStringLiteral("\n<SMS>\n") + element(QStringLiteral("group"), group)
        + element(QStringLiteral("user"), user) + element(QStringLiteral("to"), number)
        + element(QStringLiteral("from"), from) + element(QStringLiteral("text"), escapeText(text))
        + application(name, version) + element(QStringLiteral("hash"), hash) + QStringLiteral("</SMS>\n");
    return Codepage::toWindows1252(doc);
}

WriteResult writeSingleAccountJob(const QString& login, const QString& password, const QString& user, const QString& to,
                                  const QString& from, const QString& text, const QString& name, const QString& version,
                                  const QString& targetFolder)
{
    return write(singleAccountDocument(login, password, user, to, from, text, name, version), targetFolder);
}

WriteResult writeGroupJob(const QString& group, const QString& user, const QString& to, const QString& from,
                          const QString& text, const QString& name, const QString& version, const QString& secretKey,
                          const QString& targetFolder)
{
    return write(groupDocument(group, user, to, from, text, name, version, secretKey), targetFolder);
}

WriteResult writeJob(const cOptionen& o, const QString& password, const QString& to, const QString& text)
{
    switch (GatewayRequest::serverWriter(o.XmlPfad(), o.xmlSingleUser(), o.xmlGroupUser())) {
    case GatewayRequest::ServerWriter::SingleUser:
        return writeSingleAccountJob(o.Username(), password, o.xmlUser(), to, o.Absenderkennung(), text, ProductName(),
                                     Version::text(), o.XmlPfad());
    case GatewayRequest::ServerWriter::GroupUser:
        return writeGroupJob(o.xmlGroup(), o.xmlUser(), to, o.Absenderkennung(), text, ProductName(), Version::text(),
                             o.xmlSecretKey(), o.XmlPfad());
    case GatewayRequest::ServerWriter::None:
        break;
    }
    return { true, {}, {} };
}

} // namespace xmlServer
