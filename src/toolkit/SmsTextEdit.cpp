// SPDX-License-Identifier: GPL-3.0-or-later
#include "SmsTextEdit.h"

#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>

namespace {
QString toCrLf(QString text)
{
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
}

// Characters as a message counts them: a surrogate pair (an emoji) is one.
int characters(QStringView text)
{
    qsizetype count = text.size();
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i).isHighSurrogate() && text.at(i + 1).isLowSurrogate()) {
            --count;
            ++i;
        }
    }
    return int(count);
}

// Drops the last character, a surrogate pair whole, so that a cut leaves no half of one behind.
void chopCharacter(QString& text)
{
    const qsizetype n = text.size();
    text.chop(n >= 2 && text.at(n - 1).isLowSurrogate() && text.at(n - 2).isHighSurrogate() ? 2 : 1);
}

QString toLf(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}
} // namespace

SmsTextEdit::SmsTextEdit(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
}

QString SmsTextEdit::text() const
{
    return toCrLf(toPlainText());
}

void SmsTextEdit::setText(const QString& text)
{
    QString lf = toLf(text);
    if (m_maxLength > 0) {
        while (characters(toCrLf(lf)) > m_maxLength)
            chopCharacter(lf);
    }
    setPlainText(lf);
    moveCursor(QTextCursor::End);
}

void SmsTextEdit::setMaxLength(int length)
{
    m_maxLength = length;
}

void SmsTextEdit::replaceSelection(const QString& text)
{
    const QString fit = fitted(toLf(text));
    textCursor().insertText(fit);
}

int SmsTextEdit::room() const
{
    if (m_maxLength <= 0)
        return std::numeric_limits<int>::max();
    const int selected = characters(toCrLf(textCursor().selectedText()));
    return m_maxLength - characters(text()) + selected;
}

QString SmsTextEdit::fitted(const QString& lfText) const
{
    QString fit = lfText;
    const int left = room();
    while (!fit.isEmpty() && characters(toCrLf(fit)) > left)
        chopCharacter(fit);
    return fit;
}

void SmsTextEdit::insertFromMimeData(const QMimeData* source)
{
    if (source && source->hasText())
        replaceSelection(source->text());
}

void SmsTextEdit::keyPressEvent(QKeyEvent* event)
{
    const bool newLine = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QString typed = newLine ? QStringLiteral("\n") : event->text();
    const bool insertsText = newLine || (!typed.isEmpty() && typed.at(0).isPrint());
    if (!newLine && typed.size() == 1 && m_droppedKeys.contains(typed.at(0))) {
        event->accept();
        return;
    }
    if (insertsText && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        if (characters(toCrLf(typed)) > room()) {
            event->accept();
            return;
        }
    }
    QPlainTextEdit::keyPressEvent(event);
}

void SmsTextEdit::dropEvent(QDropEvent* event)
{
    if (!event->mimeData() || !event->mimeData()->hasText()) {
        QPlainTextEdit::dropEvent(event);
        return;
    }
    replaceSelection(event->mimeData()->text());
    event->acceptProposedAction();
}

void SmsTextEdit::inputMethodEvent(QInputMethodEvent* event)
{
    QString commit = event->commitString();
    for (const QChar dropped : std::as_const(m_droppedKeys))
        commit.remove(dropped);
    if (event->replacementLength() == 0)
        commit = fitted(commit);
    if (commit == event->commitString()) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    filtered.setCommitString(commit, event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&filtered);
    event->accept();
}
