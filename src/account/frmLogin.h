// SPDX-License-Identifier: GPL-3.0-or-later
// "Kennwort eingeben": asks for the account's password when none is stored. The typed password
// is used for the one operation and never stored.
#pragma once

#include <QDialog>

class QLineEdit;

class frmLogin : public QDialog
{
    Q_OBJECT

public:
    explicit frmLogin(const QString& email, QWidget* parent = nullptr);

    // Shows the prompt modally; the typed password, or an empty text when cancelled.
    static QString askForPassword(const QString& email, QWidget* owner = nullptr);

private:
    QLineEdit* txtEmail;
    QLineEdit* txtPassword;
    QString m_result;
};

// The password for the next request: the stored one, or the prompt's answer when none is stored.
QString GetKennwort(QWidget* owner = nullptr);

// Saves the options after the user gave a password to keep. When the desktop's keyring refused
// it, the password went into the settings file instead, and the user is told so.
void saveOptionsWithPassword(QWidget* owner);
