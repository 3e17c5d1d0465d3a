// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsAccountPane.h"

#include "cOptionen.h"
#include "toolkit/PaneHeading.h"
#include "toolkit/PasswordEcho.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

OptionsAccountPane::OptionsAccountPane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxKontodaten"));
    auto* grid = new QGridLayout(this);
    grid->addWidget(PaneHeading::make(QStringLiteral("Label3"), QStringLiteral("Kontodaten"), this), 0, 0, 1, 2);
    Label1 = new QLabel(QStringLiteral("eMail"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    txtEmail = new QLineEdit(this);
    txtEmail->setObjectName(QStringLiteral("txtEmail"));
    // Named by itself too: the folder chooser of pane 5 empties its label.
    txtEmail->setAccessibleName(QStringLiteral("eMail"));
    Label1->setBuddy(txtEmail);
    grid->addWidget(Label1, 1, 0);
    grid->addWidget(txtEmail, 1, 1);
    auto* Label2 = new QLabel(QStringLiteral("Kennwort"), this);
    txtKennwort = new QLineEdit(this);
    txtKennwort->setObjectName(QStringLiteral("txtKennwort"));
    txtKennwort->setAccessibleName(QStringLiteral("Kennwort"));
    txtKennwort->setEchoMode(QLineEdit::Password);
    Label2->setBuddy(txtKennwort);
    grid->addWidget(Label2, 2, 0);
    grid->addWidget(txtKennwort, 2, 1);
    auto* Label4 = new QLabel(QStringLiteral("Wenn Sie Ihr Kennwort nicht speichern möchten, müssen Sie es bei jedem "
                                             "Sendevorgang eingeben."),
                              this);
    Label4->setWordWrap(true);
    grid->addWidget(Label4, 3, 0, 1, 2);
    grid->setRowStretch(4, 1);
    connect(txtEmail, &QLineEdit::textChanged, this, &OptionsAccountPane::changed);
    connect(txtKennwort, &QLineEdit::textChanged, this, &OptionsAccountPane::changed);
}

void OptionsAccountPane::load()
{
    txtEmail->setText(Options().Username());
    PasswordEcho::setText(txtKennwort, Options().kennwort());
}

void OptionsAccountPane::save() const
{
    Options().setUsername(txtEmail->text());
    Options().setKennwort(txtKennwort->text());
}
