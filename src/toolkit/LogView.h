// SPDX-License-Identifier: GPL-3.0-or-later
// A read-only log of many lines that a screen reader can review as it is shown. Qt's own
// accessibility interface for a plain text edit places every paragraph at the top of the view,
// so a screen reader's flat review ran the first lines of all paragraphs together as one; this
// one reports each character where it is drawn.
#pragma once

#include <QPlainTextEdit>

class LogView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit LogView(QWidget* parent = nullptr);

    // Where the character at offset is drawn, in global coordinates; empty where it is scrolled
    // out of the view.
    QRect characterRect(int offset) const;
    // The offset of the character at a global point in the view; -1 outside it.
    int offsetAt(const QPoint& global) const;
    // The line as drawn (a long paragraph wraps into several) around offset: [first, end), the
    // paragraph's line break included with its last line.
    std::pair<int, int> lineAround(int offset) const;
};
