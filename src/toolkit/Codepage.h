// SPDX-License-Identifier: GPL-3.0-or-later
// The single-byte code page of request bodies and data files: Windows-1252. A character the
// code page can't hold becomes "?".
#pragma once

#include <QByteArray>
#include <QString>

namespace Codepage {
QByteArray toWindows1252(const QString& text);
QString fromWindows1252(const QByteArray& bytes);
} // namespace Codepage
