// SPDX-License-Identifier: GPL-3.0-or-later
// An installation for the start benchmarks: quellbote-service on loopback, an oem.inf in a
// program folder of its own pointing every address at it, and a per-user store with the demo
// account as the first-start wizard keeps it and the news already read (the everyday start).
// The program started with XDG_CONFIG_HOME set here reads that store.
#pragma once

#include "ServiceProcess.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

class DemoInstallation
{
public:
    DemoInstallation()
    {
        if (!m_service.isRunning()) {
            std::fprintf(stderr, "quellbote-service did not start\n");
            return;
        }
        m_service.writeOemInf(m_folder.path());
        const QString config = m_folder.filePath(QStringLiteral("config"));
        QDir(config).mkpath(QStringLiteral("Tarnholt"));
        QFile store(config + QStringLiteral("/Tarnholt/SMS.conf"));
        if (!store.open(QIODevice::WriteOnly)
            || store.write("[General]\neMail=demo@quellbote.test\nPassword=demo\nfirstStartHasRun=true\n"
                           "infoVersion=32767\n")
                <= 0) {
            std::fprintf(stderr, "the store could not be written\n");
            return;
        }
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(config));
        m_ready = true;
    }

    bool isReady() const { return m_ready; }
    // The program folder, with the oem.inf.
    QString folder() const { return m_folder.path(); }

private:
    ServiceProcess m_service;
    QTemporaryDir m_folder;
    bool m_ready = false;
};
