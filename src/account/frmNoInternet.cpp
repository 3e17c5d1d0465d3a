// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmNoInternet.h"

#include "toolkit/WebView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstdlib>

namespace {
std::function<void(QWidget*)>& optionsOpener()
{
    static std::function<void(QWidget*)> opener;
    return opener;
}

std::function<void()>& exitHandler()
{
    static std::function<void()> handler;
    return handler;
}
} // namespace

frmNoInternet::frmNoInternet(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmNoInternet"));
    setWindowTitle(QStringLiteral("Kein Internet"));
    setModal(true);
    auto* label7 = new QLabel(QStringLiteral("Keine Internetverbindung"), this);
    label7->setObjectName(QStringLiteral("Label7"));
    QFont bold = label7->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.4);
    label7->setFont(bold);
    auto* label1 = new QLabel(QStringLiteral("Server nicht gefunden"), this);
    label1->setObjectName(QStringLiteral("Label1"));
    auto* webBrowser = new WebView(this);
    webBrowser->setObjectName(QStringLiteral("webBrowser"));
    webBrowser->setAccessibleName(QStringLiteral("Keine Internetverbindung"));
    webBrowser->setContextMenuEnabled(false);
    webBrowser->navigate(QStringLiteral("qrc:/web/NOINTERNET.HTML"));

    auto* cmdRetry = new QPushButton(QStringLiteral("Erneut versuchen"), this);
    cmdRetry->setObjectName(QStringLiteral("cmdRetry"));
    cmdRetry->setDefault(true);
    auto* btnEinstellungen = new QPushButton(QStringLiteral("Einstellungen"), this);
    btnEinstellungen->setObjectName(QStringLiteral("btnEinstellungen"));
    auto* cmdExit = new QPushButton(QStringLiteral("Beenden"), this);
    cmdExit->setObjectName(QStringLiteral("cmdExit"));
    connect(cmdRetry, &QPushButton::clicked, this, &QDialog::accept);
    connect(btnEinstellungen, &QPushButton::clicked, this, [this] {
        if (optionsOpener())
            optionsOpener()(parentWidget());
    });
    connect(cmdExit, &QPushButton::clicked, this, [] {
        // Ends the program at once: no unload, no session saved.
        if (exitHandler())
            exitHandler()();
        else
            std::exit(0);
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnEinstellungen);
    buttons->addStretch(1);
    buttons->addWidget(cmdRetry);
    buttons->addWidget(cmdExit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label7);
    layout->addWidget(label1);
    layout->addWidget(webBrowser, 1);
    layout->addLayout(buttons);
    resize(520, 380);
}

void frmNoInternet::showBlocking(QWidget* owner)
{
    frmNoInternet window(owner);
    window.exec();
}

void frmNoInternet::setOptionsOpener(std::function<void(QWidget*)> opener)
{
    optionsOpener() = std::move(opener);
}

void frmNoInternet::setExitHandlerForTesting(std::function<void()> handler)
{
    exitHandler() = std::move(handler);
}
