// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmCsvColumns.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// A combo of the columns, "(keine)" first; the item data is the column's index, -1 for none.
QComboBox* columnBox(const QStringList& header, int selected, const QString& name, QWidget* parent)
{
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    box->addItem(QStringLiteral("(keine)"), -1);
    for (int i = 0; i < header.size(); ++i) {
        const QString caption = header.at(i).isEmpty() ? QStringLiteral("Spalte %1").arg(i + 1) : header.at(i);
        box->addItem(caption, i);
    }
    box->setCurrentIndex(box->findData(selected));
    return box;
}
} // namespace

frmCsvColumns::frmCsvColumns(const QStringList& header, const CsvList::Mapping& found, QWidget* owner)
    : QDialog(owner)
    , m_found(found)
{
    setObjectName(QStringLiteral("frmCsvColumns"));
    setWindowTitle(QStringLiteral("Spalten zuordnen"));
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(QStringLiteral("Die Spalten dieser Liste sind nicht eindeutig. Bitte wählen Sie, welche "
                                            "Spalte den Namen, die Mobilfunknummer und die Freitexte enthält. Die "
                                            "Zuordnung wird für Listen mit diesen Spalten gemerkt."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    // What the header suggested: the name (or the first name), the number (or the first typed one).
    const int name = found.name >= 0 ? found.name : found.firstName;
    const int number = found.number >= 0 ? found.number
        : found.typedNumbers.isEmpty()   ? -1
                                         : found.typedNumbers.constFirst().second;
    cmbName = columnBox(header, name, QStringLiteral("cmbName"), this);
    cmbNummer = columnBox(header, number, QStringLiteral("cmbNummer"), this);
    cmbFrei1 = columnBox(header, found.freitext1, QStringLiteral("cmbFrei1"), this);
    cmbFrei2 = columnBox(header, found.freitext2, QStringLiteral("cmbFrei2"), this);
    auto* form = new QFormLayout;
    for (const auto& [caption, box] :
         { std::pair { QStringLiteral("&Name"), cmbName }, std::pair { QStringLiteral("&Mobilfunknummer"), cmbNummer },
           std::pair { QStringLiteral("Freitext &1"), cmbFrei1 },
           std::pair { QStringLiteral("Freitext &2"), cmbFrei2 } }) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(box);
        box->setAccessibleName(QString(caption).remove(u'&'));
        form->addRow(label, box);
    }
    layout->addLayout(form);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(QStringLiteral("Übernehmen"));
    ok->setObjectName(QStringLiteral("cmdOk"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
    layout->addWidget(buttons);
    // A list without a number column can't be sent to.
    const auto updateOk = [this, ok] {
        ok->setEnabled(cmbNummer->currentData().toInt() >= 0);
    };
    connect(cmbNummer, &QComboBox::currentIndexChanged, this, updateOk);
    updateOk();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

CsvList::Mapping frmCsvColumns::chosen() const
{
    CsvList::Mapping m;
    m.name = cmbName->currentData().toInt();
    m.number = cmbNummer->currentData().toInt();
    m.freitext1 = cmbFrei1->currentData().toInt();
    m.freitext2 = cmbFrei2->currentData().toInt();
    // Left as suggested, the name keeps its two columns (first and last name) and the number its
    // typed columns.
    const int suggestedName = m_found.name >= 0 ? m_found.name : m_found.firstName;
    if (m.name == suggestedName && m_found.name < 0) {
        m.name = -1;
        m.firstName = m_found.firstName;
        m.lastName = m_found.lastName;
    }
    if (m_found.number < 0 && !m_found.typedNumbers.isEmpty() && m.number == m_found.typedNumbers.constFirst().second) {
        m.number = -1;
        m.typedNumbers = m_found.typedNumbers;
    }
    return m;
}

std::optional<CsvList::Mapping> frmCsvColumns::choose(const QStringList& header, const CsvList::Mapping& found,
                                                      QWidget* owner)
{
    frmCsvColumns dialog(header, found, owner);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.chosen();
}
