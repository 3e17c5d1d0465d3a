// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsStopListPane.h"

#include "ProductName.h"
#include "sending/StopList.h"
#include "toolkit/FileChooser.h"
#include "toolkit/MessageBox.h"
#include "toolkit/PaneHeading.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

OptionsStopListPane::OptionsStopListPane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxSperrliste"));
    auto* grid = new QGridLayout(this);
    grid->addWidget(PaneHeading::make(QStringLiteral("lblSperrliste"), QStringLiteral("Sperrliste"), this), 0, 0, 1, 2);
    auto* intro = new QLabel(QStringLiteral("Nummern auf der Sperrliste erhalten keine SMS: weder einzeln noch als "
                                            "MultiSMS, im Terminversand, über den Quellbote Server oder mit "
                                            "quellbote-send. Nummern gelten gleich, wie immer sie geschrieben sind "
                                            "(0171 1234567, +49 171 1234567)."),
                             this);
    intro->setWordWrap(true);
    grid->addWidget(intro, 1, 0, 1, 2);

    auto* caption = new QLabel(QStringLiteral("&Nummer:"), this);
    txtSperrNummer = new QLineEdit(this);
    txtSperrNummer->setObjectName(QStringLiteral("txtSperrNummer"));
    txtSperrNummer->setAccessibleName(QStringLiteral("Nummer für die Sperrliste"));
    caption->setBuddy(txtSperrNummer);
    grid->addWidget(caption, 2, 0, 1, 2);
    grid->addWidget(txtSperrNummer, 3, 0);
    cmdSperrHinzu = new QPushButton(QStringLiteral("&Hinzufügen"), this);
    cmdSperrHinzu->setObjectName(QStringLiteral("cmdSperrHinzu"));
    grid->addWidget(cmdSperrHinzu, 3, 1);

    auto* listCaption = new QLabel(QStringLiteral("&Ihre Sperrliste:"), this);
    lstSperrliste = new QListWidget(this);
    lstSperrliste->setObjectName(QStringLiteral("lstSperrliste"));
    lstSperrliste->setAccessibleName(QStringLiteral("Ihre Sperrliste"));
    lstSperrliste->setSelectionMode(QAbstractItemView::ExtendedSelection);
    listCaption->setBuddy(lstSperrliste);
    grid->addWidget(listCaption, 4, 0, 1, 2);
    grid->addWidget(lstSperrliste, 5, 0, 3, 1);
    cmdSperrEntfernen = new QPushButton(QStringLiteral("&Entfernen"), this);
    cmdSperrEntfernen->setObjectName(QStringLiteral("cmdSperrEntfernen"));
    cmdSperrImport = new QPushButton(QStringLiteral("I&mportieren …"), this);
    cmdSperrImport->setObjectName(QStringLiteral("cmdSperrImport"));
    cmdSperrImport->setToolTip(QStringLiteral("Übernimmt die Nummern einer Tabelle (CSV) oder einer Textdatei."));
    grid->addWidget(cmdSperrEntfernen, 5, 1, Qt::AlignTop);
    grid->addWidget(cmdSperrImport, 6, 1, Qt::AlignTop);

    lblGemeinsam = new QLabel(this);
    lblGemeinsam->setObjectName(QStringLiteral("lblGemeinsam"));
    lblGemeinsam->setWordWrap(true);
    lblGemeinsam->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    grid->addWidget(lblGemeinsam, 8, 0, 1, 2);
    lstGemeinsam = new QListWidget(this);
    lstGemeinsam->setObjectName(QStringLiteral("lstGemeinsam"));
    lstGemeinsam->setAccessibleName(QStringLiteral("Gemeinsame Sperrliste, nur lesbar"));
    lblGemeinsam->setBuddy(lstGemeinsam);
    grid->addWidget(lstGemeinsam, 9, 0, 1, 2);
    grid->setRowStretch(7, 1);
    grid->setRowStretch(9, 1);
    grid->setColumnStretch(0, 1);

    connect(cmdSperrHinzu, &QPushButton::clicked, this, &OptionsStopListPane::addTyped);
    connect(txtSperrNummer, &QLineEdit::returnPressed, this, &OptionsStopListPane::addTyped);
    connect(cmdSperrEntfernen, &QPushButton::clicked, this, &OptionsStopListPane::removeSelected);
    connect(cmdSperrImport, &QPushButton::clicked, this, &OptionsStopListPane::importFile);
    connect(lstSperrliste, &QListWidget::itemSelectionChanged, this,
            [this] { cmdSperrEntfernen->setEnabled(!lstSperrliste->selectedItems().isEmpty()); });
}

void OptionsStopListPane::load()
{
    const StopList stops = StopList::load();
    lstSperrliste->clear();
    lstSperrliste->addItems(stops.userEntries());
    rememberKeys();
    cmdSperrEntfernen->setEnabled(false);
    lstGemeinsam->clear();
    if (stops.sharedFile().isEmpty()) {
        lblGemeinsam->setText(QStringLiteral("Eine gemeinsame Sperrliste ist nicht eingerichtet."));
        lstGemeinsam->hide();
    } else if (!stops.sharedFileError().isEmpty()) {
        lblGemeinsam->setText(
            QStringLiteral("Gemeinsame Sperrliste %1: %2").arg(stops.sharedFile(), stops.sharedFileError()));
        lstGemeinsam->hide();
    } else {
        lblGemeinsam->setText(QStringLiteral("&Gemeinsame Sperrliste (nur lesbar, %1 Nummern): %2")
                                  .arg(stops.sharedEntries().size())
                                  .arg(stops.sharedFile()));
        lstGemeinsam->addItems(stops.sharedEntries());
        lstGemeinsam->show();
    }
}

bool OptionsStopListPane::save()
{
    QStringList entries;
    for (int i = 0; i < lstSperrliste->count(); ++i)
        entries.append(lstSperrliste->item(i)->text());
    if (StopList::saveUserEntries(entries))
        return true;
    MessageBox::show(window(), QStringLiteral("Die Sperrliste konnte nicht gespeichert werden."),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    return false;
}

void OptionsStopListPane::rememberKeys()
{
    m_keys.clear();
    for (int i = 0; i < lstSperrliste->count(); ++i)
        m_keys.insert(StopList::key(lstSperrliste->item(i)->text()));
}

QString OptionsStopListPane::add(const QString& written)
{
    const QString key = StopList::key(written);
    if (key.isEmpty())
        return QStringLiteral("„%1“ ist keine Rufnummer.").arg(written.trimmed());
    if (m_keys.contains(key))
        return QStringLiteral("%1 steht schon auf der Sperrliste.").arg(written.trimmed());
    m_keys.insert(key);
    lstSperrliste->addItem(written.trimmed());
    return {};
}

void OptionsStopListPane::addTyped()
{
    if (txtSperrNummer->text().trimmed().isEmpty())
        return;
    const QString problem = add(txtSperrNummer->text());
    if (!problem.isEmpty()) {
        MessageBox::show(window(), problem, MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        txtSperrNummer->setFocus();
        txtSperrNummer->selectAll();
        return;
    }
    lstSperrliste->setCurrentRow(lstSperrliste->count() - 1);
    txtSperrNummer->clear();
    txtSperrNummer->setFocus();
    emit changed();
}

void OptionsStopListPane::removeSelected()
{
    const QList<QListWidgetItem*> selected = lstSperrliste->selectedItems();
    if (selected.isEmpty())
        return;
    const int row = lstSperrliste->row(selected.constFirst());
    qDeleteAll(selected);
    rememberKeys();
    if (lstSperrliste->count() > 0)
        lstSperrliste->setCurrentRow(qMin(row, lstSperrliste->count() - 1));
    lstSperrliste->setFocus();
    emit changed();
}

void OptionsStopListPane::importFile()
{
    const QString path = FileChooser::chooseStopListFile(window());
    if (path.isEmpty())
        return;
    const StopList::Import read = StopList::importFile(path);
    if (!read.error.isEmpty()) {
        MessageBox::show(window(), QStringLiteral("Die Datei kann nicht gelesen werden: ") + read.error,
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        return;
    }
    int added = 0;
    for (const QString& number : read.numbers) {
        if (add(number).isEmpty())
            ++added;
    }
    QString told = QStringLiteral("%1 Nummern wurden der Sperrliste hinzugefügt.").arg(added);
    if (read.numbers.size() > added)
        told += QStringLiteral(" %1 standen schon darauf.").arg(read.numbers.size() - added);
    if (read.refused > 0)
        told += QStringLiteral(" %1 Zeilen enthielten keine Rufnummer.").arg(read.refused);
    MessageBox::show(window(), told, MessageBox::Buttons::Ok, MessageBox::Icon::Information, ProductName());
    if (added > 0)
        emit changed();
}
