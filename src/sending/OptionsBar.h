// SPDX-License-Identifier: GPL-3.0-or-later
// The send options under the message: three panels that show whether sender identity, replies
// and the hand-in confirmation are on, and switch them by a click.
#pragma once

#include <QWidget>

class QAbstractButton;

class OptionsBar : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsBar(QWidget* parent = nullptr);

    // The panel of a key ("absender", "antwort", "einlieferung").
    QAbstractButton* panel(const QString& key) const;
    void setPanelOn(const QString& key, bool on);
    bool isPanelOn(const QString& key) const;

signals:
    void panelClicked(const QString& key);
};
