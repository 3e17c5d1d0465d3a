// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceProcess.h"

#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "toolkit/Inet.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

#include <csignal>
#include <sys/prctl.h>

ServiceProcess::ServiceProcess(const QStringList& extraArguments)
{
    const QString program = qEnvironmentVariable("QUELLBOTE_SERVICE");
    if (program.isEmpty())
        return;
    m_process.setProgram(program);
    m_process.setArguments(QStringList { QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--journal"),
                                         m_dir.filePath(QStringLiteral("journal.jsonl")) }
                           + extraArguments);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A test that dies (a sanitizer ends it at the first fault) takes its service along: left
    // running, the service would keep ctest's output open and hold the test up to its timeout.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start();
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 10000 && m_process.state() != QProcess::NotRunning) {
        m_process.waitForReadyRead(200);
        while (m_process.canReadLine()) {
            const QByteArray line = m_process.readLine().trimmed();
            for (const QByteArray scheme : { "http", "https" }) {
                if (line.startsWith(QByteArray("listening on " + scheme + "://127.0.0.1:"))) {
                    m_scheme = QString::fromLatin1(scheme);
                    m_port = quint16(line.mid(line.lastIndexOf(':') + 1).toUInt());
                    return;
                }
            }
        }
    }
}

ServiceProcess::~ServiceProcess()
{
    stop();
}

void ServiceProcess::stop()
{
    if (m_process.state() != QProcess::NotRunning) {
        // Asked to end, the service leaves through main(), where a sanitizer build checks it.
        m_process.terminate();
        if (!m_process.waitForFinished(10000)) {
            m_process.kill();
            m_process.waitForFinished(3000);
        }
    }
    // A service that crashed, hung, or ended with a sanitizer's report fails the test that used it.
    if (m_port != 0 && (m_process.exitStatus() != QProcess::NormalExit || m_process.exitCode() != 0))
        qFatal("quellbote-service did not end cleanly (exit code %d); its report is above", m_process.exitCode());
}

QString ServiceProcess::baseUrl() const
{
    return m_scheme + QStringLiteral("://127.0.0.1:") + QString::number(m_port);
}

QList<QJsonObject> ServiceProcess::journal() const
{
    QList<QJsonObject> entries;
    QFile file(m_dir.filePath(QStringLiteral("journal.jsonl")));
    if (!file.open(QIODevice::ReadOnly))
        return entries;
    while (!file.atEnd()) {
        const QJsonDocument doc = QJsonDocument::fromJson(file.readLine());
        if (doc.isObject())
            entries.append(doc.object());
    }
    return entries;
}

QList<QJsonObject> ServiceProcess::requests(const QString& path) const
{
    QList<QJsonObject> entries;
    for (const QJsonObject& e : journal()) {
        if (e.value(QStringLiteral("path")).toString() == path)
            entries.append(e);
    }
    return entries;
}

bool ServiceProcess::setFault(const QString& path, const QString& mode)
{
    // Through the program's own transfer, so that a service on HTTPS is reached with the
    // certificates the program trusts.
    Inet iNet;
    bool ok = false;
    const QString answer = iNet.OpenURL(baseUrl() + u"/__control/fault?path="_s + path + u"&mode="_s + mode, &ok);
    return ok && answer == u"ok";
}

void ServiceProcess::writeOemInf(const QString& folder, const QByteArray& extra) const
{
    const QByteArray base = baseUrl().toLatin1();
    QByteArray text = "[URLs]\r\n";
    const QList<QPair<QByteArray, QByteArray>> urls = {
        { "Homepage", "/" },
        { "Helppage", "/hilfe/" },
        { "SendSMS", "/smsv3/smsv3.php" },
        { "CronSMS", "/cronjob/send_repeat.php" },
        { "EditCronSMS", "/terminversand/deleteSMS.php" },
        { "Phonebook", "/telefonbuch/telefonbuch.php" },
        { "WebGroup", "/sms/gruppenv2/gruppenv2.php" },
        { "BuyCredits", "/sms/buyCredits.php" },
        { "CheckUser", "/sms/checkUser.php" },
        { "CreateUser", "/sms/createUser.php" },
        { "SmsCount", "/sms/count.php?email=" },
        { "CheckVersion", "/update/version" },
        { "CheckInfo", "/update/infoVersion" },
        { "AGB", "/sms_agb/sms_agb.htm" },
        { "WebGroupDir", "/sms/gruppenv2/" },
        { "News", "/news.htm" },
        { "Update", "/update/quellbote.exe" },
    };
    for (const auto& [key, path] : urls)
        text += key + '=' + base + path + "\r\n";
    text += extra;
    QFile file(folder + QStringLiteral("/oem.inf"));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(text);
}

void ServiceProcess::pointProgramAt(const QString& folder, const QByteArray& extra) const
{
    writeOemInf(folder, extra);
    reloadUrlsForTesting();
    setProductName(readProductName());
}
