// SPDX-License-Identifier: GPL-3.0-or-later
// A quellbote-service started for one test on a free loopback port, with a journal that the test
// reads. Stopped when the object goes. With "--tls CERT KEY" among the arguments it serves HTTPS.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

class ServiceProcess
{
public:
    explicit ServiceProcess(const QStringList& extraArguments = {});
    ~ServiceProcess();
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;

    bool isRunning() const { return m_port != 0; }
    QString baseUrl() const;
    QList<QJsonObject> journal() const;
    // The journal entries of one path.
    QList<QJsonObject> requests(const QString& path) const;
    // Sets a fault mode at run time: slow:MS, drop, http500, garbage, empty, none.
    bool setFault(const QString& path, const QString& mode);
    // Writes an oem.inf into folder that points every address of the program at this service.
    void writeOemInf(const QString& folder, const QByteArray& extra = {}) const;
    // Writes that oem.inf into the program's folder of a test and has the program read it anew.
    void pointProgramAt(const QString& folder, const QByteArray& extra = {}) const;
    void stop();

private:
    QProcess m_process;
    QTemporaryDir m_dir;
    QString m_scheme;
    quint16 m_port = 0;
};
