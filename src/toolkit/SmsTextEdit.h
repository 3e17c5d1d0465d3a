// SPDX-License-Identifier: GPL-3.0-or-later
// A multi-line text box whose text has line breaks as CR LF, each counting as two characters,
// with a limit on the length that typing, pasting and setting the text all respect. An emoji (a
// surrogate pair) counts one character, as it goes out, and a cut never splits one.
#pragma once

#include <QPlainTextEdit>

class SmsTextEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit SmsTextEdit(QWidget* parent = nullptr);

    // The text with CR LF line breaks.
    QString text() const;
    // Takes CR LF, CR or LF line breaks; cut to the limit.
    void setText(const QString& text);

    int maxLength() const { return m_maxLength; }
    void setMaxLength(int length);

    // Characters dropped when typed, also when an input method composes them (a dead key and a
    // blank); pasted or dropped text keeps them.
    void setDroppedKeys(const QString& characters) { m_droppedKeys = characters; }

    // Replaces the selection by the text, or inserts it at the caret.
    void replaceSelection(const QString& text);

protected:
    void insertFromMimeData(const QMimeData* source) override;
    // Text dropped on the box replaces its selection, wherever it is dropped.
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    // The room left for inserted text when the selection is replaced, in CR LF characters.
    int room() const;
    QString fitted(const QString& text) const;

    int m_maxLength = 0; // 0 means no limit
    QString m_droppedKeys;
};
