// SPDX-License-Identifier: GPL-3.0-or-later
// A balloon attached to a control: title, icon and text, shown when the mouse rests on the
// control for DelayTime and hidden after VisibleTime. Changes to title, icon, text and colours
// show at once; style, centring and the times take effect at the next Create.
#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QLabel;

class CTooltip : public QObject
{
    Q_OBJECT

public:
    explicit CTooltip(QObject* parent = nullptr);
    ~CTooltip() override;

    int Style() const { return m_style; } // 0 standard tip, 1 balloon
    void setStyle(int style) { m_style = style; }
    bool Centered() const { return m_centered; }
    void setCentered(bool centered) { m_centered = centered; }
    int Icon() const { return m_icon; } // 0 none, 1 information, 2 warning, 3 error
    void setIcon(int icon);
    QColor ForeColor() const { return m_foreColor; } // invalid: the system's colour
    void setForeColor(const QColor& color);
    QString Title() const { return m_title; }
    void setTitle(const QString& title);
    QColor BackColor() const { return m_backColor; }
    void setBackColor(const QColor& color);
    QString TipText() const { return m_tipText; }
    void setTipText(const QString& text);
    int VisibleTime() const { return m_visibleTime; }
    void setVisibleTime(int ms) { m_visibleTime = ms; }
    int DelayTime() const { return m_delayTime; }
    void setDelayTime(int ms) { m_delayTime = ms; }

    // Attaches a new tip window to the control, destroying one that exists. When the mouse is
    // over the control already, the delay starts at once.
    void Create(QWidget* parentControl);
    void Destroy();

    QWidget* tipWindow() const { return m_tip; }
    bool isTipVisible() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refresh();
    void showTip();

    int m_style = 0;
    bool m_centered = false;
    int m_icon = 0;
    QColor m_foreColor;
    QString m_title;
    QColor m_backColor;
    QString m_tipText;
    int m_visibleTime = 5000;
    int m_delayTime = 500;

    QPointer<QWidget> m_parent;
    QPointer<QWidget> m_tip;
    QLabel* m_iconLabel = nullptr;
    QLabel* m_titleLabel = nullptr;
    QLabel* m_textLabel = nullptr;
    bool m_popped = false; // shown since the mouse came; it comes again only after a new enter
    QTimer m_delay;
    QTimer m_visible;
};
