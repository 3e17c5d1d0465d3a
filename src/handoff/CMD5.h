// SPDX-License-Identifier: GPL-3.0-or-later
// The MD5 digest of a text, as the group form of a job file signs itself: one byte per
// character (its low 8 bits, so ISO-8859-1 for the characters it holds), 32 lower-case
// hexadecimal digits out.
#pragma once

#include <QString>

class CMD5
{
public:
    QString MD5(const QString& message) const;
};
