// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsServerPane.h"

#include "cOptionen.h"
#include "toolkit/FileChooser.h"
#include "toolkit/PaneHeading.h"
#include "toolkit/PasswordEcho.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>

namespace {
// The folder field stays usable; only its colours tell whether the hand-off is on.
void showActive(QLineEdit* field, bool active)
{
    QPalette palette = field->palette();
    const QPalette standard = field->style()->standardPalette();
    palette.setColor(QPalette::Base, active ? standard.color(QPalette::Base) : standard.color(QPalette::Button));
    palette.setColor(QPalette::Text,
                     active ? standard.color(QPalette::Text) : standard.color(QPalette::Disabled, QPalette::Text));
    field->setPalette(palette);
}
} // namespace

OptionsServerPane::OptionsServerPane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxXmlServerSettings"));
    auto* grid = new QGridLayout(this);
    grid->addWidget(PaneHeading::make(QStringLiteral("lblHeaderXML"), QStringLiteral("Quellbote Server"), this), 0, 0,
                    1, 3);
    cbUseServerXML = new QCheckBox(QStringLiteral("XML Server nutzen"), this);
    cbUseServerXML->setObjectName(QStringLiteral("cbUseServerXML"));
    grid->addWidget(cbUseServerXML, 1, 0, 1, 3);
    const auto field = [this, grid](const char* labelName, const char* name, const QString& caption, int row) {
        auto* label = new QLabel(caption, this);
        label->setObjectName(QLatin1String(labelName));
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        edit->setAccessibleName(caption);
        label->setBuddy(edit);
        grid->addWidget(label, row, 0);
        grid->addWidget(edit, row, 1);
        return std::make_pair(label, edit);
    };
    std::tie(lblXMLServerXML, txtTargetFolderXML)
        = field("lblXMLServerXML", "txtTargetFolderXML", QStringLiteral("Zielordner der SMS"), 2);
    btnSelectFolderXml = new QPushButton(QStringLiteral("Ordner wählen"), this);
    btnSelectFolderXml->setObjectName(QStringLiteral("btnSelectFolderXml"));
    grid->addWidget(btnSelectFolderXml, 2, 2);
    optSingleXML = new QRadioButton(QStringLiteral("Über eigenes Konto buchen"), this);
    optSingleXML->setObjectName(QStringLiteral("optSingleXML"));
    optGroupXML = new QRadioButton(QStringLiteral("Über Gruppenkonto buchen"), this);
    optGroupXML->setObjectName(QStringLiteral("optGroupXML"));
    grid->addWidget(optSingleXML, 3, 0, 1, 3);
    grid->addWidget(optGroupXML, 4, 0, 1, 3);
    std::tie(lblUserXML, txtUserNameXML) = field("lblUserXML", "txtUserNameXML", QStringLiteral("User"), 5);
    std::tie(lblGroupXML, txtGroupNameXML) = field("lblGroupXML", "txtGroupNameXML", QStringLiteral("Gruppe"), 6);
    std::tie(lblPrivateKeyXML, txtPrivatKeyXML)
        = field("lblPrivateKeyXML", "txtPrivatKeyXML", QStringLiteral("Persönlicher Schlüssel"), 7);
    txtPrivatKeyXML->setEchoMode(QLineEdit::Password);
    grid->setRowStretch(8, 1);
    grid->setColumnStretch(1, 1);

    connect(cbUseServerXML, &QCheckBox::toggled, this, &OptionsServerPane::applyEnableRules);
    connect(optSingleXML, &QRadioButton::toggled, this, &OptionsServerPane::applyGroupRule);
    connect(optGroupXML, &QRadioButton::toggled, this, &OptionsServerPane::applyGroupRule);
    connect(btnSelectFolderXml, &QPushButton::clicked, this, &OptionsServerPane::btnSelectFolderXml_Click);
}

void OptionsServerPane::load()
{
    cbUseServerXML->setChecked(Options().xmlIsServerUsed());
    txtTargetFolderXML->setText(Options().XmlPfad());
    optSingleXML->setChecked(textToBool(Options().xmlSingleUser()));
    optGroupXML->setChecked(Options().xmlGroupUser());
    txtUserNameXML->setText(Options().xmlUser());
    txtGroupNameXML->setText(Options().xmlGroup());
    PasswordEcho::setText(txtPrivatKeyXML, Options().xmlSecretKey());
    applyEnableRules();
}

void OptionsServerPane::save() const
{
    Options().setXmlIsServerUsed(cbUseServerXML->isChecked());
    Options().setXmlPfad(txtTargetFolderXML->text());
    Options().setXmlSingleUser(boolText(optSingleXML->isChecked()));
    Options().setXmlGroupUser(optGroupXML->isChecked());
    Options().setXmlUser(txtUserNameXML->text());
    Options().setXmlGroup(txtGroupNameXML->text());
    Options().setXmlSecretKey(txtPrivatKeyXML->text());
}

void OptionsServerPane::applyEnableRules()
{
    const bool on = cbUseServerXML->isChecked();
    for (QWidget* w : { static_cast<QWidget*>(optGroupXML), static_cast<QWidget*>(optSingleXML),
                        static_cast<QWidget*>(txtUserNameXML), static_cast<QWidget*>(btnSelectFolderXml),
                        static_cast<QWidget*>(lblUserXML), static_cast<QWidget*>(lblXMLServerXML) })
        w->setEnabled(on);
    showActive(txtTargetFolderXML, on);
    if (on) {
        applyGroupRule();
    } else {
        for (QWidget* w : { static_cast<QWidget*>(txtGroupNameXML), static_cast<QWidget*>(txtPrivatKeyXML),
                            static_cast<QWidget*>(lblGroupXML), static_cast<QWidget*>(lblPrivateKeyXML) })
            w->setEnabled(false);
    }
}

void OptionsServerPane::applyGroupRule()
{
    if (!optSingleXML->isChecked() && !optGroupXML->isChecked())
        optSingleXML->setChecked(true);
    const bool group = optGroupXML->isChecked() && cbUseServerXML->isChecked();
    for (QWidget* w : { static_cast<QWidget*>(txtGroupNameXML), static_cast<QWidget*>(txtPrivatKeyXML),
                        static_cast<QWidget*>(lblGroupXML), static_cast<QWidget*>(lblPrivateKeyXML) })
        w->setEnabled(group);
}

void OptionsServerPane::btnSelectFolderXml_Click()
{
    // Cancelling empties the field.
    txtTargetFolderXML->setText(FileChooser::chooseFolder(window()));
    emit folderChosen();
}
