// SPDX-License-Identifier: GPL-3.0-or-later
// The program's flat buttons: no edge until the mouse is over them, a raised edge under the
// mouse, a sunken one while pressed. ToolbarButton puts the picture left of its caption,
// TreeButton centres the picture with the caption below it. Both take the keyboard focus and
// are activated by Space or Enter; the caption is the accessible name. A press with any mouse
// button starts a click, and letting go raises it wherever the mouse is by then.
#pragma once

#include <QAbstractButton>
#include <QIcon>

class ToolbarButton : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
    Q_PROPERTY(QColor ThemedBackColor READ ThemedBackColor WRITE setThemedBackColor)

public:
    explicit ToolbarButton(QWidget* parent = nullptr);

    QString Caption() const { return text(); }
    void setCaption(const QString& caption);
    QIcon Picture() const { return m_picture; }
    void setPicture(const QIcon& picture);
    QIcon PictureHover() const { return m_pictureHover; }
    void setPictureHover(const QIcon& picture);
    QIcon PictureDisabled() const { return m_pictureDisabled; }
    void setPictureDisabled(const QIcon& picture);
    QColor ThemedBackColor() const { return m_backColor; }
    void setThemedBackColor(const QColor& color);

    // Whether the mouse is over the button ("raised").
    bool isHot() const { return m_hot; }

    QSize sizeHint() const override;

protected:
    enum class Arrangement { PictureLeft, PictureAbove };
    ToolbarButton(Arrangement arrangement, QWidget* parent);

    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool hitButton(const QPoint& pos) const override;

private:
    // The picture of the present state: hot, disabled or normal.
    QIcon currentPicture() const;

    Arrangement m_arrangement;
    QIcon m_picture;
    QIcon m_pictureHover;
    QIcon m_pictureDisabled;
    QColor m_backColor;
    bool m_hot = false;
};

// Also tells assistive technology which of a column of them is chosen: the chosen one is a
// pressed toggle button, the others are not pressed; pressing one still clicks it.
class TreeButton : public ToolbarButton
{
    Q_OBJECT

public:
    explicit TreeButton(QWidget* parent = nullptr);

    bool isChosen() const { return m_chosen; }
    void setChosen(bool chosen);

private:
    bool m_chosen = false;
};
