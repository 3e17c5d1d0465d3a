// SPDX-License-Identifier: GPL-3.0-or-later
// "Signaturen verwalten": writes a new signature or changes one, with its character count.
#pragma once

#include <QDialog>

class QLineEdit;
class SmsTextEdit;

class frmSignaturen : public QDialog
{
    Q_OBJECT

public:
    explicit frmSignaturen(QWidget* parent = nullptr);

    // Opens the window for a new signature; true when it was saved, with the text.
    static bool showNew(QWidget* owner, QString* text);
    // Opens the window with a signature's text; true when it was saved, with the new text.
    static bool showEdit(QWidget* owner, const QString& current, QString* text);

private:
    SmsTextEdit* txtSignatur;
    QLineEdit* txtZeichen;
};
