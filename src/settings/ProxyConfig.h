// SPDX-License-Identifier: GPL-3.0-or-later
// How the program reaches the service: the system's proxy, none, or a named one. Turns the
// proxy settings into the access type and proxy text of the transfer objects.
#pragma once

#include <QString>

namespace ProxyConfig {
// 0 for an empty or non-numeric value, otherwise its 32-bit integer value.
qint32 ToLong(const QString& value);
// ProxyAccessType as a number: 0 system proxy, 1 none, 2 named; any other number passes.
qint16 GetAccessType();
// ProxyAddress when ProxyAccessType is exactly "2", otherwise empty.
QString GetProxyHost();
// ProxyPort through 16 bits (65535 prints as -1) when ProxyAccessType is exactly "2", otherwise 0.
qint16 GetProxyPort();
// Host, ":" and port: ":0" when no proxy is named.
QString GetProxyString();
} // namespace ProxyConfig
