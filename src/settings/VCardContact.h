// SPDX-License-Identifier: GPL-3.0-or-later
// One contact of the address book as a vCard gives it: the name to show and the telephone
// numbers with their types.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct VCardPhone
{
    // As the card writes it; a "tel:" address has lost its scheme and its parameters.
    QString number;
    // Upper case, whichever way the card wrote them: "CELL", "VOICE", "HOME", ...
    QStringList types;

    bool isCell() const { return types.contains(QStringLiteral("CELL")); }
};

struct VCardContact
{
    // FN, else "Given Family" from N, else the organisation; may be empty.
    QString displayName;
    // In the order of the card.
    QList<VCardPhone> phones;

    // The first number typed as a mobile one (CELL, in whichever version's form); empty for a
    // card without one: a landline, work or fax number is no recipient of an SMS.
    QString mobileNumber() const;
};
