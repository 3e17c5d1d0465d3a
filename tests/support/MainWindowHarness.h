// SPDX-License-Identifier: GPL-3.0-or-later
// What the window tests of the main window share: an isolated store with the demo account, a
// quellbote-service of the test's own that the program is pointed at, and the loaded main window.
#pragma once

#include "ServiceProcess.h"
#include "TestStore.h"
#include "sending/frmMain.h"
#include "settings/ProgramFolder.h"
#include "settings/cOptionen.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"

#include <QLineEdit>
#include <QTemporaryDir>

#include <memory>

// The named child of any window.
template<typename T> T* in(QWidget* window, const char* name)
{
    return window->findChild<T*>(QString::fromLatin1(name));
}

class MainWindowHarness
{
public:
    // The program's folder becomes a temporary one; pauses are cut to nothing.
    MainWindowHarness()
    {
        Pause::setLengthForTesting(0);
        ProgramFolder::setPathForTesting(m_folder.path());
    }

    // An empty store holding the demo account (and its password unless storePassword is false).
    void resetStore(bool storePassword = true)
    {
        TestStore::reset();
        TestStore::put(QStringLiteral("eMail"), QStringLiteral("demo@quellbote.test"));
        if (storePassword)
            TestStore::put(QStringLiteral("Password"), QStringLiteral("demo"));
        reloadOptionsForTesting();
    }

    // Starts a service of its own and points the program at it.
    bool startService(const QStringList& arguments = {})
    {
        m_service = std::make_unique<ServiceProcess>(arguments);
        if (m_service->isRunning())
            m_service->pointProgramAt(m_folder.path());
        return m_service->isRunning();
    }

    // A new main window, through its whole load sequence.
    frmMain* loadMain()
    {
        m_main = std::make_unique<frmMain>();
        m_main->load(nullptr);
        return m_main.get();
    }

    // Closes the main window and stops the service.
    void reset()
    {
        m_main.reset();
        m_service.reset();
    }

    // Prefix, number and text of a single SMS.
    void fill(const QString& key, const QString& number, const QString& text)
    {
        m_main->selectPrefixKey(key);
        child<QLineEdit>("txtNummer")->setText(number);
        child<SmsTextEdit>("txtSMS")->setText(text);
    }

    template<typename T> T* child(const char* name) const { return in<T>(m_main.get(), name); }

    frmMain* main() const { return m_main.get(); }
    ServiceProcess* service() const { return m_service.get(); }
    QString folder() const { return m_folder.path(); }

    // The raw bodies the service received at path, oldest first.
    QStringList bodies(const QString& path) const
    {
        QStringList result;
        for (const QJsonObject& entry : m_service->requests(path))
            result.append(entry.value(QStringLiteral("body")).toString());
        return result;
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;
    std::unique_ptr<frmMain> m_main;
};
