// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools.h"

#include <QFileInfo>

#include <cmath>

namespace tools {

QString BoolToText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

namespace {
bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The form of a loose number, without looking at its size.
bool hasNumberForm(const QString& t)
{
    qsizetype i = 0;
    const qsizetype n = t.size();
    if (i < n && (t[i] == u'+' || t[i] == u'-'))
        ++i;
    bool digits = false;
    while (i < n && (isAsciiDigit(t[i]) || t[i] == u'.' || t[i] == u',')) {
        digits = digits || isAsciiDigit(t[i]);
        ++i;
    }
    if (!digits)
        return false;
    if (i < n && (t[i] == u'e' || t[i] == u'E' || t[i] == u'd' || t[i] == u'D')) {
        ++i;
        if (i < n && (t[i] == u'+' || t[i] == u'-'))
            ++i;
        bool expDigits = false;
        while (i < n && isAsciiDigit(t[i])) {
            expDigits = true;
            ++i;
        }
        if (!expDigits)
            return false;
    }
    return i == n;
}

// The value of a trimmed text of number form; *ok is false when it is too large for a double.
double valueOfNumberForm(QString t, bool* ok)
{
    for (auto& c : t) {
        if (c == u'd' || c == u'D')
            c = u'e';
    }
    const qsizetype expAt = t.indexOf(u'e', 0, Qt::CaseInsensitive);
    QString mantissa = expAt < 0 ? t : t.left(expAt);
    const QString exponent = expAt < 0 ? QString() : t.mid(expAt);
    if (mantissa.contains(u',')) {
        mantissa.remove(u'.');
        // With several commas the last one is the decimal separator.
        const qsizetype last = mantissa.lastIndexOf(u',');
        mantissa = mantissa.left(last).remove(u',') + u'.' + mantissa.mid(last + 1);
    } else if (mantissa.count(u'.') > 1) {
        mantissa.remove(u'.');
    }
    if (mantissa.endsWith(u'.'))
        mantissa.chop(1);
    if (mantissa.startsWith(u'.') || mantissa.startsWith(u"-.") || mantissa.startsWith(u"+."))
        mantissa.insert(mantissa.indexOf(u'.'), u'0');
    bool converted = false;
    const double value = QString(mantissa + exponent).toDouble(&converted);
    *ok = converted && std::isfinite(value);
    return *ok ? value : 0;
}
} // namespace

bool IsNumeric(const QString& text)
{
    const QString t = text.trimmed();
    if (!hasNumberForm(t))
        return false;
    bool ok = false;
    valueOfNumberForm(t, &ok);
    return ok;
}

double NumericValue(const QString& text, bool* ok)
{
    bool converted = false;
    const QString t = text.trimmed();
    const double value = hasNumberForm(t) ? valueOfNumberForm(t, &converted) : 0;
    if (ok)
        *ok = converted;
    return value;
}

qint16 NumericToInt16(const QString& text, bool* ok)
{
    bool converted = false;
    const double value = NumericValue(text, &converted);
    const double rounded = std::nearbyint(value);
    const bool fits = converted && rounded >= -32768.0 && rounded <= 32767.0;
    if (ok)
        *ok = fits;
    return fits ? qint16(rounded) : qint16(0);
}

bool FileExists(const QString& path)
{
    if (path.isEmpty())
        return false;
    const QFileInfo info(path);
    return info.exists() && info.isFile();
}

QString TrimBlanks(const QString& text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text.at(from) == u' ')
        ++from;
    while (to > from && text.at(to - 1) == u' ')
        --to;
    return text.mid(from, to - from);
}

} // namespace tools
