// SPDX-License-Identifier: GPL-3.0-or-later
// "Adressbuch": the contacts of the chosen address-book profile (vCard files), to pick
// recipients from. Cards that can't be read are left out and counted.
#pragma once

#include "VCardContact.h"

#include <QDialog>

class QLabel;
class QListWidget;

class frmAddressBookPicker : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmAddressBookPicker)

public:
    // profileFolder: where the profile's vCard files are.
    frmAddressBookPicker(const QString& profileFolder, QWidget* owner);
    ~frmAddressBookPicker() override;

    // Modal; the ticked contacts in the list's order, none when cancelled.
    static QList<VCardContact> pick(QWidget* owner);

    QList<VCardContact> chosen() const;

    QListWidget* lstContacts;
    QLabel* lblSkipped;

private:
    QList<VCardContact> m_contacts;
};
