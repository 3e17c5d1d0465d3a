// SPDX-License-Identifier: GPL-3.0-or-later
#include "WireText.h"

#include "toolkit/Codepage.h"

#include <QSet>

#include <memory>
#include <mutex>
#include <unicode/translit.h>
#include <unicode/unistr.h>

namespace WireText {

namespace {
// Calls f(position, length, code point) for each character of text, a surrogate pair as one.
template<typename F> void forEachCharacter(QStringView text, F&& f)
{
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            f(i, qsizetype(2), char32_t(QChar::surrogateToUcs4(c, text.at(i + 1))));
            i += 2;
        } else {
            f(i, qsizetype(1), char32_t(c.unicode()));
            ++i;
        }
    }
}

// Latin letters with marks, Greek and Cyrillic have plain Latin letters, typographic signs their
// ASCII forms. Other scripts are left out on purpose: a Chinese character turned into Pinyin, or a
// Japanese one into the Chinese reading, would put words into the message the writer never wrote.
const char* const LatinId = "[[:Latin:][:Greek:][:Cyrillic:][:Common:][:Inherited:]] Any-Latin; Latin-ASCII";

// ICU's transliterators are costly to make (rules compiled from the data) and not made for use
// from two threads at once: one is made, on first use, and used under a lock.
class Latinizer
{
public:
    Latinizer()
    {
        UErrorCode status = U_ZERO_ERROR;
        UParseError parseError;
        m_transliterator.reset(icu::Transliterator::createInstance(icu::UnicodeString::fromUTF8(LatinId),
                                                                   UTRANS_FORWARD, parseError, status));
        if (U_FAILURE(status)) {
            qWarning("The transliterator %s is not available: %s", LatinId, u_errorName(status));
            m_transliterator.reset();
        }
    }

    // The run in Latin letters; unchanged without a transliterator.
    QString latin(QStringView run)
    {
        if (!m_transliterator)
            return run.toString();
        icu::UnicodeString text(run.utf16(), int32_t(run.size()));
        {
            std::lock_guard lock(m_mutex);
            m_transliterator->transliterate(text);
        }
        return QString::fromUtf16(text.getBuffer(), text.length());
    }

private:
    std::mutex m_mutex;
    std::unique_ptr<icu::Transliterator> m_transliterator;
};

Latinizer& latinizer()
{
    static Latinizer instance;
    return instance;
}

// What of text can go out; the rest is dropped.
void appendSendable(QString& out, QStringView text)
{
    forEachCharacter(text, [&](qsizetype at, qsizetype length, char32_t character) {
        if (Codepage::holds(character))
            out += text.mid(at, length);
    });
}

// Shown by its code rather than as itself: a character that shows nothing on its own.
bool isInvisible(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return true;
    default:
        return false;
    }
}

QString readable(const QString& character)
{
    char32_t code = 0;
    forEachCharacter(character, [&code](qsizetype at, qsizetype, char32_t c) {
        if (at == 0)
            code = c;
    });
    if (!isInvisible(code))
        return character;
    return QStringLiteral("U+") + QString::number(code, 16).toUpper().rightJustified(4, u'0');
}

// The notice names this many characters and counts the rest.
constexpr qsizetype NamedAtMost = 10;
} // namespace

QString wireForm(const QString& text)
{
    return Codepage::withReplacements(text);
}

qsizetype wireLength(QStringView text)
{
    qsizetype length = text.size();
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i).isHighSurrogate() && text.at(i + 1).isLowSurrogate()) {
            --length;
            ++i;
        }
    }
    return length;
}

bool isSendable(QStringView text)
{
    if (Codepage::sameAsLatin1(text))
        return true;
    bool sendable = true;
    forEachCharacter(text, [&sendable](qsizetype, qsizetype, char32_t character) {
        sendable = sendable && Codepage::holds(character);
    });
    return sendable;
}

QStringList unsendable(const QString& text)
{
    QStringList found;
    if (Codepage::sameAsLatin1(text))
        return found;
    QSet<char32_t> seen;
    forEachCharacter(text, [&](qsizetype at, qsizetype length, char32_t character) {
        if (Codepage::holds(character) || seen.contains(character))
            return;
        seen.insert(character);
        found.append(text.mid(at, length));
    });
    return found;
}

QString transliterate(const QString& text)
{
    if (isSendable(text))
        return text;
    // Composed first, so that a letter written with a separate mark becomes the letter the code
    // page holds ("e" and U+0301 become "é"). Characters the code page holds are composed already
    // and stay as they are.
    const QString composed = text.normalized(QString::NormalizationForm_C);
    QString out;
    out.reserve(composed.size());
    // Runs of characters that can't go out are transliterated together, so that a word in
    // another script is read as a word.
    qsizetype runStart = -1;
    const auto endRun = [&](qsizetype at) {
        if (runStart < 0)
            return;
        appendSendable(out, latinizer().latin(QStringView(composed).mid(runStart, at - runStart)));
        runStart = -1;
    };
    forEachCharacter(composed, [&](qsizetype at, qsizetype length, char32_t character) {
        if (Codepage::holds(character)) {
            endRun(at);
            out += QStringView(composed).mid(at, length);
        } else if (runStart < 0) {
            runStart = at;
        }
    });
    endRun(composed.size());
    return out;
}

QString unsendableNotice(const QStringList& characters)
{
    if (characters.isEmpty())
        return QString();
    QStringList named;
    for (qsizetype i = 0; i < characters.size() && i < NamedAtMost; ++i)
        named.append(readable(characters.at(i)));
    QString list = named.join(QStringLiteral(", "));
    if (characters.size() > NamedAtMost)
        list += QStringLiteral(" und %1 weitere").arg(characters.size() - NamedAtMost);
    if (characters.size() == 1)
        return QString::fromUtf16(u"Dieses Zeichen kann nicht per SMS übertragen werden und kommt als „?“ an: ") + list;
    return QString::fromUtf16(u"Diese Zeichen können nicht per SMS übertragen werden und kommen jeweils als „?“ an: ")
        + list;
}

} // namespace WireText
