// SPDX-License-Identifier: GPL-3.0-or-later
// The service's terms and conditions, to be accepted before an account is applied for.
#pragma once

#include <QDialog>

class QPushButton;
class WebView;

class frmAGBs : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmAGBs)

public:
    explicit frmAGBs(QWidget* owner);
    ~frmAGBs() override;

    // Modal over owner; true only for "Akzeptieren". Nothing records the answer.
    static bool acceptAGBs(QWidget* owner);

    WebView* web;
    QPushButton* cmdAccept;
    QPushButton* cmdCancel;
};
