// SPDX-License-Identifier: GPL-3.0-or-later
#include "UnsendableCharsBar.h"

#include "WireText.h"
#include "toolkit/ToolbarButton.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>

UnsendableCharsBar::UnsendableCharsBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("UnsendableCharsBar"));
    setAccessibleName(QStringLiteral("Hinweis auf nicht übertragbare Zeichen"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/pictures/warning.svg")).pixmap(16, 16));
    icon->setAccessibleName(QStringLiteral("Warnung"));
    layout->addWidget(icon, 0, Qt::AlignTop);

    lblUnsendable = new QLabel(this);
    lblUnsendable->setObjectName(QStringLiteral("lblUnsendable"));
    lblUnsendable->setWordWrap(true);
    lblUnsendable->setTextFormat(Qt::PlainText);
    // Readable and selectable from the keyboard, so that a screen reader reaches the text.
    lblUnsendable->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(lblUnsendable, 1);

    tbTransliterate = new ToolbarButton(this);
    tbTransliterate->setObjectName(QStringLiteral("tbTransliterate"));
    tbTransliterate->setCaption(QStringLiteral("Zeichen ersetzen"));
    const QIcon picture(QStringLiteral(":/pictures/edit.svg"));
    tbTransliterate->setPicture(picture);
    tbTransliterate->setPictureHover(picture);
    tbTransliterate->setAccessibleName(QStringLiteral("Zeichen ersetzen"));
    const QString tip = QString::fromUtf16(u"Ersetzt die Zeichen durch ähnliche Buchstaben (Ł durch L); "
                                           u"was keine Entsprechung hat, etwa ein Emoji, wird entfernt.");
    tbTransliterate->setToolTip(tip);
    tbTransliterate->setAccessibleDescription(tip);
    layout->addWidget(tbTransliterate, 0, Qt::AlignTop);
    connect(tbTransliterate, &QAbstractButton::clicked, this, &UnsendableCharsBar::replaceRequested);

    hide();
}

void UnsendableCharsBar::setText(const QString& text)
{
    QStringList characters = WireText::unsendable(text);
    if (characters == m_characters)
        return;
    m_characters = std::move(characters);
    const QString notice = WireText::unsendableNotice(m_characters);
    lblUnsendable->setText(notice);
    lblUnsendable->setAccessibleName(notice);
    setAccessibleDescription(notice);
    setVisible(!m_characters.isEmpty());
    // A screen reader learns of the new text without moving there.
    QAccessibleEvent nameChanged(lblUnsendable, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&nameChanged);
    QAccessibleEvent descriptionChanged(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&descriptionChanged);
}
