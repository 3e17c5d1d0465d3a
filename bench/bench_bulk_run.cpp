// SPDX-License-Identifier: GPL-3.0-or-later
// How a bulk run of 10 000 rows against quellbote-service on loopback compares with a bare loop
// of the same POSTs sent one at a time with QNetworkAccessManager, and how long the window
// waits at most for its turn during the run. Runs offscreen; prints its figures, the last line
// "throughput N % of the bare loop, longest stall M ms".
#include "MainWindowHarness.h"
#include "bulk/frmMultiSMS.h"
#include "settings/CUrlStore.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {
constexpr int Rows = 10000;
const QString Text = QStringLiteral("Hallo %name%, Ihre Nummer ist %frei1%.");

// The same request bodies, one after another, each sent when the one before has its answer.
qint64 bareLoopMs(const QString& url)
{
    QNetworkAccessManager manager;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < Rows; ++i) {
        QNetworkRequest request { QUrl(url) };
        request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/x-www-form-urlencoded"));
        const QByteArray body = "email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=0049171"
            + QByteArray::number(1000000 + i) + "&empfaengername=Kunde&private=true&public=false&version=2.4.92"
            + "&text=Hallo%20Kunde%20" + QByteArray::number(i) + "&absenderkennung=false&absender=&statusmeldung=false"
            + "&antwort=false&einlieferung=false&referer=Quellbote";
        QNetworkReply* reply = manager.post(request, body);
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        reply->readAll();
        reply->deleteLater();
    }
    return clock.elapsed();
}
} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
        qputenv("QUELLBOTE_SERVICE", QUELLBOTE_SERVICE_PATH);
    QApplication app(argc, argv);

    QTemporaryDir dir;
    QFile accounts(dir.filePath(QStringLiteral("accounts.json")));
    if (!accounts.open(QIODevice::WriteOnly))
        return 1;
    accounts.write(R"({"accounts": [{"email": "demo@quellbote.test", "password": "demo", "credits": 1000000000}]})");
    accounts.close();

    MainWindowHarness harness;
    harness.resetStore();
    if (!harness.startService({ QStringLiteral("--accounts"), accounts.fileName() })) {
        std::fprintf(stderr, "quellbote-service did not start\n");
        return 1;
    }
    frmMain* main = harness.loadMain();

    const qint64 bare = bareLoopMs(Urls().SendSMS());
    std::printf("bare loop: %d POSTs in %lld ms\n", Rows, static_cast<long long>(bare));

    harness.child<ToolbarButton>("tbMultiSMS")->click();
    RecipientTable& table = frmMultiSMS::loaded()->table();
    for (int i = 0; i < Rows; ++i)
        table.addRow(QStringLiteral("Kunde %1").arg(i), QStringLiteral("0049171%1").arg(1000000 + i),
                     QString::number(i), QString());
    frmMultiSMS::loaded()->recalcMaxSizes();
    harness.child<SmsTextEdit>("txtSMS")->setText(Text);
    MessageBox::setHandler([](const MessageBox::Box&) { return MessageBox::Answer::Yes; });

    // The window's turns: a timer that wants to fire every millisecond notes the longest gap.
    QElapsedTimer sinceTick;
    qint64 longestStall = 0;
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout, [&] { longestStall = qMax(longestStall, sinceTick.restart()); });

    QElapsedTimer clock;
    clock.start();
    sinceTick.start();
    ticker.start();
    harness.child<ToolbarButton>("tbSend")->click();
    // The last answer comes after the run has returned.
    const Inet* iNet = main->findChild<Inet*>(QStringLiteral("iNet"));
    while (iNet->StillExecuting())
        QCoreApplication::processEvents();
    const qint64 bulk = clock.elapsed();
    ticker.stop();
    std::printf("bulk run: %d rows in %lld ms\n", Rows, static_cast<long long>(bulk));

    const int sent = int(harness.bodies(QStringLiteral("/smsv3/smsv3.php")).size());
    std::printf("requests the service received: %d (expected %d)\n", sent, 2 * Rows);
    std::printf("throughput %lld %% of the bare loop, longest stall %lld ms\n",
                static_cast<long long>(bulk > 0 ? 100 * bare / bulk : 0), static_cast<long long>(longestStall));
    harness.reset();
    return 0;
}
