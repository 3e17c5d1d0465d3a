// SPDX-License-Identifier: GPL-3.0-or-later
// Reads one key of an INI file, as the branding file oem.inf needs it: section and key are
// found in any case, a value runs to the end of its line and loses its trailing blanks, and an
// empty value counts as absent. The program never writes an INI file.
#pragma once

#include <QByteArray>
#include <QString>

namespace iniHandler {

// The largest value read; a longer one is cut.
inline constexpr int MaxValueLength = 65534;

QString GetIniValue(const QString& file, const QString& section, const QString& key,
                    const QString& defaultValue = QString());
// The same over the bytes of such a file.
QString GetIniValueFromBytes(const QByteArray& bytes, const QString& section, const QString& key,
                             const QString& defaultValue = QString());

} // namespace iniHandler
