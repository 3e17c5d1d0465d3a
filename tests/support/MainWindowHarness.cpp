// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"

#include "TestStore.h"
#include "settings/ProgramFolder.h"
#include "settings/cOptionen.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"

#include <QJsonObject>
#include <QLineEdit>

MainWindowHarness::MainWindowHarness()
{
    Pause::setLengthForTesting(0);
    ProgramFolder::setPathForTesting(m_folder.path());
}

void MainWindowHarness::resetStore(bool storePassword)
{
    TestStore::reset();
    TestStore::put(QStringLiteral("eMail"), QStringLiteral("demo@quellbote.test"));
    if (storePassword)
        TestStore::put(QStringLiteral("Password"), QStringLiteral("demo"));
    reloadOptionsForTesting();
}

bool MainWindowHarness::startService(const QStringList& arguments)
{
    m_service = std::make_unique<ServiceProcess>(arguments);
    if (!m_service->isRunning())
        return false;
    m_service->pointProgramAt(m_folder.path());
    return true;
}

frmMain* MainWindowHarness::loadMain()
{
    m_main = std::make_unique<frmMain>();
    m_main->load(nullptr);
    return m_main.get();
}

void MainWindowHarness::reset()
{
    m_main.reset();
    m_service.reset();
}

void MainWindowHarness::fill(const QString& key, const QString& number, const QString& text)
{
    m_main->selectPrefixKey(key);
    child<QLineEdit>("txtNummer")->setText(number);
    child<SmsTextEdit>("txtSMS")->setText(text);
}

QStringList MainWindowHarness::bodies(const QString& path) const
{
    QStringList result;
    for (const QJsonObject& entry : m_service->requests(path))
        result.append(entry.value(QStringLiteral("body")).toString());
    return result;
}
