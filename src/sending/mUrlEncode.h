// SPDX-License-Identifier: GPL-3.0-or-later
// URL encoding of query values: letters and digits pass, a blank becomes "+" or "%20", every
// other character "%" and its Windows-1252 byte code in two upper-case hexadecimal digits.
#pragma once

#include <QString>

namespace mUrlEncode {
QString percentEncode(const QString& text, bool plusForBlank);
} // namespace mUrlEncode
