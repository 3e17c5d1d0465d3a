// SPDX-License-Identifier: GPL-3.0-or-later
// quellbote-service: a stand-in for the SMS gateway and its web pages, on loopback only.
#include "Service.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QHostAddress>

#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quellbote-service"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Sandbox stand-in for the SMS gateway and its web pages."));
    parser.addHelpOption();
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("Port on 127.0.0.1, 0 for a free one."),
                                  QStringLiteral("N"), QStringLiteral("0"));
    const QCommandLineOption accounts(QStringLiteral("accounts"), QStringLiteral("Accounts from a JSON file."),
                                      QStringLiteral("FILE"));
    const QCommandLineOption journal(QStringLiteral("journal"), QStringLiteral("Write every request to FILE."),
                                     QStringLiteral("FILE"));
    const QCommandLineOption version(QStringLiteral("version-answer"), QStringLiteral("Answer of the version check."),
                                     QStringLiteral("TEXT"), QStringLiteral("2.4.92"));
    const QCommandLineOption info(QStringLiteral("info-answer"), QStringLiteral("The current news number."),
                                  QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption fault(QStringLiteral("fault"),
                                   QStringLiteral("PATH=MODE: slow:MS, drop, http500, garbage, empty, none."),
                                   QStringLiteral("PATH=MODE"));
    parser.addOptions({ port, accounts, journal, version, info, fault });
    parser.process(app);

    Accounts data = Accounts::demo();
    if (parser.isSet(accounts)) {
        QString error;
        if (!Accounts::fromJsonFile(parser.value(accounts), &data, &error)) {
            std::fprintf(stderr, "quellbote-service: %s\n", qPrintable(error));
            return 2;
        }
    }
    Service service(std::move(data), parser.value(journal), parser.value(version), parser.value(info));
    for (const QString& f : parser.values(fault)) {
        const qsizetype eq = f.indexOf(u'=');
        if (eq < 0 || !service.setFault(f.left(eq), f.mid(eq + 1))) {
            std::fprintf(stderr, "quellbote-service: bad fault %s\n", qPrintable(f));
            return 2;
        }
    }
    const quint16 bound = service.listen(QHostAddress::LocalHost, quint16(parser.value(port).toUInt()));
    if (bound == 0) {
        std::fprintf(stderr, "quellbote-service: cannot listen on port %s\n", qPrintable(parser.value(port)));
        return 1;
    }
    std::fprintf(stdout, "listening on http://127.0.0.1:%u\n", unsigned(bound));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
