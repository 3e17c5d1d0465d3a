// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmSignaturen.h"

#include "sending/UnsendableCharsBar.h"
#include "sending/WireText.h"
#include "toolkit/SmsTextEdit.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmSignaturen::frmSignaturen(QWidget* parent)
    : QDialog(parent)
    , txtSignatur(new SmsTextEdit(this))
    , txtZeichen(new QLineEdit(this))
{
    setObjectName(QStringLiteral("frmSignaturen"));
    setWindowTitle(QStringLiteral("Signaturen verwalten"));
    setModal(true);
    auto* header = new QWidget(this);
    header->setObjectName(QStringLiteral("header"));
    auto* label7 = new QLabel(QStringLiteral("Signaturen bearbeiten"), header);
    label7->setObjectName(QStringLiteral("Label7"));
    QFont bold = label7->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.3);
    label7->setFont(bold);
    auto* label1 = new QLabel(QStringLiteral("Geben Sie hier den Text der Signatur ein."), header);
    label1->setObjectName(QStringLiteral("Label1"));
    auto* headerLayout = new QVBoxLayout(header);
    headerLayout->addWidget(label7);
    headerLayout->addWidget(label1);

    auto* label2 = new QLabel(QStringLiteral("Signatur"), this);
    label2->setObjectName(QStringLiteral("Label2"));
    label2->setBuddy(txtSignatur);
    txtSignatur->setObjectName(QStringLiteral("txtSignatur"));
    txtSignatur->setAccessibleName(QStringLiteral("Signatur"));
    auto* label6 = new QLabel(QStringLiteral("Zeichen"), this);
    label6->setObjectName(QStringLiteral("Label6"));
    label6->setBuddy(txtZeichen);
    txtZeichen->setObjectName(QStringLiteral("txtZeichen"));
    txtZeichen->setReadOnly(true);
    txtZeichen->setAccessibleName(QStringLiteral("Zeichen"));
    txtZeichen->setMaximumWidth(70);
    auto* cmdSave = new QPushButton(QStringLiteral("&Speichern"), this);
    cmdSave->setObjectName(QStringLiteral("cmdSave"));
    cmdSave->setDefault(true);

    // The count includes line breaks, each as two characters.
    // Counted as it goes on the wire; what can't go out is named, and replaced on request.
    auto* unsendable = new UnsendableCharsBar(this);
    unsendable->setObjectName(QStringLiteral("unsendableChars"));
    connect(txtSignatur, &QPlainTextEdit::textChanged, this, [this, unsendable] {
        txtZeichen->setText(QString::number(WireText::wireLength(txtSignatur->text())));
        unsendable->setText(txtSignatur->text());
    });
    connect(unsendable, &UnsendableCharsBar::replaceRequested, this,
            [this] { txtSignatur->setText(WireText::transliterate(txtSignatur->text())); });
    connect(cmdSave, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QGridLayout(this);
    layout->addWidget(header, 0, 0, 1, 3);
    layout->addWidget(label2, 1, 0, Qt::AlignTop);
    layout->addWidget(txtSignatur, 1, 1, 1, 2);
    layout->addWidget(label6, 2, 0);
    layout->addWidget(txtZeichen, 2, 1, Qt::AlignLeft);
    layout->addWidget(cmdSave, 2, 2, Qt::AlignRight);
    layout->addWidget(unsendable, 3, 1, 1, 2);
    resize(440, 300);
    txtZeichen->setText(QStringLiteral("0"));
}

bool frmSignaturen::showNew(QWidget* owner, QString* text)
{
    return showEdit(owner, QString(), text);
}

bool frmSignaturen::showEdit(QWidget* owner, const QString& current, QString* text)
{
    frmSignaturen window(owner);
    window.txtSignatur->setText(current);
    window.txtZeichen->setText(QString::number(WireText::wireLength(window.txtSignatur->text())));
    // Closing by the frame discards the text.
    if (window.exec() != QDialog::Accepted)
        return false;
    *text = window.txtSignatur->text();
    return true;
}
