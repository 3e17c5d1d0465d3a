// SPDX-License-Identifier: GPL-3.0-or-later
// Pane "Kontodaten" of the options dialog: the e-mail address and the stored password.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

class OptionsAccountPane : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsAccountPane(QWidget* parent = nullptr);

    void load();
    void save() const;

    QLabel* Label1;
    QLineEdit* txtEmail;
    QLineEdit* txtKennwort;

signals:
    void changed();
};
