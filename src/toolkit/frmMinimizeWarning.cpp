// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMinimizeWarning.h"

#include "settings/ProductName.h"
#include "settings/cOptionen.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmMinimizeWarning::frmMinimizeWarning(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmMinimizeWarning"));
    setWindowTitle(ProductName() + QStringLiteral(" Hinweis"));
    auto* lblHeadeline = new QLabel(QStringLiteral("Wo ist ") + ProductName() + QStringLiteral("?"), this);
    lblHeadeline->setObjectName(QStringLiteral("lblHeadeline"));
    QFont bold = lblHeadeline->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.3);
    lblHeadeline->setFont(bold);
    auto* label2 = new QLabel(QStringLiteral("Das Programm wurde in den Berich neben der Uhr in Ihrer Taskleiste "
                                             "minimiert. Um das Fenster wieder anzuzeigen klicken Sie einfach auf "
                                             "das Logo."),
                              this);
    label2->setObjectName(QStringLiteral("Label2"));
    label2->setWordWrap(true);
    auto* chkDisplayMinimizeWarning = new QCheckBox(QStringLiteral("Diesen Hinweis beim nächsten Mal wieder anzeigen"), this);
    chkDisplayMinimizeWarning->setObjectName(QStringLiteral("chkDisplayMinimizeWarning"));
    chkDisplayMinimizeWarning->setChecked(true);
    auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);

    connect(chkDisplayMinimizeWarning, &QCheckBox::toggled, this, [](bool ticked) {
        Options().setDontDisplayMinimizeWarning(!ticked);
        Options().save();
    });
    connect(cmdOK, &QPushButton::clicked, this, &QWidget::close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblHeadeline);
    layout->addWidget(label2);
    layout->addWidget(chkDisplayMinimizeWarning);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    layout->addLayout(buttons);
    setFixedWidth(420);
}
