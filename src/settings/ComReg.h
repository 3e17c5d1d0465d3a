// SPDX-License-Identifier: GPL-3.0-or-later
// Registration of the program's Office add-in for one Office application, as a key of the
// per-user store (ToolRegistry) under "Software\Microsoft\Office\<application>\Addins".
#pragma once

#include <QString>

namespace ComReg {

// The add-in's identifier, the last part of its key.
inline constexpr auto AddinName = u"Quellbote_OutlookAddin.Connect";

// "Software\Microsoft\Office\" + application + "\Addins\" + AddinName.
QString addinKey(const QString& application);

// Creates the add-in's key and, only when it is new, writes FriendlyName, Description,
// LoadBehavior "3" and CommandLineSafe "0". A key that exists is left as it is, so that a second
// registration keeps what was changed by hand. Reports nothing; a store that can't be written
// registers nothing.
void RegisterAddin(const QString& application);

} // namespace ComReg
