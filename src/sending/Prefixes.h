// SPDX-License-Identifier: GPL-3.0-or-later
// The dialling prefixes offered in cmbVorwahl, in the order they are listed.
#pragma once

#include <QList>
#include <QString>

struct PrefixEntry
{
    QString key; // country letter and prefix without its zero: "G171", "W" for "Weltweit"
    QString text; // as shown: "0171"
    QString picture; // "germany", "austria", "switzerland", "world"
};

namespace Prefixes {
// The 32 entries in their fixed order (G177 stands before G176).
const QList<PrefixEntry>& table();
} // namespace Prefixes
