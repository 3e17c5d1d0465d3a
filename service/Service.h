// SPDX-License-Identifier: GPL-3.0-or-later
// The sandbox service: answers every address the client uses, keeps accounts, charges sent SMS,
// keeps scheduled jobs, writes a journal of every request, and can be told to misbehave.
#pragma once

#include "Accounts.h"

#include <QAbstractHttpServer>
#include <QHash>
#include <QMap>

#include <memory>

class QFile;

struct Answer
{
    int status = 200;
    QByteArray contentType;
    QByteArray body;
};

class Service : public QAbstractHttpServer
{
    Q_OBJECT

public:
    Service(Accounts accounts, const QString& journalPath, QString versionAnswer, QString infoAnswer);
    ~Service() override;

    // "path=mode": slow:MS, drop, http500, garbage, empty, none. False for an unknown mode.
    bool setFault(const QString& path, const QString& mode);

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    Answer route(const QString& method, const QString& path, const QMap<QString, QString>& query,
                 const QByteArray& rawQuery, const QByteArray& body);
    Answer sendSms(const QMap<QString, QString>& form, bool scheduled);
    Answer createUser(const QMap<QString, QString>& query);
    void journal(const QHttpServerRequest& request, int status, const QByteArray& answer);

    Accounts m_accounts;
    std::unique_ptr<QFile> m_journal;
    QString m_versionAnswer;
    QString m_infoAnswer;
    QHash<QString, QString> m_faults;
};

// key=value pairs of a form body or query, decoded as a form decoder does: "+" is a blank, "%XX"
// a byte, and the bytes are read as Windows-1252.
QMap<QString, QString> parseForm(const QByteArray& encoded);
