// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMultiSMS.h"

#include "RecipientPreview.h"
#include "frmCsvColumns.h"
#include "frmListCheck.h"
#include "frmOpenWebGroup.h"
#include "sending/StopList.h"
#include "sending/frmMain.h"
#include "settings/AddressBook.h"
#include "settings/ProductName.h"
#include "settings/ToolRegistry.h"
#include "settings/frmAddressBookPicker.h"
#include "settings/tools.h"
#include "toolkit/DefaultInstance.h"
#include "toolkit/FieldColors.h"
#include "toolkit/FileChooser.h"
#include "toolkit/MessageBox.h"
#include "toolkit/mMoveEvent.h"

#include <QAction>
#include <QCloseEvent>
#include <QFile>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QIdentityProxyModel>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

#include <memory>

namespace {

// A key of a tool bar; a Tab stop like any button, its shortcut named in its tooltip.
QAction* key(QToolBar* bar, const char* name, const QString& caption, const QString& picture,
             const QString& tooltip = QString(), const QString& shortcutText = QString())
{
    QAction* action = bar->addAction(QIcon(picture), caption);
    action->setObjectName(QLatin1String(name));
    const QString tip = tooltip.isEmpty() ? caption : tooltip;
    action->setToolTip(shortcutText.isEmpty() ? tip : tip + QStringLiteral(" (") + shortcutText + u')');
    bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
}

QString shortcutText(QKeySequence::StandardKey key)
{
    return QKeySequence(key).toString(QKeySequence::NativeText);
}

// The table as lvData shows it: a value with characters that can't go out carries the warning
// picture; the table's tooltip names the characters. Asked cell by cell as the view draws, so a
// table of a million rows costs no more than the rows in sight.
class UnsendableMarks : public QIdentityProxyModel
{
public:
    UnsendableMarks(RecipientTable* table, QObject* parent)
        : QIdentityProxyModel(parent)
        , m_table(table)
        , m_warning(QStringLiteral(":/pictures/warning.svg"))
    {
        setSourceModel(table);
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DecorationRole)
            return QIdentityProxyModel::data(index, role);
        if (m_table->hasUnsendable(mapToSource(index)))
            return m_warning;
        return {};
    }

private:
    RecipientTable* m_table;
    QIcon m_warning;
};
} // namespace

frmMultiSMS* frmMultiSMS::instance()
{
    if (!defaultInstance<frmMultiSMS>()) {
        // Unloaded by its close box, or by the main window when the program ends.
        defaultInstance<frmMultiSMS>() = new frmMultiSMS;
    }
    return defaultInstance<frmMultiSMS>();
}

frmMultiSMS* frmMultiSMS::loaded()
{
    return defaultInstance<frmMultiSMS>();
}

frmMultiSMS::frmMultiSMS()
    : QWidget(nullptr)
{
    setObjectName(QStringLiteral("frmMultiSMS"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("MultiSMS"));
    setWindowIcon(QIcon(QStringLiteral(":/pictures/multisms.svg")));
    buildControls();
    connectHandlers();
    if (frmMain* main = frmMain::instance())
        mMoveEvent::installHook(main, this);
    m_table.setPrefixAdded(false);
    clearInputFields();
    txtAnzahl->setText(QStringLiteral("0"));
    refreshPreview();
}

frmMultiSMS::~frmMultiSMS() = default;

void frmMultiSMS::buildControls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(6);

    toolBar = new QToolBar(this);
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolBar->setIconSize(QSize(24, 24));
    keyNew = key(toolBar, "new", QStringLiteral("Neu"), QStringLiteral(":/pictures/new.svg"),
                 QStringLiteral("Erstellt eine neue Datendatei."), shortcutText(QKeySequence::New));
    keyNew->setShortcut(QKeySequence::New);
    keyOpen = key(toolBar, "open", QStringLiteral("Öffnen"), QStringLiteral(":/pictures/open.svg"),
                  QStringLiteral("Öffnet eine bereits vorhandene Datendatei."), shortcutText(QKeySequence::Open));
    keyOpen->setShortcut(QKeySequence::Open);
    keyOpenWeb = key(toolBar, "openWeb", QStringLiteral("Gruppe öffnen"), QStringLiteral(":/pictures/webgroup.svg"),
                     QStringLiteral("Öffnet eine Gruppe aus dem Internet Telefonbuch."));
    keySave = key(toolBar, "save", QStringLiteral("Speichern"), QStringLiteral(":/pictures/save.svg"),
                  QStringLiteral("Speichert die aktuelle Datendatei."), shortcutText(QKeySequence::Save));
    keySave->setShortcut(QKeySequence::Save);
    keyCheck = key(toolBar, "check", QStringLiteral("Prüfen"), QStringLiteral(":/pictures/ok.svg"),
                   QStringLiteral("Zeigt die Zeilen, die nicht so hinausgehen, wie sie angezeigt werden."),
                   QStringLiteral("Strg+P"));
    keyCheck->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    layout->addWidget(toolBar);

    lvData = new QTableView(this);
    lvData->setObjectName(QStringLiteral("lvData"));
    lvData->setAccessibleName(QStringLiteral("Empfänger"));
    lvData->setModel(new UnsendableMarks(&m_table, this));
    lvData->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvData->setSelectionMode(QAbstractItemView::SingleSelection);
    lvData->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lvData->verticalHeader()->hide();
    // Fixed row heights keep a table of a hundred thousand rows quick to scroll.
    lvData->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    lvData->verticalHeader()->setDefaultSectionSize(lvData->fontMetrics().height() + 6);
    lvData->horizontalHeader()->setStretchLastSection(true);
    // Wide enough for a number in international form; the table never measures its rows.
    lvData->horizontalHeader()->resizeSection(
        1, lvData->fontMetrics().horizontalAdvance(QStringLiteral("0049171123456789")));
    lvData->setAlternatingRowColors(true);
    lvData->setWordWrap(false);
    layout->addWidget(lvData, 1);

    // The selected row's SMS as its recipient gets it.
    preview = new RecipientPreview(this);
    layout->addWidget(preview);

    auto* entry = new QHBoxLayout;
    auto* fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto field = [this, fields](const char* name, const QString& label) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        edit->setAccessibleName(label);
        auto* caption = new QLabel(label, this);
        caption->setBuddy(edit);
        fields->addRow(caption, edit);
        return edit;
    };
    txtName = field("txtName", QStringLiteral("Name"));
    txtNummer = field("txtNummer", QStringLiteral("Nummer"));
    txtFrei1 = field("txtFrei1", QStringLiteral("Freitext 1"));
    txtFrei2 = field("txtFrei2", QStringLiteral("Freitext 2"));
    entry->addLayout(fields, 1);

    tbEdit = new QToolBar(this);
    tbEdit->setObjectName(QStringLiteral("tbEdit"));
    tbEdit->setOrientation(Qt::Vertical);
    tbEdit->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tbEdit->setIconSize(QSize(20, 20));
    const QString inFields = QStringLiteral("Eingabetaste in den Feldern");
    keyAdd
        = key(tbEdit, "add", QStringLiteral("Hinzufügen"), QStringLiteral(":/pictures/add.svg"), QString(), inFields);
    // "ok" takes the place of "add" while a row is edited.
    keyOk = key(tbEdit, "ok", QStringLiteral("Übernehmen"), QStringLiteral(":/pictures/ok.svg"), QString(), inFields);
    keyDelete = key(tbEdit, "delete", QStringLiteral("Löschen"), QStringLiteral(":/pictures/delete.svg"), QString(),
                    QStringLiteral("Entf in der Liste"));
    keyAddressBook = key(tbEdit, "addressbook", QStringLiteral("Adressbuch"), QStringLiteral(":/pictures/user.svg"),
                         QStringLiteral("Übernimmt Empfänger aus dem Adressbuch."));
    entry->addWidget(tbEdit, 0, Qt::AlignTop);
    layout->addLayout(entry);

    onlyNumbersWarn = new QWidget(this);
    onlyNumbersWarn->setObjectName(QStringLiteral("onlyNumbersWarn"));
    auto* warnLayout = new QHBoxLayout(onlyNumbersWarn);
    warnLayout->setContentsMargins(0, 0, 0, 0);
    auto* warnIcon = new QLabel(onlyNumbersWarn);
    warnIcon->setPixmap(QIcon(QStringLiteral(":/pictures/warning.svg")).pixmap(16, 16));
    warnLayout->addWidget(warnIcon);
    warnLayout->addWidget(new QLabel(QStringLiteral("Die Rufnummer darf nur Zahlen enthalten."), onlyNumbersWarn), 1);
    onlyNumbersWarn->hide();
    layout->addWidget(onlyNumbersWarn);

    Label8 = new QLabel(QStringLiteral("Alle Telefonnummern müssen mit einer Ländervorwahl eingegeben werden!"), this);
    Label8->setObjectName(QStringLiteral("Label8"));
    Label8->setWordWrap(true);
    layout->addWidget(Label8);

    auto* file = new QFormLayout;
    txtFilename = new QLineEdit(this);
    txtFilename->setObjectName(QStringLiteral("txtFilename"));
    txtFilename->setAccessibleName(QStringLiteral("MultiSMS Datendatei"));
    // Named only by the file dialogs and the loads.
    txtFilename->setReadOnly(true);
    auto* filenameLabel = new QLabel(QStringLiteral("MultiSMS Datendatei"), this);
    filenameLabel->setBuddy(txtFilename);
    file->addRow(filenameLabel, txtFilename);
    txtAnzahl = new QLineEdit(this);
    txtAnzahl->setObjectName(QStringLiteral("txtAnzahl"));
    txtAnzahl->setAccessibleName(QStringLiteral("Anzahl Einträge"));
    txtAnzahl->setReadOnly(true);
    txtAnzahl->setMaximumWidth(100);
    auto* countLabel = new QLabel(QStringLiteral("Anzahl Einträge"), this);
    countLabel->setBuddy(txtAnzahl);
    file->addRow(countLabel, txtAnzahl);
    layout->addLayout(file);

    pBar = new QProgressBar(this);
    pBar->setObjectName(QStringLiteral("pBar"));
    pBar->setAccessibleName(QStringLiteral("Fortschritt"));
    pBar->setTextVisible(false);
    pBar->hide();
    layout->addWidget(pBar);

    // Narrowed beside the main window on a small screen, it keeps its keys in sight.
    setMinimumWidth(toolBar->sizeHint().width() + layout->contentsMargins().left() + layout->contentsMargins().right());
    resize(QSize(470, 560).expandedTo(sizeHint()));
}

void frmMultiSMS::connectHandlers()
{
    connect(txtNummer, &QLineEdit::textChanged, this, &frmMultiSMS::txtNummer_Change);
    connect(keyNew, &QAction::triggered, this, &frmMultiSMS::newFile);
    connect(keyOpen, &QAction::triggered, this, &frmMultiSMS::openDataFile);
    connect(keyOpenWeb, &QAction::triggered, this, &frmMultiSMS::openWebGroup);
    connect(keySave, &QAction::triggered, this, &frmMultiSMS::saveFile);
    connect(keyCheck, &QAction::triggered, this, [this] { checkList({}, true); });
    connect(lvData->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmMultiSMS::refreshPreview);
    connect(&m_table, &QAbstractItemModel::modelReset, this, &frmMultiSMS::refreshPreview);
    connect(&m_table, &QAbstractItemModel::layoutChanged, this, &frmMultiSMS::refreshPreview);
    connect(&m_table, &QAbstractItemModel::dataChanged, this, &frmMultiSMS::refreshPreview);
    connect(&m_table, &QAbstractItemModel::rowsRemoved, this, &frmMultiSMS::refreshPreview);
    connect(keyAdd, &QAction::triggered, this, &frmMultiSMS::addEntry);
    connect(keyOk, &QAction::triggered, this, &frmMultiSMS::applyEdit);
    connect(keyDelete, &QAction::triggered, this, &frmMultiSMS::deleteEntry);
    connect(keyAddressBook, &QAction::triggered, this, &frmMultiSMS::addFromAddressBook);
    // Entf deletes the selected row while the list has the focus; in a field it deletes text.
    keyDelete->setShortcut(QKeySequence::Delete);
    keyDelete->setShortcutContext(Qt::WidgetShortcut);
    lvData->addAction(keyDelete);
    // Enter in a field takes the entry, as "Hinzufügen" or, while a row is edited, "Übernehmen".
    for (QLineEdit* field : { txtName, txtNummer, txtFrei1, txtFrei2 }) {
        connect(field, &QLineEdit::returnPressed, this, [this] {
            if (keyOk->isVisible())
                applyEdit();
            else
                addEntry();
        });
    }
    connect(lvData, &QAbstractItemView::doubleClicked, this, &frmMultiSMS::lvData_DblClick);
    // The keyboard's way to a double-click.
    connect(lvData, &QAbstractItemView::activated, this, &frmMultiSMS::lvData_DblClick);
}

void frmMultiSMS::closeEvent(QCloseEvent* event)
{
    // The rows of a run in progress are still being sent: the window stays until the run ends.
    if (frmMain::instance() && frmMain::instance()->sending()->isRunning()) {
        event->ignore();
        return;
    }
    // The table goes with the window, without a question.
    if (frmMain* main = frmMain::instance()) {
        main->disableMultiSMS();
        mMoveEvent::removeHook(main, this);
    }
    event->accept();
}

void frmMultiSMS::recalcMaxSizes()
{
    m_table.recalcMaxSizes();
    txtAnzahl->setText(QString::number(m_table.rowCount()));
    if (frmMain* main = frmMain::instance())
        main->recalcSmsSize();
}

void frmMultiSMS::txtNummer_Change()
{
    // The general numeric test: signs, a decimal comma or an exponent pass; nothing is blocked.
    const bool numeric = tools::IsNumeric(txtNummer->text());
    FieldColors::setMarked(txtNummer, !numeric);
    onlyNumbersWarn->setVisible(!numeric);
}

void frmMultiSMS::setEditing(bool editing)
{
    keyOk->setVisible(editing);
    keyAdd->setVisible(!editing);
}

void frmMultiSMS::clearInputFields()
{
    txtName->clear();
    txtNameTag.clear();
    txtNummer->clear();
    txtFrei1->clear();
    txtFrei2->clear();
    // Emptying txtNummer has just raised the warning.
    FieldColors::setMarked(txtNummer, false);
    onlyNumbersWarn->hide();
    setEditing(false);
}

void frmMultiSMS::addEntry()
{
    const QString number = txtNummer->text();
    if (number.isEmpty()) {
        MessageBox::show(this, QStringLiteral("Sie müssen eine Telefonummer eingeben."), MessageBox::Buttons::Ok,
                         MessageBox::Icon::Warning, QStringLiteral("MultiSMS - Rufnummer fehlt"));
        FieldColors::setMarked(txtNummer, true);
        txtNummer->setFocus();
        return;
    }
    // The free texts are searched too.
    bool known = false;
    for (const RecipientRow& row : m_table.rows()) {
        if (row.Nummer == number || row.Freitext1 == number || row.Freitext2 == number) {
            known = true;
            break;
        }
    }
    if (known
        && MessageBox::show(this,
                            QStringLiteral("Ein Eintrag mit dieser Nummer existiert schon.\r\n"
                                           "Möchten Sie diesen trotzdem hinzufügen?"),
                            MessageBox::Buttons::YesNo, MessageBox::Icon::Question, ProductName())
            != MessageBox::Answer::Yes) {
        return;
    }
    // Taken as typed: the missing "00" is made up for only when sending.
    m_table.addRow(txtName->text(), number, txtFrei1->text(), txtFrei2->text());
    lvData->scrollToBottom();
    clearInputFields();
    recalcMaxSizes();
}

int frmMultiSMS::selectedRow() const
{
    const QModelIndexList rows = lvData->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void frmMultiSMS::lvData_DblClick()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    const RecipientRow& r = m_table.rows().at(row);
    txtName->setText(r.Name);
    txtNameTag = QString::number(r.Tag);
    txtNummer->setText(r.Nummer);
    txtFrei1->setText(r.Freitext1);
    txtFrei2->setText(r.Freitext2);
    setEditing(true);
}

void frmMultiSMS::applyEdit()
{
    // Neither an empty number nor a duplicate is looked for here.
    bool tagOk = false;
    const qint32 tag = txtNameTag.toInt(&tagOk);
    const int row = tagOk ? m_table.rowOfTag(tag) : -1;
    if (row < 0) {
        clearInputFields();
        return;
    }
    m_table.setRowValues(row, txtName->text(), txtNummer->text(), txtFrei1->text(), txtFrei2->text());
    clearInputFields();
    recalcMaxSizes();
}

void frmMultiSMS::deleteEntry()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    // No question; an edit under way, of this row or another, is given up.
    m_table.removeRow(row);
    clearInputFields();
    txtAnzahl->setText(QString::number(m_table.rowCount()));
    recalcMaxSizes();
}

void frmMultiSMS::addFromAddressBook()
{
    // Each chosen contact with a number becomes a row, as if typed in.
    bool added = false;
    for (const VCardContact& contact : frmAddressBookPicker::pick(frmMain::instance())) {
        const QString number = AddressBook::internationalNumber(contact.mobileNumber());
        if (number.isEmpty())
            continue;
        m_table.addRow(contact.displayName, number, QString(), QString());
        added = true;
    }
    if (added)
        recalcMaxSizes();
}

void frmMultiSMS::newFile()
{
    if (MessageBox::show(this,
                         QStringLiteral("Alle nicht gespeicherten Informationen gehen verloren.\r\n"
                                        "Möchten Sie wirklich eine neue Datei anlegen?"),
                         MessageBox::Buttons::YesNo, MessageBox::Icon::Question, ProductName())
        != MessageBox::Answer::Yes) {
        return;
    }
    clearInputFields();
    txtFilename->clear();
    m_table.Clear();
    txtAnzahl->setText(QString::number(m_table.rowCount()));
    recalcMaxSizes();
}

void frmMultiSMS::openDataFile()
{
    setEnabled(false);
    const QString path = FileChooser::chooseDataFileToOpen(frmMain::instance());
    setEnabled(true);
    if (path.isEmpty())
        return;
    txtFilename->setText(path);
    QList<CsvList::Doubt> leftOut;
    if (CsvList::isCsvPath(path)) {
        if (!openList(path, &leftOut))
            return;
    } else if (!m_table.load(path)) {
        // Nothing of the file stays; the count and the figures keep their old values.
        clearInputFields();
        MessageBox::show(this, QStringLiteral("Die Datei konnte nicht geladen werden."), MessageBox::Buttons::Ok,
                         MessageBox::Icon::Critical, ProductName());
        return;
    }
    txtAnzahl->setText(QString::number(m_table.rowCount()));
    recalcMaxSizes();
    // Once set, the notice follows every later load while the window lives.
    if (m_table.prefixAdded()) {
        MessageBox::show(this,
                         QStringLiteral("Den Rufnummern wurde die Vorwahl für Deutschland hinzugefügt. Die "
                                        "gespeicherte Datei wurde nicht verändert. Bitte speichern Sie die neuen "
                                        "Nummern bei Bedarf ab."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Information, ProductName());
    }
    checkList(leftOut, false);
    if (frmMain* main = frmMain::instance())
        main->offerToGoOn();
}

bool frmMultiSMS::openList(const QString& path, QList<CsvList::Doubt>* leftOut)
{
    // A file that is no list leaves the table as it was, and the user learns why. The file is
    // read once; its bytes are read again as a list only where a choice of columns applies.
    QFile file(path);
    QByteArray bytes;
    CsvList::Result read;
    if (file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
        read = CsvList::read(bytes);
    } else {
        read.failure = file.errorString();
    }
    file.close();
    if (!read.ok) {
        MessageBox::show(this, QStringLiteral("Die Datei kann nicht als Liste gelesen werden: ") + read.failure,
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        return false;
    }
    // The columns the user chose for a list with this header before, or now where the header
    // leaves them unsure.
    const QString columnsKey = QString::fromUtf16(ToolRegistry::RootKey) + QStringLiteral("\\ListenSpalten");
    std::optional<CsvList::Mapping> mapping;
    if (read.hasHeader) {
        const QString remembered = ToolRegistry::GetRegString(columnsKey, read.headerKey);
        if (!remembered.isEmpty())
            mapping = CsvList::Mapping::fromText(remembered);
        if (mapping && !mapping->hasNumber())
            mapping.reset();
    }
    if (!mapping && !read.sure) {
        mapping = frmCsvColumns::choose(read.header, read.mapping, this);
        if (!mapping)
            return false;
        if (read.hasHeader)
            ToolRegistry::SaveRegString(columnsKey, read.headerKey, mapping->toText());
    }
    if (mapping)
        read = CsvList::read(bytes, *mapping);
    if (!m_table.loadCsv(read)) {
        clearInputFields();
        MessageBox::show(this, QStringLiteral("Die Datei kann nicht als Liste gelesen werden: ") + read.failure,
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        return false;
    }
    // Named in the report that follows.
    *leftOut = read.doubtful;
    return true;
}

void frmMultiSMS::openWebGroup()
{
    const bool loaded = frmOpenWebGroup::showOpenWebGroup(m_table, frmMain::instance());
    if (defaultInstance<frmMultiSMS>() != this)
        return;
    recalcMaxSizes();
    if (loaded)
        checkList({}, false);
}

void frmMultiSMS::checkList(const QList<CsvList::Doubt>& leftOut, bool always)
{
    frmMain* main = frmMain::instance();
    if (!main)
        return;
    const auto stops = std::make_shared<const StopList>(StopList::load());
    const auto check = [this, main, stops] {
        ListCheck::Context context = main->listCheckContext();
        context.expectedParts = main->partsPerMultiSms();
        context.stopped = [stops](const QString& number) {
            return stops->contains(number);
        };
        return ListCheck::check(m_table.rows(), context);
    };
    const QList<ListCheck::Finding> findings = check();
    if (!always && leftOut.isEmpty() && findings.isEmpty())
        return;
    const int rows = int(m_table.rowCount());
    const int goTo = frmListCheck::review(m_table, check, findings, leftOut, this);
    if (m_table.rowCount() != rows) {
        clearInputFields();
        recalcMaxSizes();
    }
    if (goTo >= 0)
        goToRow(goTo);
}

void frmMultiSMS::goToRow(int row)
{
    lvData->selectRow(row);
    lvData->scrollTo(m_table.index(row, 0));
    lvData->setFocus();
}

void frmMultiSMS::refreshPreview()
{
    const int row = selectedRow();
    frmMain* main = frmMain::instance();
    if (row < 0 || row >= m_table.rowCount() || !main)
        preview->showRow(nullptr, {});
    else
        preview->showRow(&m_table.rows().at(row), main->listCheckContext());
}

void frmMultiSMS::saveFile()
{
    if (txtFilename->text().isEmpty()) {
        setEnabled(false);
        txtFilename->setText(FileChooser::chooseDataFileToSave(frmMain::instance()));
        setEnabled(true);
        if (txtFilename->text().isEmpty())
            return;
        // Exact comparison: "x.MSMS" gets a second ending.
        if (!txtFilename->text().endsWith(QStringLiteral(".msms")))
            txtFilename->setText(txtFilename->text() + QStringLiteral(".msms"));
        if (QFileInfo::exists(txtFilename->text())
            && MessageBox::show(this,
                                QStringLiteral("Die Datei existiert bereits.\r\nWollen Sie die Datei überschreiben?"),
                                MessageBox::Buttons::YesNo, MessageBox::Icon::Question, ProductName())
                != MessageBox::Answer::Yes) {
            txtFilename->clear();
            return;
        }
    }
    // A named table is stored without any question.
    writeDataFile(txtFilename->text());
}

void frmMultiSMS::writeDataFile(const QString& path)
{
    pBar->setValue(pBar->minimum());
    pBar->show();
    FileFailure failure;
    const bool written = m_table.save(
        path,
        [this](int value, int maximum) {
            pBar->setMaximum(maximum);
            pBar->setValue(value);
        },
        &failure);
    pBar->hide();
    if (!written) {
        MessageBox::show(this,
                         QStringLiteral("Die Datei konnte leider nicht gespeichert werden.\r\nFehlernummer: ")
                             + QString::number(failure.number) + QStringLiteral("\r\nBeschreibung: ")
                             + failure.description,
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    }
}
