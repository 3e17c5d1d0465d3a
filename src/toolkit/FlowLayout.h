// SPDX-License-Identifier: GPL-3.0-or-later
// A row of controls that carries on in a further row where the width it gets is too small for
// all of them: beside each other, as a QHBoxLayout lays them out, where there is room; below each
// other, left-aligned, where a large font or a narrow window leaves too little. Controls that
// belong together (a caption and its field) are added as one layout, so they wrap as a pair.
#pragma once

#include <QLayout>
#include <QList>

class FlowLayout : public QLayout
{
public:
    explicit FlowLayout(QWidget* parent = nullptr);
    ~FlowLayout() override;

    // Two controls kept on one line, a caption and its field.
    void addTogether(QWidget* first, QWidget* second);
    void addLayout(QLayout* layout);

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    // One row: the width of all items side by side.
    QSize sizeHint() const override;
    // The widest item.
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    void setGeometry(const QRect& rect) override;

private:
    // Between items of a row (spacing(): the one set, else the parent layout's or the style's)
    // and between rows (the style's).
    int spacingBetween() const;
    int spacingBelow() const;
    int styleSpacing(int metric) const;
    // Lays the items out in rect (or only measures); returns the height used.
    int arrange(const QRect& rect, bool place) const;

    QList<QLayoutItem*> m_items;
};
