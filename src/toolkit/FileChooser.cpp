// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileChooser.h"

#include <QDir>
#include <QFileDialog>

namespace FileChooser {
namespace {
Handler& handler()
{
    static Handler h;
    return h;
}

QString run(QWidget* owner, const Dialog& dialog)
{
    if (handler())
        return handler()(dialog).trimmed();
    const QString filter = dialog.filters.join(QStringLiteral(";;"));
    // The dialogs start in the user's home, the root of the user's own files.
    const QString start = dialog.start.isEmpty() ? QDir::homePath() : dialog.start;
    QString path;
    switch (dialog.mode) {
    case Dialog::Mode::Open:
        path = QFileDialog::getOpenFileName(owner, dialog.title, start, filter, nullptr, QFileDialog::ReadOnly);
        break;
    case Dialog::Mode::Save:
        path = QFileDialog::getSaveFileName(owner, dialog.title, start, filter, nullptr,
                                            QFileDialog::DontConfirmOverwrite);
        break;
    case Dialog::Mode::Folder:
        path = QFileDialog::getExistingDirectory(owner, dialog.title, start);
        break;
    }
    return QDir::toNativeSeparators(path).trimmed();
}
} // namespace

QString chooseDataFileToOpen(QWidget* owner)
{
    return run(owner,
               { Dialog::Mode::Open,
                 QStringLiteral("Datendatei öffnen"),
                 { QStringLiteral("MultiSMS Datendatei (*.msms)"),
                   QStringLiteral("Liste aus einer Tabelle (*.csv *.tsv *.txt)"), QStringLiteral("All Files (*.*)") },
                 {} });
}

QString chooseStopListFile(QWidget* owner)
{
    return run(owner,
               { Dialog::Mode::Open,
                 QStringLiteral("Sperrliste importieren"),
                 { QStringLiteral("Liste aus einer Tabelle oder Textdatei (*.csv *.tsv *.txt)"),
                   QStringLiteral("All Files (*.*)") },
                 {} });
}

QString chooseExportFile(QWidget* owner)
{
    return run(owner,
               { Dialog::Mode::Save,
                 QStringLiteral("Gesendete SMS exportieren"),
                 { QStringLiteral("Tabelle für Excel (*.csv)") },
                 {} });
}

QString chooseDataFileToSave(QWidget* owner)
{
    return run(owner,
               { Dialog::Mode::Save,
                 QStringLiteral("Datendatei speichern"),
                 { QStringLiteral("MultiSMS Datendatei (*.msms)") },
                 {} });
}

QString chooseFolder(QWidget* owner)
{
    // The prompt has always read so.
    return run(owner, { Dialog::Mode::Folder, QStringLiteral("Select your Windows\\System\\ directory"), {}, {} });
}

QString chooseAddressBookFolder(QWidget* owner, const QString& start)
{
    return run(owner, { Dialog::Mode::Folder, QStringLiteral("Adressbuch wählen"), {}, start });
}

void setHandler(Handler h)
{
    handler() = std::move(h);
}

} // namespace FileChooser
