// SPDX-License-Identifier: GPL-3.0-or-later
// The program's name: "Quellbote", or the name a branding file oem.inf gives it. Set once by the
// start routine before the first window; the title of the message boxes and the "referer".
#pragma once

#include <QString>

QString ProductName();
void setProductName(const QString& name);

// "Strings"/"ProductName" of oem.inf when the file exists, otherwise "Quellbote".
QString readProductName();

inline constexpr auto DefaultProductName = u"Quellbote";
