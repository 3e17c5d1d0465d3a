// SPDX-License-Identifier: GPL-3.0-or-later
// "Liste prüfen": the rows of a recipient list that would not go out as the user expects, each
// with why; the user removes a row, goes to it in the editor, or keeps it. Rows of a file that
// were not taken into the table are named beside them.
#pragma once

#include "CsvList.h"
#include "ListCheck.h"

#include <QDialog>
#include <QSet>

#include <functional>
#include <memory>

class QLabel;
class QPushButton;
class QTreeWidget;

class frmListCheck : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmListCheck)

public:
    using Check = std::function<QList<ListCheck::Finding>()>;
    // Shows the report of findings, check's result over table, which is checked again after a
    // row is removed; removes the rows the user removes. Returns the row the user wants to go to,
    // -1 for none.
    static int review(RecipientTable& table, const Check& check, const QList<ListCheck::Finding>& findings,
                      const QList<CsvList::Doubt>& leftOut, QWidget* owner);

    // The report as a window of its own, not shown: for looking at it.
    static std::unique_ptr<frmListCheck> forTesting(RecipientTable& table, const Check& check,
                                                    const QList<CsvList::Doubt>& leftOut, QWidget* owner);

private:
    frmListCheck(RecipientTable& table, Check check, const QList<ListCheck::Finding>& findings,
                 const QList<CsvList::Doubt>& leftOut, QWidget* owner);
    // Lists the findings, but those of kept rows.
    void refill();
    // The row keys act on the finding in hand.
    void enableKeys();
    // The table row of the finding in hand, -1 for none.
    int currentRow() const;
    void removeRow();
    void keepRow();

    RecipientTable& m_table;
    Check m_check;
    QList<ListCheck::Finding> m_findings;
    // Rows the user keeps, by their Tag, which a removal above them doesn't change.
    QSet<qint32> m_kept;
    int m_goTo = -1;
    QLabel* lblSummary;
    QTreeWidget* lvBefunde;
    QPushButton* cmdEntfernen;
    QPushButton* cmdGehe;
    QPushButton* cmdBehalten;
};
