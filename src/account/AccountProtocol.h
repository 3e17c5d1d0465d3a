// SPDX-License-Identifier: GPL-3.0-or-later
// The two account requests of the first start: whether an e-mail address and a password belong
// to an account, and the application for a new account, whose password the service mails.
#pragma once

#include <QString>

class Inet;

namespace AccountProtocol {

enum class Answer {
    Accepted, // the service answered a number of value 0
    Refused, // the service answered another number
    Failed, // the transfer failed, or the answer was no number
};

struct NewAccount
{
    QString txtName;
    QString txtFirstName;
    QString txtFirma;
    QString txtEmail;
    QString txtTelefon;
    QString txtFax;
    QString txtStrasse;
    QString txtPLZ;
    QString txtOrt;
    QString txtLand;
    QString txtGutscheincode;
};

// The CheckUser address: e-mail and password as typed, not encoded.
QString checkUserUrl(const QString& baseUrl, const QString& email, const QString& password);
// The CreateUser address: all twelve keys, every value percent-encoded, referer the product name.
QString createUserUrl(const QString& baseUrl, const NewAccount& account, const QString& productName);
// A text of numeric value 0 (blanks around it allowed) is Accepted.
Answer readAnswer(const QString& text, bool transferOk);

Answer checkAccount(Inet& iNet, const QString& email, const QString& password);
Answer createAccount(Inet& iNet, const NewAccount& account);

} // namespace AccountProtocol
