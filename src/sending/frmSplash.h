// SPDX-License-Identifier: GPL-3.0-or-later
// The splash window: product name, logo, version and one status line while the program loads.
#pragma once

#include <QWidget>

class QLabel;

class frmSplash : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmSplash)

public:
    explicit frmSplash(QWidget* parent = nullptr);

    // Shows a status line, lets it draw, then pauses 200 ms.
    void info(const QString& text);

    // Every line shown so far, oldest first.
    const QStringList& lines() const { return m_lines; }

private:
    QLabel* lblProductName;
    QLabel* imgLogo;
    QLabel* lblVersion;
    QLabel* lblInfo;
    QStringList m_lines;
};
