// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogView.h"

#include <QAccessibleWidget>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

#include <algorithm>

namespace {
// A read-only, multi-line text whose characters stand where they are drawn.
class AccessibleLogView : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit AccessibleLogView(LogView* view)
        : QAccessibleWidget(view, QAccessible::EditableText)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.readOnly = true;
        s.multiLine = true;
        s.selectableText = true;
        return s;
    }
    QString text(QAccessible::Text type) const override
    {
        return type == QAccessible::Value ? view()->toPlainText() : QAccessibleWidget::text(type);
    }

    void selection(int selectionIndex, int* startOffset, int* endOffset) const override
    {
        const QTextCursor cursor = view()->textCursor();
        const bool has = selectionIndex == 0 && cursor.hasSelection();
        *startOffset = has ? cursor.selectionStart() : 0;
        *endOffset = has ? cursor.selectionEnd() : 0;
    }
    int selectionCount() const override { return view()->textCursor().hasSelection() ? 1 : 0; }
    void addSelection(int startOffset, int endOffset) override { setSelection(0, startOffset, endOffset); }
    void removeSelection(int selectionIndex) override
    {
        if (selectionIndex != 0)
            return;
        QTextCursor cursor = view()->textCursor();
        cursor.clearSelection();
        view()->setTextCursor(cursor);
    }
    void setSelection(int selectionIndex, int startOffset, int endOffset) override
    {
        if (selectionIndex != 0)
            return;
        QTextCursor cursor = view()->textCursor();
        cursor.setPosition(clamped(startOffset));
        cursor.setPosition(clamped(endOffset), QTextCursor::KeepAnchor);
        view()->setTextCursor(cursor);
    }
    int cursorPosition() const override { return view()->textCursor().position(); }
    void setCursorPosition(int position) override
    {
        QTextCursor cursor = view()->textCursor();
        cursor.setPosition(clamped(position));
        view()->setTextCursor(cursor);
    }

    QString text(int startOffset, int endOffset) const override
    {
        QTextCursor cursor(view()->document());
        cursor.setPosition(clamped(startOffset));
        cursor.setPosition(clamped(endOffset), QTextCursor::KeepAnchor);
        return cursor.selectedText().replace(QChar::ParagraphSeparator, u'\n');
    }
    int characterCount() const override { return view()->document()->characterCount() - 1; }
    QRect characterRect(int offset) const override { return view()->characterRect(clamped(offset)); }
    int offsetAtPoint(const QPoint& point) const override { return view()->offsetAt(point); }
    void scrollToSubstring(int, int) override { }
    QString attributes(int offset, int* startOffset, int* endOffset) const override
    {
        Q_UNUSED(offset);
        *startOffset = 0;
        *endOffset = characterCount();
        return {};
    }

    // Lines are the lines as drawn; words, sentences and characters are Qt's.
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                         int* endOffset) const override
    {
        if (boundary != QAccessible::LineBoundary)
            return QAccessibleTextInterface::textAtOffset(offset, boundary, startOffset, endOffset);
        return line(view()->lineAround(clamped(offset)), startOffset, endOffset);
    }
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                             int* endOffset) const override
    {
        if (boundary != QAccessible::LineBoundary)
            return QAccessibleTextInterface::textBeforeOffset(offset, boundary, startOffset, endOffset);
        const int first = view()->lineAround(clamped(offset)).first;
        if (first == 0)
            return line({ 0, 0 }, startOffset, endOffset);
        return line(view()->lineAround(first - 1), startOffset, endOffset);
    }
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                            int* endOffset) const override
    {
        if (boundary != QAccessible::LineBoundary)
            return QAccessibleTextInterface::textAfterOffset(offset, boundary, startOffset, endOffset);
        const int end = view()->lineAround(clamped(offset)).second;
        if (end >= characterCount())
            return line({ characterCount(), characterCount() }, startOffset, endOffset);
        return line(view()->lineAround(end), startOffset, endOffset);
    }

private:
    LogView* view() const { return static_cast<LogView*>(widget()); }
    // -1 stands for the end of the text.
    int clamped(int offset) const { return offset < 0 ? characterCount() : std::min(offset, characterCount()); }
    QString line(std::pair<int, int> range, int* startOffset, int* endOffset) const
    {
        *startOffset = range.first;
        *endOffset = range.second;
        return text(range.first, range.second);
    }
};

QAccessibleInterface* logViewFactory(const QString& className, QObject* object)
{
    if (className == u"LogView" && object && object->isWidgetType())
        return new AccessibleLogView(static_cast<LogView*>(object));
    return nullptr;
}
} // namespace

LogView::LogView(QWidget* parent)
    : QPlainTextEdit(parent)
{
    // Qt keeps a factory once, and forgets them with the application.
    QAccessible::installFactory(logViewFactory);
}

QRect LogView::characterRect(int offset) const
{
    // From the paragraph's lines, not the caret: a caret where a line wraps stands at the end of
    // the line above, the character after it at the start of the next.
    const QTextBlock block = document()->findBlock(offset);
    if (!block.isValid() || !block.isVisible() || block.layout()->lineCount() == 0)
        return {};
    const int inBlock = offset - block.position();
    const QTextLine line = block.layout()->lineForTextPosition(inBlock);
    if (!line.isValid())
        return {};
    const QRectF paragraph = blockBoundingGeometry(block).translated(contentOffset());
    const qreal left = line.cursorToX(inBlock);
    // A line's last position (the line break) is given an average character's width.
    const qreal right = inBlock < line.textStart() + line.textLength() ? line.cursorToX(inBlock + 1)
                                                                       : left + fontMetrics().averageCharWidth();
    const QRect drawn
        = QRectF(paragraph.left() + left, paragraph.top() + line.y(), std::max<qreal>(1, right - left), line.height())
              .toAlignedRect();
    if (!viewport()->rect().intersects(drawn))
        return {};
    return drawn.translated(viewport()->mapToGlobal(QPoint(0, 0)));
}

int LogView::offsetAt(const QPoint& global) const
{
    const QPoint at = viewport()->mapFromGlobal(global);
    return viewport()->rect().contains(at) ? cursorForPosition(at).position() : -1;
}

std::pair<int, int> LogView::lineAround(int offset) const
{
    const QTextBlock block = document()->findBlock(offset);
    if (!block.isValid())
        return { offset, offset };
    // A paragraph not drawn yet is laid out first, so that its lines are known.
    if (block.layout()->lineCount() == 0)
        document()->documentLayout()->blockBoundingRect(block);
    const QTextLine line = block.layout()->lineForTextPosition(offset - block.position());
    const int paragraphEnd = block.position() + block.length() - (block.next().isValid() ? 0 : 1);
    if (!line.isValid())
        return { block.position(), paragraphEnd };
    const int first = block.position() + line.textStart();
    const bool last = line.lineNumber() == block.layout()->lineCount() - 1;
    return { first, last ? paragraphEnd : first + line.textLength() };
}
