// SPDX-License-Identifier: GPL-3.0-or-later
// Pane "Quellbote Server" of the options dialog: the hand-off of each SMS as a job file to a
// folder that a local server program watches, under the user's own account or a group account.
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

class OptionsServerPane : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsServerPane(QWidget* parent = nullptr);

    void load();
    void save() const;
    // Which fields can be used, from the check box and the two accounts.
    void applyEnableRules();

    QCheckBox* cbUseServerXML;
    QLabel* lblXMLServerXML;
    QLineEdit* txtTargetFolderXML;
    QPushButton* btnSelectFolderXml;
    QRadioButton* optSingleXML;
    QRadioButton* optGroupXML;
    QLabel* lblUserXML;
    QLineEdit* txtUserNameXML;
    QLabel* lblGroupXML;
    QLineEdit* txtGroupNameXML;
    QLabel* lblPrivateKeyXML;
    QLineEdit* txtPrivatKeyXML;

signals:
    // The folder chooser has run; the dialog empties the label of the e-mail field then.
    void folderChosen();

private:
    void applyGroupRule();
    void btnSelectFolderXml_Click();
};
