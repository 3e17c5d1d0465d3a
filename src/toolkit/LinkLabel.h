// SPDX-License-Identifier: GPL-3.0-or-later
// A label that acts as a link: underlined text in the link colour, a hand under the mouse, and a
// click. It is a button underneath, so keyboard and assistive technology can press it as well.
#pragma once

#include <QAbstractButton>

class LinkLabel : public QAbstractButton
{
    Q_OBJECT

public:
    explicit LinkLabel(const QString& text, QWidget* parent = nullptr);

    void setWordWrap(bool wrap);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return m_wordWrap; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int textFlags() const;

    bool m_wordWrap = false;
};
