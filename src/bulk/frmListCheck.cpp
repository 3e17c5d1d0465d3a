// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmListCheck.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int RowRole = Qt::UserRole;

QTreeWidget* findingList(const QString& name, const QString& accessibleName, const QStringList& columns,
                         QWidget* parent)
{
    auto* list = new QTreeWidget(parent);
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    list->setRootIsDecorated(false);
    list->setAllColumnsShowFocus(true);
    list->setUniformRowHeights(true);
    list->setHeaderLabels(columns);
    list->header()->setStretchLastSection(true);
    return list;
}
} // namespace

frmListCheck::frmListCheck(RecipientTable& table, Check check, const QList<ListCheck::Finding>& findings,
                           const QList<CsvList::Doubt>& leftOut, QWidget* owner)
    : QDialog(owner)
    , m_table(table)
    , m_check(std::move(check))
    , m_findings(findings)
{
    setObjectName(QStringLiteral("frmListCheck"));
    setWindowTitle(QStringLiteral("Liste prüfen"));
    auto* layout = new QVBoxLayout(this);
    lblSummary = new QLabel(this);
    lblSummary->setObjectName(QStringLiteral("lblSummary"));
    lblSummary->setWordWrap(true);
    layout->addWidget(lblSummary);
    lvBefunde = findingList(
        QStringLiteral("lvBefunde"), QStringLiteral("Befunde"),
        { QStringLiteral("Zeile"), QStringLiteral("Name"), QStringLiteral("Nummer"), QStringLiteral("Befund") }, this);
    lblSummary->setBuddy(lvBefunde);
    layout->addWidget(lvBefunde, 1);

    auto* actions = new QHBoxLayout;
    cmdEntfernen = new QPushButton(QStringLiteral("Zeile &entfernen"), this);
    cmdEntfernen->setObjectName(QStringLiteral("cmdEntfernen"));
    cmdGehe = new QPushButton(QStringLiteral("&Zur Zeile"), this);
    cmdGehe->setObjectName(QStringLiteral("cmdGehe"));
    cmdBehalten = new QPushButton(QStringLiteral("&Behalten"), this);
    cmdBehalten->setObjectName(QStringLiteral("cmdBehalten"));
    cmdBehalten->setToolTip(QStringLiteral("Die Zeile bleibt, wie sie ist, und verschwindet aus dieser Liste."));
    for (QPushButton* button : { cmdEntfernen, cmdGehe, cmdBehalten }) {
        button->setAutoDefault(false);
        actions->addWidget(button);
    }
    actions->addStretch(1);
    layout->addLayout(actions);

    if (!leftOut.isEmpty()) {
        auto* caption
            = new QLabel(QStringLiteral("%1 Zeilen der Datei wurden nicht übernommen:").arg(leftOut.size()), this);
        caption->setWordWrap(true);
        layout->addWidget(caption);
        QTreeWidget* lvNicht
            = findingList(QStringLiteral("lvNichtUebernommen"), QStringLiteral("Nicht übernommene Zeilen"),
                          { QStringLiteral("Zeile der Datei"), QStringLiteral("Name"), QStringLiteral("Nummer"),
                            QStringLiteral("Grund") },
                          this);
        caption->setBuddy(lvNicht);
        for (const CsvList::Doubt& doubt : leftOut)
            new QTreeWidgetItem(lvNicht, { QString::number(doubt.row), doubt.name, doubt.number, doubt.reason });
        lvNicht->resizeColumnToContents(0);
        layout->addWidget(lvNicht, 1);
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("Schließen"));
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(cmdEntfernen, &QPushButton::clicked, this, &frmListCheck::removeRow);
    connect(cmdBehalten, &QPushButton::clicked, this, &frmListCheck::keepRow);
    connect(cmdGehe, &QPushButton::clicked, this, [this] {
        m_goTo = currentRow();
        if (m_goTo >= 0)
            accept();
    });
    // Enter or a double-click on a finding goes to its row, as a link would.
    connect(lvBefunde, &QTreeWidget::itemActivated, cmdGehe, &QPushButton::click);
    connect(lvBefunde, &QTreeWidget::currentItemChanged, this, &frmListCheck::enableKeys);
    refill();
    resize(sizeHint().expandedTo(QSize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 22)));
}

void frmListCheck::refill()
{
    const int position = lvBefunde->currentIndex().row();
    lvBefunde->clear();
    QSet<int> rows;
    for (const ListCheck::Finding& f : std::as_const(m_findings)) {
        const RecipientRow& row = m_table.rows().at(f.row);
        if (m_kept.contains(row.Tag))
            continue;
        auto* item = new QTreeWidgetItem(lvBefunde, { QString::number(f.row + 1), row.Name, row.Nummer, f.reason });
        item->setData(0, RowRole, f.row);
        item->setToolTip(3, f.reason);
        rows.insert(f.row);
    }
    lvBefunde->resizeColumnToContents(0);
    lvBefunde->resizeColumnToContents(2);
    lblSummary->setText(m_table.rowCount() == 0 ? QStringLiteral("Die Liste hat keine Zeilen.")
                            : rows.isEmpty()
                            ? QStringLiteral("Jede Zeile der Liste geht so hinaus, wie sie angezeigt wird.")
                            : QStringLiteral("%1 von %2 Zeilen gehen nicht so hinaus, wie Sie es erwarten. "
                                             "Entfernen Sie eine Zeile, gehen Sie zu ihr, um sie zu "
                                             "ändern, oder behalten Sie sie.")
                                  .arg(rows.size())
                                  .arg(m_table.rowCount()));
    if (lvBefunde->topLevelItemCount() > 0)
        lvBefunde->setCurrentItem(lvBefunde->topLevelItem(qBound(0, position, lvBefunde->topLevelItemCount() - 1)));
    enableKeys();
}

void frmListCheck::enableKeys()
{
    for (QPushButton* button : { cmdEntfernen, cmdGehe, cmdBehalten })
        button->setEnabled(currentRow() >= 0);
}

int frmListCheck::currentRow() const
{
    const QTreeWidgetItem* item = lvBefunde->currentItem();
    return item ? item->data(0, RowRole).toInt() : -1;
}

void frmListCheck::removeRow()
{
    const int row = currentRow();
    if (row < 0)
        return;
    m_table.removeRow(row);
    // The rows below move up, and a duplicate may be one no longer.
    m_findings = m_check();
    refill();
    lvBefunde->setFocus();
}

void frmListCheck::keepRow()
{
    const int row = currentRow();
    if (row < 0)
        return;
    m_kept.insert(m_table.rows().at(row).Tag);
    refill();
    lvBefunde->setFocus();
}

int frmListCheck::review(RecipientTable& table, const Check& check, const QList<ListCheck::Finding>& findings,
                         const QList<CsvList::Doubt>& leftOut, QWidget* owner)
{
    frmListCheck dialog(table, check, findings, leftOut, owner);
    dialog.exec();
    return dialog.m_goTo;
}

std::unique_ptr<frmListCheck> frmListCheck::forTesting(RecipientTable& table, const Check& check,
                                                       const QList<CsvList::Doubt>& leftOut, QWidget* owner)
{
    return std::unique_ptr<frmListCheck>(new frmListCheck(table, check, check(), leftOut, owner));
}
