// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmAddressBookPicker.h"

#include "AddressBook.h"
#include "cOptionen.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmAddressBookPicker::frmAddressBookPicker(const QString& profileFolder, QWidget* owner)
    : QDialog(owner)
{
    setObjectName(QStringLiteral("frmAddressBookPicker"));
    setWindowTitle(QStringLiteral("Adressbuch"));
    auto* layout = new QVBoxLayout(this);
    auto* caption = new QLabel(QStringLiteral("Wählen Sie die Empfänger aus dem Adressbuch „%1“:")
                                   .arg(QDir::toNativeSeparators(profileFolder)),
                               this);
    caption->setWordWrap(true);
    layout->addWidget(caption);
    lstContacts = new QListWidget(this);
    lstContacts->setObjectName(QStringLiteral("lstContacts"));
    lstContacts->setAccessibleName(QStringLiteral("Kontakte"));
    caption->setBuddy(lstContacts);
    layout->addWidget(lstContacts, 1);
    lblSkipped = new QLabel(this);
    lblSkipped->setObjectName(QStringLiteral("lblSkipped"));
    lblSkipped->setWordWrap(true);
    layout->addWidget(lblSkipped);

    const VCardReader::Result read = AddressBook::profileContacts(profileFolder);
    m_contacts = read.contacts;
    for (const VCardContact& contact : m_contacts) {
        const QString mobile = contact.mobileNumber();
        auto* item = new QListWidgetItem(
            (contact.displayName.isEmpty() ? QStringLiteral("(ohne Namen)") : contact.displayName)
                + (mobile.isEmpty() ? QStringLiteral("  –  keine Mobilfunknummer") : QStringLiteral("  –  ") + mobile),
            lstContacts);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        item->setCheckState(Qt::Unchecked);
    }
    if (m_contacts.isEmpty() && read.skipped == 0)
        lblSkipped->setText(QStringLiteral("In diesem Adressbuch sind keine Kontakte gespeichert."));
    else if (read.skipped == 1)
        lblSkipped->setText(QStringLiteral("Ein Eintrag konnte nicht gelesen werden und wurde übersprungen."));
    else if (read.skipped > 1)
        lblSkipped->setText(
            QStringLiteral("%1 Einträge konnten nicht gelesen werden und wurden übersprungen.").arg(read.skipped));
    lblSkipped->setVisible(!lblSkipped->text().isEmpty());

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Übernehmen"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // A double-click takes that one contact.
    connect(lstContacts, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        item->setCheckState(Qt::Checked);
        accept();
    });
    resize(420, 480);
}

frmAddressBookPicker::~frmAddressBookPicker() = default;

QList<VCardContact> frmAddressBookPicker::chosen() const
{
    QList<VCardContact> list;
    for (int i = 0; i < lstContacts->count(); ++i) {
        if (lstContacts->item(i)->checkState() == Qt::Checked)
            list.append(m_contacts.at(i));
    }
    return list;
}

QList<VCardContact> frmAddressBookPicker::pick(QWidget* owner)
{
    frmAddressBookPicker dialog(AddressBook::profileFolder(Options().OutlookProfil()), owner);
    return dialog.exec() == QDialog::Accepted ? dialog.chosen() : QList<VCardContact>();
}
