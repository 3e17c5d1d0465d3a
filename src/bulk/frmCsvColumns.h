// SPDX-License-Identifier: GPL-3.0-or-later
// "Spalten zuordnen": where the columns of a list can't be told for sure from its header, the
// user says which column holds the name, the mobile number and the two free texts.
#pragma once

#include "CsvList.h"

#include <QDialog>

#include <optional>

class QComboBox;

class frmCsvColumns : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCsvColumns)

public:
    // The columns of header, with found preselected; none when the user cancels.
    static std::optional<CsvList::Mapping> choose(const QStringList& header, const CsvList::Mapping& found,
                                                  QWidget* owner);

private:
    frmCsvColumns(const QStringList& header, const CsvList::Mapping& found, QWidget* owner);
    CsvList::Mapping chosen() const;

    CsvList::Mapping m_found;
    QComboBox* cmbName;
    QComboBox* cmbNummer;
    QComboBox* cmbFrei1;
    QComboBox* cmbFrei2;
};
