// SPDX-License-Identifier: GPL-3.0-or-later
// The address-book pane of the options dialog: the profile whose address books the picker
// shows, the contacts folder, and the registration of the program's add-in.
#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;

class OptionsAddressBookPane : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsAddressBookPane(QWidget* parent = nullptr);

    void load();
    void save() const;

    QLineEdit* txtOutlookProfile;
    QPushButton* cmdOutlookProfile;
    QLineEdit* txtOutlookContacts;
    QPushButton* cmdOulookChooseContacts;
    QPushButton* cmdOutlookRegister;

private:
    void cmdOulookChooseContacts_Click();

    // The chosen folder's identifiers, kept until the dialog saves them.
    QString m_storeID;
    QString m_entryID;
};
