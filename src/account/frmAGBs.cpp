// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmAGBs.h"

#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "toolkit/WebView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

frmAGBs::frmAGBs(QWidget* owner)
    : QDialog(owner)
{
    setObjectName(QStringLiteral("frmAGBs"));
    setWindowTitle(QStringLiteral("AGBs ") + ProductName());
    auto* layout = new QVBoxLayout(this);
    web = new WebView(this);
    web->setObjectName(QStringLiteral("web"));
    web->setAccessibleName(QStringLiteral("AGBs"));
    layout->addWidget(web, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    cmdAccept = new QPushButton(QStringLiteral("Akzeptieren"), this);
    cmdAccept->setObjectName(QStringLiteral("cmdAccept"));
    cmdCancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdAccept);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);
    connect(cmdAccept, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    resize(640, 560);
    web->navigate(Urls().AGB());
}

frmAGBs::~frmAGBs() = default;

bool frmAGBs::acceptAGBs(QWidget* owner)
{
    // The close box counts as "Abbrechen".
    frmAGBs dialog(owner);
    return dialog.exec() == QDialog::Accepted;
}
