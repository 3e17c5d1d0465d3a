// SPDX-License-Identifier: GPL-3.0-or-later
// A line beside the message counters that names the characters of the message that can't go out
// (they would arrive as "?") and offers to replace them by plain letters. Hidden while the
// message holds none.
#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;
class ToolbarButton;

class UnsendableCharsBar : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UnsendableCharsBar)

public:
    explicit UnsendableCharsBar(QWidget* parent = nullptr);

    // Looks at the message afresh: shows the bar with the characters named, or hides it.
    void setText(const QString& text);
    // The characters named, in the order they first occur; empty while the bar is hidden.
    QStringList characters() const { return m_characters; }

signals:
    // "Zeichen ersetzen" was pressed: the owner replaces the message by its transliteration.
    void replaceRequested();

private:
    QLabel* lblUnsendable;
    ToolbarButton* tbTransliterate;
    QStringList m_characters;
};
