// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmLogin.h"

#include "settings/ProductName.h"
#include "settings/cOptionen.h"
#include "toolkit/FieldColors.h"
#include "toolkit/MessageBox.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmLogin::frmLogin(const QString& email, QWidget* parent)
    : QDialog(parent)
    , txtEmail(new QLineEdit(email, this))
    , txtPassword(new QLineEdit(this))
{
    setObjectName(QStringLiteral("frmLogin"));
    setWindowTitle(QStringLiteral("Kennwort eingeben"));
    setModal(true);
    txtEmail->setObjectName(QStringLiteral("txtEmail"));
    txtEmail->setReadOnly(true);
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    FieldColors::showAsStars(txtPassword);

    auto* lblEmail = new QLabel(QStringLiteral("&eMail:"), this);
    lblEmail->setBuddy(txtEmail);
    auto* lblPassword = new QLabel(QStringLiteral("&Kennwort:"), this);
    lblPassword->setBuddy(txtPassword);
    txtEmail->setAccessibleName(QStringLiteral("eMail"));
    txtPassword->setAccessibleName(QStringLiteral("Kennwort"));

    auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    auto* cmdCancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        m_result = txtPassword->text();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        m_result.clear();
        reject();
    });

    auto* form = new QFormLayout;
    form->addRow(lblEmail, txtEmail);
    form->addRow(lblPassword, txtPassword);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    setMinimumWidth(360);
    txtPassword->setFocus();
}

QString frmLogin::askForPassword(const QString& email, QWidget* owner)
{
    frmLogin dialog(email, owner);
    dialog.exec();
    // Closing by the frame gives what OK or Cancel left: an empty text.
    return dialog.result() == QDialog::Accepted ? dialog.m_result : QString();
}

QString GetKennwort(QWidget* owner)
{
    if (!Options().kennwort().isEmpty())
        return Options().kennwort();
    return frmLogin::askForPassword(Options().Username(), owner);
}

void saveOptionsWithPassword(QWidget* owner)
{
    Options().save();
    if (!Options().keyringRefusedPassword())
        return;
    MessageBox::show(owner,
                     QStringLiteral("Der Schlüsselbund des Desktops hat das Kennwort nicht angenommen (er ist "
                                    "gesperrt oder hat den Zugriff verweigert).\r\n\r\n"
                                    "Das Kennwort wird deshalb in Ihrer Einstellungsdatei gespeichert, die nur Sie "
                                    "lesen können, und beim nächsten Start erneut in den Schlüsselbund übertragen. "
                                    "Wenn Sie das nicht möchten, löschen Sie es unter Einstellungen, Kontodaten; Sie "
                                    "werden dann bei jedem Versand danach gefragt."),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
}
