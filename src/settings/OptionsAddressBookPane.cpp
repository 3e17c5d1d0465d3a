// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsAddressBookPane.h"

#include "AddressBook.h"
#include "ComReg.h"
#include "ProductName.h"
#include "cOptionen.h"
#include "toolkit/FileChooser.h"
#include "toolkit/MessageBox.h"
#include "toolkit/PaneHeading.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

OptionsAddressBookPane::OptionsAddressBookPane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxOutlookIntegration"));
    auto* grid = new QGridLayout(this);
    grid->addWidget(PaneHeading::make(QStringLiteral("Label9"), QStringLiteral("Outlook Integration"), this), 0, 0, 1,
                    2);
    const auto row = [this, grid](const QString& label, QLineEdit** edit, QPushButton** button,
                                  const QString& buttonText, int at) {
        auto* caption = new QLabel(label, this);
        *edit = new QLineEdit(this);
        (*edit)->setAccessibleName(label);
        (*edit)->setReadOnly(true);
        caption->setBuddy(*edit);
        *button = new QPushButton(buttonText, this);
        grid->addWidget(caption, at, 0, 1, 2);
        grid->addWidget(*edit, at + 1, 0);
        grid->addWidget(*button, at + 1, 1);
    };
    row(QStringLiteral("dieses Outlook Profil verwenden"), &txtOutlookProfile, &cmdOutlookProfile,
        QStringLiteral("Profile wählen"), 1);
    row(QStringLiteral("diese Outlook Adressbuch verwenden"), &txtOutlookContacts, &cmdOulookChooseContacts,
        QStringLiteral("Ordner wählen"), 3);
    txtOutlookProfile->setObjectName(QStringLiteral("txtOutlookProfile"));
    cmdOutlookProfile->setObjectName(QStringLiteral("cmdOutlookProfile"));
    txtOutlookContacts->setObjectName(QStringLiteral("txtOutlookContacts"));
    cmdOulookChooseContacts->setObjectName(QStringLiteral("cmdOulookChooseContacts"));
    cmdOutlookRegister = new QPushButton(QStringLiteral("Quellbote Plugin installieren"), this);
    cmdOutlookRegister->setObjectName(QStringLiteral("cmdOutlookRegister"));
    grid->addWidget(cmdOutlookRegister, 5, 0, 1, 2, Qt::AlignLeft);
    grid->setRowStretch(6, 1);
    grid->setColumnStretch(0, 1);

    connect(cmdOutlookProfile, &QPushButton::clicked, this, [this] {
        // A cancelled choice changes nothing.
        const QString folder = FileChooser::chooseAddressBookFolder(window(), AddressBook::profilesRoot());
        if (!folder.isEmpty())
            txtOutlookProfile->setText(AddressBook::profileName(folder));
    });
    connect(cmdOulookChooseContacts, &QPushButton::clicked, this,
            &OptionsAddressBookPane::cmdOulookChooseContacts_Click);
    connect(cmdOutlookRegister, &QPushButton::clicked, this, [] { ComReg::RegisterAddin(QStringLiteral("Outlook")); });
}

void OptionsAddressBookPane::load()
{
    txtOutlookProfile->setText(Options().OutlookProfil());
    txtOutlookContacts->setText(Options().ContactFolderName());
    m_storeID = Options().ContactStoreID();
    m_entryID = Options().ContactEntryID();
}

void OptionsAddressBookPane::save() const
{
    Options().setOutlookProfil(txtOutlookProfile->text());
    Options().setContactFolderName(txtOutlookContacts->text());
    Options().setContactStoreID(m_storeID);
    Options().setContactEntryID(m_entryID);
}

void OptionsAddressBookPane::cmdOulookChooseContacts_Click()
{
    const QString path
        = FileChooser::chooseAddressBookFolder(window(), AddressBook::profileFolder(txtOutlookProfile->text()));
    if (path.isEmpty())
        return;
    const std::optional<AddressBook::ContactFolder> folder = AddressBook::chooseFolder(path);
    if (!folder) {
        // The earlier choice stays.
        MessageBox::show(this, QString::fromUtf16(AddressBook::NoContactsWarning), MessageBox::Buttons::Ok,
                         MessageBox::Icon::Warning, ProductName());
        return;
    }
    txtOutlookContacts->setText(folder->name);
    m_storeID = folder->storeID;
    m_entryID = folder->entryID;
}
