// SPDX-License-Identifier: GPL-3.0-or-later
// The MultiSMS editor: the recipient table of a bulk send, typed in, changed, deleted, loaded
// from a .msms file or a web group and stored again. It stands at the main window's right edge
// and follows it; the bulk run reads its rows, the main window its three size figures.
#pragma once

#include "CsvList.h"
#include "RecipientTable.h"

#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class RecipientPreview;
class QProgressBar;
class QTableView;
class QToolBar;

class frmMultiSMS : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMultiSMS)

public:
    // The one window: created on first use, gone when its close box unloads it.
    static frmMultiSMS* instance();
    // The window if it is loaded, else nullptr.
    static frmMultiSMS* loaded();

    ~frmMultiSMS() override;

    RecipientTable& table() { return m_table; }

    void Clear() { m_table.Clear(); }
    bool parseLine(const QString& line) { return m_table.parseLine(line); }
    // The three figures afresh, the count shown, and the main window's size display after them.
    void recalcMaxSizes();
    qint16 getMaxNameSize() const { return m_table.getMaxNameSize(); }
    qint16 getMaxFrei1Size() const { return m_table.getMaxFrei1Size(); }
    qint16 getMaxFrei2Size() const { return m_table.getMaxFrei2Size(); }
    // The selected row's message as its recipient gets it, after the text or the row changed.
    void refreshPreview();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    frmMultiSMS();

    void buildControls();
    void connectHandlers();

    void txtNummer_Change();
    void clearInputFields();
    void addEntry();
    void lvData_DblClick();
    void applyEdit();
    void deleteEntry();
    void addFromAddressBook();
    void newFile();
    void openDataFile();
    // A list from a table (CSV): its columns chosen where unsure, its doubtful rows named; false
    // when nothing was loaded.
    bool openList(const QString& path, QList<CsvList::Doubt>* leftOut);
    // The report of the rows that would not go out as shown, after a load (only when there is
    // something to report) or asked for with "Prüfen" (always).
    void checkList(const QList<CsvList::Doubt>& leftOut, bool always);
    void goToRow(int row);
    void openWebGroup();
    void saveFile();
    void writeDataFile(const QString& path);
    // The row selected in lvData, -1 when none is.
    int selectedRow() const;
    void setEditing(bool editing);

    RecipientTable m_table;
    QToolBar* toolBar;
    QToolBar* tbEdit;
    QAction* keyNew;
    QAction* keyOpen;
    QAction* keyOpenWeb;
    QAction* keySave;
    QAction* keyCheck;
    QAction* keyAdd;
    QAction* keyOk;
    QAction* keyDelete;
    QAction* keyAddressBook;
    QTableView* lvData;
    RecipientPreview* preview;
    QLineEdit* txtName;
    // The Tag of the row being edited, empty while a new entry is typed.
    QString txtNameTag;
    QLineEdit* txtNummer;
    QLineEdit* txtFrei1;
    QLineEdit* txtFrei2;
    QWidget* onlyNumbersWarn;
    QLabel* Label8;
    QLineEdit* txtFilename;
    QLineEdit* txtAnzahl;
    QProgressBar* pBar;
};
