// SPDX-License-Identifier: GPL-3.0-or-later
#include "OemTheme.h"

#include "ProgramFolder.h"
#include "iniHandler.h"

namespace {
std::optional<qint64> colorValue(const QString& text)
{
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok);
    if (!ok || value < -2147483648LL || value > 4294967295LL)
        return std::nullopt;
    return value;
}
} // namespace

QString OemTheme::builtInCopyright()
{
    return QStringLiteral("Tarnholt Software. Alle Rechte vorbehalten.");
}

OemTheme OemTheme::read()
{
    OemTheme theme;
    theme.copyright = builtInCopyright();
    if (!ProgramFolder::oemFileExists())
        return theme;
    theme.fileExists = true;
    const QString file = ProgramFolder::oemFile();
    const auto value = [&file](const char16_t* section, const char16_t* key, const QString& fallback = QString()) {
        return iniHandler::GetIniValue(file, QString::fromUtf16(section), QString::fromUtf16(key), fallback);
    };
    theme.headerPicture = value(u"Images", u"Header");
    theme.logoPicture = value(u"Images", u"Logo");
    const auto color = [&](const char16_t* key, const char* fallback) {
        const QString text = value(u"Colors", key, QString::fromLatin1(fallback));
        const std::optional<qint64> parsed = colorValue(text);
        if (!parsed) {
            theme.problems.append(QStringLiteral("[Colors] %1=%2: keine Farbe (erwartet wird eine Zahl)")
                                      .arg(QString::fromUtf16(key), text));
        }
        return parsed;
    };
    theme.headerColor = color(u"Header", "-2147483643");
    theme.headerInfoColor = color(u"HeaderInfo", "-2147483643");
    theme.backgroundColor = color(u"Background", "-2147483633");
    theme.copyright = value(u"Strings", u"Copyright", builtInCopyright());
    theme.hideHeaderStrings = value(u"Common", u"HideHeaderStrings", QStringLiteral("false")) == u"true";
    return theme;
}
