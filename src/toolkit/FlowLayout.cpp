// SPDX-License-Identifier: GPL-3.0-or-later
#include "FlowLayout.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace {
// Where neither the layout nor the style gives one.
constexpr int DefaultSpacing = 6;
} // namespace

FlowLayout::FlowLayout(QWidget* parent)
    : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout()
{
    while (QLayoutItem* item = takeAt(0))
        delete item;
}

void FlowLayout::addTogether(QWidget* first, QWidget* second)
{
    auto* pair = new QHBoxLayout;
    pair->setContentsMargins(0, 0, 0, 0);
    // The pair's own spacing, not the wider one this layout may have between its items.
    const int styled = QApplication::style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
    pair->setSpacing(styled >= 0 ? styled : DefaultSpacing);
    addLayout(pair);
    pair->addWidget(first);
    pair->addWidget(second);
}

void FlowLayout::addLayout(QLayout* layout)
{
    addChildLayout(layout);
    addItem(layout);
}

void FlowLayout::addItem(QLayoutItem* item)
{
    m_items.append(item);
    invalidate();
}

int FlowLayout::count() const
{
    return int(m_items.size());
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return m_items.value(index);
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= m_items.size())
        return nullptr;
    QLayoutItem* item = m_items.takeAt(index);
    // A layout taken out is the caller's, as from a box layout.
    if (QLayout* inner = item->layout(); inner && inner->parent() == this)
        inner->setParent(nullptr);
    invalidate();
    return item;
}

Qt::Orientations FlowLayout::expandingDirections() const
{
    return {};
}

int FlowLayout::spacingBetween() const
{
    return spacing() >= 0 ? spacing() : styleSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int FlowLayout::spacingBelow() const
{
    return styleSpacing(QStyle::PM_LayoutVerticalSpacing);
}

int FlowLayout::styleSpacing(int metric) const
{
    const QWidget* parent = parentWidget();
    const int spacing
        = parent ? parent->style()->pixelMetric(QStyle::PixelMetric(metric), nullptr, parent) : DefaultSpacing;
    return spacing >= 0 ? spacing : DefaultSpacing;
}

QSize FlowLayout::sizeHint() const
{
    QSize size;
    int shown = 0;
    for (const QLayoutItem* item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint();
        size.setWidth(size.width() + hint.width());
        size.setHeight(std::max(size.height(), hint.height()));
        ++shown;
    }
    if (shown > 1)
        size.rwidth() += (shown - 1) * spacingBetween();
    const QMargins m = contentsMargins();
    return size.grownBy(m);
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : m_items) {
        if (!item->isEmpty())
            size = size.expandedTo(item->sizeHint());
    }
    const QMargins m = contentsMargins();
    return size.grownBy(m);
}

bool FlowLayout::hasHeightForWidth() const
{
    return true;
}

int FlowLayout::heightForWidth(int width) const
{
    return arrange(QRect(0, 0, width, 0), false);
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::arrange(const QRect& rect, bool place) const
{
    const QMargins m = contentsMargins();
    const QRect area = rect.marginsRemoved(m);
    const int gap = spacingBetween();
    const int below = spacingBelow();
    // Each row is measured first, so that its items stand centred on one line.
    QList<QLayoutItem*> row;
    int y = area.top();
    int rowWidth = 0;
    int rowHeight = 0;
    const auto finishRow = [&] {
        if (row.isEmpty())
            return;
        if (place) {
            int x = area.left();
            for (QLayoutItem* item : std::as_const(row)) {
                const QSize hint = item->sizeHint();
                item->setGeometry(QRect(QPoint(x, y + (rowHeight - hint.height()) / 2), hint));
                x += hint.width() + gap;
            }
        }
        y += rowHeight + below;
        row.clear();
        rowWidth = 0;
        rowHeight = 0;
    };
    for (QLayoutItem* item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint();
        if (!row.isEmpty() && rowWidth + gap + hint.width() > area.width())
            finishRow();
        rowWidth += (row.isEmpty() ? 0 : gap) + hint.width();
        rowHeight = std::max(rowHeight, hint.height());
        row.append(item);
    }
    finishRow();
    const int used = y == area.top() ? 0 : y - below - area.top();
    return used + m.top() + m.bottom();
}
