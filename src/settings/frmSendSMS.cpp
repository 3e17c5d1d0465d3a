// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmSendSMS.h"

#include "AddressBook.h"
#include "frmAddressBookPicker.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolBar>

frmSendSMS::frmSendSMS(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmSendSMS"));
    setWindowTitle(QStringLiteral("Neue SMS  -  Quellbote"));
    auto* grid = new QGridLayout(this);
    auto* tBar = new QToolBar(this);
    tBar->setObjectName(QStringLiteral("tBar"));
    grid->addWidget(tBar, 0, 0, 1, 2);
    cmdAn = new QPushButton(QStringLiteral("An ..."), this);
    cmdAn->setObjectName(QStringLiteral("cmdAn"));
    txtAn = new QLineEdit(this);
    txtAn->setObjectName(QStringLiteral("txtAn"));
    txtAn->setAccessibleName(QStringLiteral("An"));
    grid->addWidget(cmdAn, 1, 0);
    grid->addWidget(txtAn, 1, 1);
    auto* Label1 = new QLabel(QStringLiteral("von"), this);
    txtVon = new QLineEdit(this);
    txtVon->setObjectName(QStringLiteral("txtVon"));
    txtVon->setAccessibleName(QStringLiteral("von"));
    Label1->setBuddy(txtVon);
    grid->addWidget(Label1, 2, 0);
    grid->addWidget(txtVon, 2, 1);
    txtSMS = new QPlainTextEdit(this);
    txtSMS->setObjectName(QStringLiteral("txtSMS"));
    txtSMS->setAccessibleName(QStringLiteral("Nachricht"));
    grid->addWidget(txtSMS, 3, 0, 1, 2);
    connect(cmdAn, &QPushButton::clicked, this, &frmSendSMS::cmdAn_Click);
    resize(420, 300);
}

frmSendSMS::~frmSendSMS() = default;

void frmSendSMS::cmdAn_Click()
{
    txtAn->setText(AddressBook::appendMobileNumbers(txtAn->text(), frmAddressBookPicker::pick(this)));
}
