// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecipientPreview.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QVBoxLayout>

RecipientPreview::RecipientPreview(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxVorschau"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* caption = new QLabel(QStringLiteral("&Vorschau für den gewählten Empfänger"), this);
    layout->addWidget(caption);
    txtVorschau = new QPlainTextEdit(this);
    txtVorschau->setObjectName(QStringLiteral("txtVorschau"));
    txtVorschau->setAccessibleName(QStringLiteral("Vorschau für den gewählten Empfänger"));
    txtVorschau->setReadOnly(true);
    // Read with the arrow keys, as a screen reader's user reads text.
    txtVorschau->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    txtVorschau->setTabChangesFocus(true);
    txtVorschau->setFixedHeight(txtVorschau->fontMetrics().lineSpacing() * 3
                                + int(txtVorschau->document()->documentMargin() * 2) + txtVorschau->frameWidth() * 2);
    caption->setBuddy(txtVorschau);
    layout->addWidget(txtVorschau);
    lblVorschau = new QLabel(this);
    lblVorschau->setObjectName(QStringLiteral("lblVorschau"));
    lblVorschau->setWordWrap(true);
    layout->addWidget(lblVorschau);
    showRow(nullptr, {});
}

void RecipientPreview::showRow(const RecipientRow* row, const ListCheck::Context& context)
{
    if (!row) {
        txtVorschau->clear();
        lblVorschau->setText(QStringLiteral("Wählen Sie einen Empfänger, um seine SMS zu sehen."));
        return;
    }
    const ListCheck::Preview preview = ListCheck::preview(*row, context);
    txtVorschau->setPlainText(preview.text);
    const QString number
        = preview.number.isEmpty() ? QStringLiteral("ohne Nummer") : QStringLiteral("an ") + preview.number;
    lblVorschau->setText(number + QStringLiteral(": ") + ListCheck::previewLine(preview));
}
