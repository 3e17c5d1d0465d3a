// SPDX-License-Identifier: GPL-3.0-or-later
// "Vorschau für den gewählten Empfänger": under the MultiSMS table, the selected row's SMS as its
// recipient gets it (placeholders filled in), with the number, size, parts and price below it.
#pragma once

#include "ListCheck.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;

class RecipientPreview : public QWidget
{
    Q_OBJECT

public:
    explicit RecipientPreview(QWidget* parent = nullptr);

    // The row's message under context; none when no row is selected.
    void showRow(const RecipientRow* row, const ListCheck::Context& context);

private:
    QPlainTextEdit* txtVorschau;
    QLabel* lblVorschau;
};
