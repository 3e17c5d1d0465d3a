// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceProcess.h"

#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "toolkit/Inet.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

ServiceProcess::ServiceProcess(const QStringList& extraArguments)
{
    const QString program = qEnvironmentVariable("QUELLBOTE_SERVICE");
    if (program.isEmpty())
        return;
    m_process.setProgram(program);
    m_process.setArguments(QStringList { u"--port"_s, u"0"_s, u"--journal"_s, m_dir.filePath(u"journal.jsonl"_s) }
                           + extraArguments);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A test that dies (a sanitizer ends it at the first fault) takes its service along: left
    // running, the service would keep ctest's output open and hold the test up to its timeout.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start();
    static const QRegularExpression listening(u"^listening on (https?)://127\\.0\\.0\\.1:(\\d+)"_s);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 10000 && m_process.state() != QProcess::NotRunning) {
        m_process.waitForReadyRead(200);
        while (m_process.canReadLine()) {
            const QRegularExpressionMatch match = listening.match(QString::fromLatin1(m_process.readLine()));
            if (match.hasMatch()) {
                m_scheme = match.captured(1);
                m_port = quint16(match.captured(2).toUInt());
                return;
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
    return m_scheme + u"://127.0.0.1:"_s + QString::number(m_port);
}

QList<QJsonObject> ServiceProcess::journal() const
{
    QList<QJsonObject> entries;
    QFile file(m_dir.filePath(u"journal.jsonl"_s));
    if (file.open(QIODevice::ReadOnly)) {
        while (!file.atEnd()) {
            if (const QJsonDocument doc = QJsonDocument::fromJson(file.readLine()); doc.isObject())
                entries.append(doc.object());
        }
    }
    return entries;
}

QList<QJsonObject> ServiceProcess::requests(const QString& path) const
{
    QList<QJsonObject> entries = journal();
    entries.removeIf([&path](const QJsonObject& e) { return e.value(u"path"_s).toString() != path; });
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
    // Every address of the program, at this service.
    const QString urls
        = u"[URLs]\r\nHomepage=%1/\r\nHelppage=%1/hilfe/\r\nSendSMS=%1/smsv3/smsv3.php\r\n"
          "CronSMS=%1/cronjob/send_repeat.php\r\nEditCronSMS=%1/terminversand/deleteSMS.php\r\n"
          "Phonebook=%1/telefonbuch/telefonbuch.php\r\nWebGroup=%1/sms/gruppenv2/gruppenv2.php\r\n"
          "BuyCredits=%1/sms/buyCredits.php\r\nCheckUser=%1/sms/checkUser.php\r\nCreateUser=%1/sms/createUser.php\r\n"
          "SmsCount=%1/sms/count.php?email=\r\nCheckVersion=%1/update/version\r\nCheckInfo=%1/update/infoVersion\r\n"
          "AGB=%1/sms_agb/sms_agb.htm\r\nWebGroupDir=%1/sms/gruppenv2/\r\nNews=%1/news.htm\r\n"
          "Update=%1/update/quellbote.exe\r\n"_s;
    QFile file(folder + u"/oem.inf"_s);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(urls.arg(baseUrl()).toLatin1() + extra);
}

void ServiceProcess::pointProgramAt(const QString& folder, const QByteArray& extra) const
{
    writeOemInf(folder, extra);
    reloadUrlsForTesting();
    setProductName(readProductName());
}
