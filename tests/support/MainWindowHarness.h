// SPDX-License-Identifier: GPL-3.0-or-later
// What the window tests of the main window share: an isolated store with the demo account, a
// quellbote-service of the test's own that the program is pointed at, and the loaded main window.
#pragma once

#include "ServiceProcess.h"
#include "sending/frmMain.h"

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
    MainWindowHarness();

    // An empty store holding the demo account (and its password unless storePassword is false).
    void resetStore(bool storePassword = true);
    // Starts a service of its own and points the program at it.
    bool startService(const QStringList& arguments = {});
    // A new main window, through its whole load sequence.
    frmMain* loadMain();
    // Closes the main window and stops the service.
    void reset();

    // Prefix, number and text of a single SMS.
    void fill(const QString& key, const QString& number, const QString& text);

    template<typename T> T* child(const char* name) const { return m_main->findChild<T*>(QString::fromLatin1(name)); }

    frmMain* main() const { return m_main.get(); }
    ServiceProcess* service() const { return m_service.get(); }
    QString folder() const { return m_folder.path(); }
    // The raw bodies the service received at path, oldest first.
    QStringList bodies(const QString& path) const;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;
    std::unique_ptr<frmMain> m_main;
};
