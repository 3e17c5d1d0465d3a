// SPDX-License-Identifier: GPL-3.0-or-later
#include "Prefixes.h"

namespace Prefixes {

const QList<PrefixEntry>& table()
{
    static const QList<PrefixEntry> entries = [] {
        QList<PrefixEntry> list;
        const auto add = [&list](const char16_t* key, const char16_t* text, const char16_t* picture) {
            list.append({QString::fromUtf16(key), QString::fromUtf16(text), QString::fromUtf16(picture)});
        };
        for (const char16_t* p : {u"150", u"151", u"152", u"1520", u"155", u"156", u"157", u"160", u"162", u"163",
                                  u"170", u"171", u"172", u"173", u"174", u"175", u"177", u"176", u"178", u"179"}) {
            const QString prefix = QString::fromUtf16(p);
            list.append({u'G' + prefix, u'0' + prefix, QStringLiteral("germany")});
        }
        for (const char16_t* p : {u"650", u"660", u"664", u"676", u"680", u"681", u"688", u"699"}) {
            const QString prefix = QString::fromUtf16(p);
            list.append({u'A' + prefix, u'0' + prefix, QStringLiteral("austria")});
        }
        for (const char16_t* p : {u"76", u"78", u"79"}) {
            const QString prefix = QString::fromUtf16(p);
            list.append({u'S' + prefix, u'0' + prefix, QStringLiteral("switzerland")});
        }
        add(u"W", u"Weltweit", u"world");
        return list;
    }();
    return entries;
}

} // namespace Prefixes
