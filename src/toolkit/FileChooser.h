// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialogs of the MultiSMS data files. Each returns the chosen path with the blanks at
// its ends trimmed, or an empty string when the dialog was cancelled. Tests install a handler
// that answers in place of the dialog, as with the message box.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace FileChooser {

struct Dialog
{
    enum class Mode { Open, Save, Folder };
    Mode mode = Mode::Open;
    QString title;
    QStringList filters; // "Description (pattern)", in the dialog's order
    QString start; // the folder the dialog opens in; empty for the user's home
};

using Handler = std::function<QString(const Dialog&)>;

// "Datendatei öffnen": an existing .msms file (or any file).
QString chooseDataFileToOpen(QWidget* owner);
// "Datendatei speichern": any name; the dialog neither adds an ending nor asks before
// overwriting, the caller does both.
QString chooseDataFileToSave(QWidget* owner);

// "Sperrliste importieren": a table (.csv) or a text file of numbers.
QString chooseStopListFile(QWidget* owner);

// "Gesendete SMS exportieren": a table for Excel (.csv).
QString chooseExportFile(QWidget* owner);

// A folder for the server's job files, with the prompt "Select your Windows\System\ directory".
QString chooseFolder(QWidget* owner);

// A folder of vCard files (an address book, or a profile of them), starting in start.
QString chooseAddressBookFolder(QWidget* owner, const QString& start);

// Replaces the real dialogs; an empty handler restores them.
void setHandler(Handler handler);

} // namespace FileChooser
