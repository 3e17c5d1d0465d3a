// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmSentSms.h"

#include "SentSmsModel.h"
#include "settings/ProductName.h"
#include "toolkit/FileChooser.h"
#include "toolkit/MessageBox.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {
// A date box whose lowest date stands for no limit.
QDateEdit* dateBox(const QString& name, const QString& caption, QWidget* parent)
{
    auto* box = new QDateEdit(parent);
    box->setObjectName(name);
    box->setAccessibleName(caption);
    box->setCalendarPopup(true);
    box->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    box->setMinimumDate(QDate(2000, 1, 1));
    box->setSpecialValueText(QStringLiteral("beliebig"));
    box->setDate(box->minimumDate());
    return box;
}
} // namespace

frmSentSms::frmSentSms(SendRecord* record, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_record(record)
    , m_model(new SentSmsModel(record, this))
    , m_searchLater(new QTimer(this))
{
    setObjectName(QStringLiteral("frmSentSms"));
    setWindowTitle(QStringLiteral("Gesendete SMS"));
    setWindowIcon(QIcon(QStringLiteral(":/pictures/send.svg")));

    txtSuche = new QLineEdit(this);
    txtSuche->setObjectName(QStringLiteral("txtSuche"));
    txtSuche->setPlaceholderText(QStringLiteral("Nummer, Name oder Text"));
    txtSuche->setAccessibleName(QStringLiteral("Suchen"));
    txtSuche->setClearButtonEnabled(true);
    dtVon = dateBox(QStringLiteral("dtVon"), QStringLiteral("Von"), this);
    dtBis = dateBox(QStringLiteral("dtBis"), QStringLiteral("Bis"), this);
    auto* filters = new QGridLayout;
    int column = 0;
    for (const auto& [caption, field] : { std::pair<QString, QWidget*> { QStringLiteral("&Suchen"), txtSuche },
                                          std::pair<QString, QWidget*> { QStringLiteral("&Von"), dtVon },
                                          std::pair<QString, QWidget*> { QStringLiteral("&Bis"), dtBis } }) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        filters->addWidget(label, 0, column++);
        filters->addWidget(field, 0, column++);
    }
    filters->setColumnStretch(1, 1);

    lvGesendet = new QTableView(this);
    lvGesendet->setObjectName(QStringLiteral("lvGesendet"));
    lvGesendet->setAccessibleName(QStringLiteral("Gesendete SMS"));
    lvGesendet->setModel(m_model);
    lvGesendet->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvGesendet->setSelectionMode(QAbstractItemView::SingleSelection);
    lvGesendet->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lvGesendet->setWordWrap(false);
    lvGesendet->verticalHeader()->hide();
    // Every column as wide as it needs, the text gets the rest.
    lvGesendet->horizontalHeader()->setStretchLastSection(false);
    lvGesendet->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lvGesendet->horizontalHeader()->setSectionResizeMode(4, QHeaderView::Stretch);
    lvGesendet->setSortingEnabled(true);
    lblAnzahl = new QLabel(this);
    lblAnzahl->setObjectName(QStringLiteral("lblAnzahl"));

    txtDetails = new QPlainTextEdit(this);
    txtDetails->setObjectName(QStringLiteral("txtDetails"));
    txtDetails->setAccessibleName(QStringLiteral("Text und Antwort"));
    txtDetails->setReadOnly(true);
    txtDetails->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    txtDetails->setMaximumHeight(fontMetrics().lineSpacing() * 8);

    cmdResend = new QPushButton(QStringLiteral("&Erneut senden"), this);
    cmdResend->setObjectName(QStringLiteral("cmdResend"));
    cmdResend->setToolTip(QStringLiteral("Übernimmt Empfänger und Text in das Hauptfenster; versendet wird erst mit "
                                         "„Senden“."));
    cmdExport = new QPushButton(QStringLiteral("E&xportieren …"), this);
    cmdExport->setObjectName(QStringLiteral("cmdExport"));
    cmdExport->setToolTip(QStringLiteral("Speichert die gezeigten Einträge als Tabelle für Excel (CSV)."));
    cmdClose = new QPushButton(QStringLiteral("Schliessen"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdResend);
    buttons->addWidget(cmdExport);
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(lvGesendet, 1);
    layout->addWidget(lblAnzahl);
    layout->addWidget(txtDetails);
    layout->addLayout(buttons);
    const QFontMetrics metrics = fontMetrics();
    resize(qMax(760, metrics.averageCharWidth() * 110), qMax(480, metrics.lineSpacing() * 30));

    m_searchLater->setSingleShot(true);
    m_searchLater->setInterval(250);
    connect(m_searchLater, &QTimer::timeout, this, &frmSentSms::search);
    connect(txtSuche, &QLineEdit::textChanged, m_searchLater, qOverload<>(&QTimer::start));
    connect(dtVon, &QDateEdit::dateChanged, m_searchLater, qOverload<>(&QTimer::start));
    connect(dtBis, &QDateEdit::dateChanged, m_searchLater, qOverload<>(&QTimer::start));
    connect(m_model, &QAbstractItemModel::modelReset, this, &frmSentSms::showDetails);
    connect(lvGesendet->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmSentSms::showDetails);
    connect(lvGesendet, &QAbstractItemView::activated, this, [this] {
        if (const SendRecord::Entry* e = selected())
            emit sendAgain(*e);
    });
    connect(cmdResend, &QPushButton::clicked, this, [this] {
        if (const SendRecord::Entry* e = selected())
            emit sendAgain(*e);
    });
    connect(cmdExport, &QPushButton::clicked, this, &frmSentSms::exportShown);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);

    lvGesendet->sortByColumn(0, Qt::DescendingOrder);
    search();
}

frmSentSms::~frmSentSms() = default;

void frmSentSms::search()
{
    m_searchLater->stop();
    SendRecord::Query query = m_model->query();
    // One or two characters can't use the record's index; the search starts at the third.
    query.text = txtSuche->text().trimmed().size() >= 3 ? txtSuche->text().trimmed() : QString();
    // Local days; the record keeps UTC.
    query.from = dtVon->date() == dtVon->minimumDate() ? QDateTime() : QDateTime(dtVon->date(), QTime(0, 0)).toUTC();
    query.to = dtBis->date() == dtBis->minimumDate() ? QDateTime()
                                                     : QDateTime(dtBis->date().addDays(1), QTime(0, 0)).toUTC();
    m_model->setQuery(query);
    const qint64 found = m_model->found();
    lblAnzahl->setText(
        found > m_model->entries().size()
            ? QStringLiteral("Die neuesten %1 von %2 Einträgen").arg(m_model->entries().size()).arg(found)
            : found == 1 ? QStringLiteral("1 Eintrag")
                         : QStringLiteral("%1 Einträge").arg(found));
    if (m_model->rowCount() > 0)
        lvGesendet->selectRow(0);
}

const SendRecord::Entry* frmSentSms::selected() const
{
    const QModelIndex current = lvGesendet->currentIndex();
    if (!current.isValid() || current.row() >= m_model->entries().size())
        return nullptr;
    return &m_model->entries().at(current.row());
}

void frmSentSms::showDetails()
{
    const SendRecord::Entry* e = selected();
    cmdResend->setEnabled(e != nullptr);
    cmdExport->setEnabled(m_model->rowCount() > 0);
    if (!e) {
        txtDetails->clear();
        return;
    }
    txtDetails->setPlainText(QStringLiteral("%1 an %2 (%3), %4:\n%5\n\nAntwort des Gateways: %6")
                                 .arg(e->time.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")), e->name,
                                      e->number, SendOutcome::label(e->state), e->text, e->answer));
}

void frmSentSms::exportShown()
{
    const QString path = FileChooser::chooseExportFile(this);
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    const bool written
        = file.open(QIODevice::WriteOnly) && SendRecord::exportCsv(m_model->entries(), &file) && file.commit();
    if (!written) {
        MessageBox::show(
            this, QStringLiteral("Die Datei %1 konnte nicht geschrieben werden: %2").arg(path, file.errorString()),
            MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    }
}
