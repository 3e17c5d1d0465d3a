// SPDX-License-Identifier: GPL-3.0-or-later
// Pane "Sperrliste" of the options dialog: the user's numbers that never get an SMS, added one by
// one, removed or imported from a file; beside them the shared list an administrator names in
// oem.inf, shown but not changed.
#pragma once

#include <QSet>
#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

class OptionsStopListPane : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsStopListPane(QWidget* parent = nullptr);

    void load();
    // False when the store refused the list; the user has been told.
    bool save();

    QListWidget* lstSperrliste;
    QLineEdit* txtSperrNummer;
    QPushButton* cmdSperrHinzu;
    QPushButton* cmdSperrEntfernen;
    QPushButton* cmdSperrImport;
    QLabel* lblGemeinsam;
    QListWidget* lstGemeinsam;

signals:
    void changed();

private:
    // Adds written when it is a number not yet on the list; the reason when not, else empty.
    QString add(const QString& written);
    void addTyped();
    void removeSelected();
    void importFile();
    // The international forms of the listed numbers, so that an import of thousands of numbers
    // compares each with a set, not with every entry written out anew.
    void rememberKeys();

    QSet<QString> m_keys;
};
