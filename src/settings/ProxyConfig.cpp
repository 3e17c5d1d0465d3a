// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProxyConfig.h"

#include "cOptionen.h"
#include "tools.h"

#include <cmath>

namespace ProxyConfig {

qint32 ToLong(const QString& value)
{
    bool ok = false;
    const double number = tools::NumericValue(value, &ok);
    if (!ok || number < -2147483648.0 || number > 2147483647.0)
        return 0;
    return qint32(std::nearbyint(number));
}

qint16 GetAccessType()
{
    return qint16(ToLong(Options().ProxyAccessType()));
}

QString GetProxyHost()
{
    return Options().ProxyAccessType() == u"2" ? Options().ProxyAddress() : QString();
}

qint16 GetProxyPort()
{
    if (Options().ProxyAccessType() != u"2")
        return 0;
    // The port goes through 16 signed bits on purpose: 65535 reads as -1.
    return qint16(quint16(ToLong(Options().ProxyPort()) & 0xFFFF));
}

QString GetProxyString()
{
    return GetProxyHost() + QLatin1Char(':') + QString::number(GetProxyPort());
}

} // namespace ProxyConfig
