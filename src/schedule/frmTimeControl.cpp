// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmTimeControl.h"

#include "CronRules.h"
#include "ScheduleDialogRules.h"
#include "settings/frmOptionen.h"
#include "toolkit/Clock.h"
#include "toolkit/HeaderBand.h"
#include "toolkit/LinkLabel.h"
#include "toolkit/MessageBox.h"
#include "toolkit/Twips.h"

#include <QButtonGroup>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <functional>

namespace {
template<typename T> T* named(T* widget, const char* name, const QString& accessibleName = QString())
{
    widget->setObjectName(QString::fromLatin1(name));
    if (!accessibleName.isEmpty())
        widget->setAccessibleName(accessibleName);
    return widget;
}

QComboBox* comboBox(QWidget* parent, const char* name, const QString& accessibleName, bool editable,
                    int widthInCharacters)
{
    auto* box = named(new QComboBox(parent), name, accessibleName);
    box->setEditable(editable);
    if (editable) {
        box->setInsertPolicy(QComboBox::NoInsert);
        // A screen reader announces the text field inside the box when it has the focus.
        box->lineEdit()->setAccessibleName(accessibleName);
    }
    box->setMinimumContentsLength(widthInCharacters);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

QDateTimeEdit* datePicker(QWidget* parent, const char* name, const QString& accessibleName)
{
    auto* picker = named(new QDateTimeEdit(parent), name, accessibleName);
    picker->setCalendarPopup(true);
    picker->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    // The built-in value until the dialog writes its own.
    picker->setDateTime(QDateTime(QDate(2006, 8, 23), QTime(0, 0)));
    return picker;
}

QLabel* label(const QString& text, QWidget* parent, const char* name, QWidget* buddy = nullptr)
{
    auto* l = named(new QLabel(text, parent), name);
    if (buddy)
        l->setBuddy(buddy);
    return l;
}

// The control named in a message when its text has to be a number and isn't.
QString controlCaption(const QString& control)
{
    if (control == u"cmbTimeHour")
        return QStringLiteral("Uhrzeit (Stunde)");
    if (control == u"cmbTimeMinutes")
        return QStringLiteral("Uhrzeit (Minute)");
    if (control == u"cmbMonthDayDate")
        return QStringLiteral("Tag des Monats");
    return QStringLiteral("Woche des Jahresmusters");
}

MessageBox::Icon iconOf(CronRules::Message::Icon icon)
{
    return icon == CronRules::Message::Icon::Critical ? MessageBox::Icon::Critical : MessageBox::Icon::Information;
}
} // namespace

// A dialog destroyed while shown hides on its way out, and a date field that loses the focus then
// reports its edit as finished: to a dialog that is no longer there. Its fields say nothing more.
frmTimeControl::~frmTimeControl()
{
    for (QObject* field : findChildren<QObject*>())
        disconnect(field, nullptr, this, nullptr);
}

frmTimeControl::frmTimeControl(const QString& lastStartTime, QWidget* owner)
    : QDialog(owner)
    , m_lastStartTime(lastStartTime)
{
    setObjectName(QStringLiteral("frmTimeControl"));
    setWindowTitle(QStringLiteral("Terminversand"));
    setModal(true);
    buildControls();
    connectHandlers();
    loadDefaults(lastStartTime);
    if (owner)
        move(owner->x() + Twips::toPixels(495), owner->y() + Twips::toPixels(540));
}

void frmTimeControl::buildControls()
{
    auto* header = new HeaderBand(
        QStringLiteral("Terminversand"),
        QStringLiteral("Hier können Sie alle Einstellungen festlegen, um eine SMS termingenau zu versenden "),
        QStringLiteral(":/pictures/terminversand.svg"), this);
    header->titleLabel()->setObjectName(QStringLiteral("lblTitel"));
    header->textLabel()->setObjectName(QStringLiteral("lblDescription"));

    auto* frmdate = named(new QGroupBox(QStringLiteral("Versenden"), this), "frmdate");
    DTPickerStart = datePicker(frmdate, "DTPickerStart", QStringLiteral("Versenden am"));
    cmbTimeHour = comboBox(frmdate, "cmbTimeHour", QStringLiteral("Uhrzeit (Stunde)"), false, 2);
    cmbTimeMinutes = comboBox(frmdate, "cmbTimeMinutes", QStringLiteral("Uhrzeit (Minute)"), false, 2);
    auto* dateLine = new QHBoxLayout(frmdate);
    dateLine->addWidget(label(QStringLiteral(" am:"), frmdate, "lblSendDate", DTPickerStart));
    dateLine->addWidget(DTPickerStart);
    dateLine->addSpacing(16);
    dateLine->addWidget(label(QStringLiteral("Uhrzeit:"), frmdate, "lblSendTime", cmbTimeHour));
    dateLine->addWidget(cmbTimeHour);
    dateLine->addWidget(label(QStringLiteral(":"), frmdate, "lblTimeSep"));
    dateLine->addWidget(cmbTimeMinutes);
    dateLine->addStretch(1);

    cbRepetition = named(new QCheckBox(QStringLiteral("SMS Serieneinstellungen"), this), "cbRepetition");

    frmSeries = named(new QGroupBox(QStringLiteral("Serienmuster"), this), "frmSeries");
    obDaly = named(new QRadioButton(QStringLiteral("Täglich"), frmSeries), "obDaly");
    obMonthly = named(new QRadioButton(QStringLiteral("Monatlich"), frmSeries), "obMonthly");
    obYearly = named(new QRadioButton(QStringLiteral("Jährlich"), frmSeries), "obYearly");

    pbDayly = named(new QWidget(frmSeries), "pbDayly");
    obSeriesDayly = named(new QRadioButton(QStringLiteral("Jeden Tag senden"), pbDayly), "obSeriesDayly");
    obSeriesWorkDay = named(new QRadioButton(QStringLiteral("Senden jeden"), pbDayly), "obSeriesWorkDay");
    chMon = named(new QCheckBox(QStringLiteral("Montag"), pbDayly), "chMon");
    chDie = named(new QCheckBox(QStringLiteral("Dienstag"), pbDayly), "chDie");
    chMit = named(new QCheckBox(QStringLiteral("Mittwoch"), pbDayly), "chMit");
    chDon = named(new QCheckBox(QStringLiteral("Donnerstag"), pbDayly), "chDon");
    chFre = named(new QCheckBox(QStringLiteral("Freitag"), pbDayly), "chFre");
    chSam = named(new QCheckBox(QStringLiteral("Samstag"), pbDayly), "chSam");
    chSon = named(new QCheckBox(QStringLiteral("Sonntag"), pbDayly), "chSon");
    auto* daily = new QGridLayout(pbDayly);
    daily->setContentsMargins(0, 0, 0, 0);
    daily->addWidget(obSeriesDayly, 0, 0, 1, 4);
    daily->addWidget(obSeriesWorkDay, 1, 0, 1, 4);
    const QList<QCheckBox*> weekdays = { chMon, chDie, chMit, chDon, chFre, chSam, chSon };
    for (int i = 0; i < int(weekdays.size()); ++i)
        daily->addWidget(weekdays[i], 2 + i / 4, i % 4);
    daily->setColumnMinimumWidth(0, 20);

    pbMonthly = named(new QWidget(frmSeries), "pbMonthly");
    obSeriesMonthly = named(new QRadioButton(QStringLiteral("An jedem"), pbMonthly), "obSeriesMonthly");
    obSeriesMonthly->setAccessibleDescription(QStringLiteral("An jedem Tag des Monats"));
    cmbMonthDayDate = comboBox(pbMonthly, "cmbMonthDayDate", QStringLiteral("Tag des Monats"), true, 3);
    obSeriesWMonth = named(new QRadioButton(QStringLiteral("An jedem"), pbMonthly), "obSeriesWMonth");
    obSeriesWMonth->setAccessibleDescription(QStringLiteral("An jedem Wochentag einer Woche des Monats"));
    cmbMonthWDayMulti = comboBox(pbMonthly, "cmbMonthWDayMulti", QStringLiteral("Woche des Monats"), true, 2);
    cmbMonthWDAy = comboBox(pbMonthly, "cmbMonthWDAy", QStringLiteral("Wochentag des Monats"), false, 10);
    auto* monthly = new QGridLayout(pbMonthly);
    monthly->setContentsMargins(0, 0, 0, 0);
    monthly->addWidget(obSeriesMonthly, 0, 0);
    monthly->addWidget(cmbMonthDayDate, 0, 1);
    monthly->addWidget(label(QStringLiteral(".  Tag des Monats"), pbMonthly, "lblMonSep1"), 0, 2, 1, 3);
    monthly->addWidget(obSeriesWMonth, 1, 0);
    monthly->addWidget(cmbMonthWDayMulti, 1, 1);
    monthly->addWidget(label(QStringLiteral("."), pbMonthly, "lblMonSep2"), 1, 2);
    monthly->addWidget(cmbMonthWDAy, 1, 3);
    monthly->addWidget(label(QStringLiteral("des Monats"), pbMonthly, "lblMonthAdd"), 1, 4);
    monthly->setColumnStretch(5, 1);

    pbYear = named(new QWidget(frmSeries), "pbYear");
    obSeriesYear = named(new QRadioButton(QStringLiteral("Jeden"), pbYear), "obSeriesYear");
    obSeriesYear->setAccessibleDescription(QStringLiteral("Jedes Jahr an einem Datum"));
    cmbYearlyDayDate = comboBox(pbYear, "cmbYearlyDayDate", QStringLiteral("Tag"), true, 3);
    cmbYearlyMonthDate = comboBox(pbYear, "cmbYearlyMonthDate", QStringLiteral("Monat"), false, 10);
    obSeriesYearWMonth = named(new QRadioButton(QStringLiteral("Jeden"), pbYear), "obSeriesYearWMonth");
    obSeriesYearWMonth->setAccessibleDescription(QStringLiteral("Jedes Jahr an einem Wochentag eines Monats"));
    cmbYearlyWDayMulti = comboBox(pbYear, "cmbYearlyWDayMulti", QStringLiteral("Woche"), true, 2);
    cmbYearlyWDay = comboBox(pbYear, "cmbYearlyWDay", QStringLiteral("Wochentag"), false, 10);
    cmbYearlyWDayMonth = comboBox(pbYear, "cmbYearlyWDayMonth", QStringLiteral("im Monat"), false, 10);
    auto* yearly = new QGridLayout(pbYear);
    yearly->setContentsMargins(0, 0, 0, 0);
    yearly->addWidget(obSeriesYear, 0, 0);
    yearly->addWidget(cmbYearlyDayDate, 0, 1);
    yearly->addWidget(label(QStringLiteral("."), pbYear, "lblYearSep1"), 0, 2);
    yearly->addWidget(cmbYearlyMonthDate, 0, 3);
    yearly->addWidget(obSeriesYearWMonth, 1, 0);
    yearly->addWidget(cmbYearlyWDayMulti, 1, 1);
    yearly->addWidget(label(QStringLiteral("."), pbYear, "lblYearSep2"), 1, 2);
    yearly->addWidget(cmbYearlyWDay, 1, 3);
    yearly->addWidget(label(QStringLiteral("im"), pbYear, "lblYearAd"), 1, 4);
    yearly->addWidget(cmbYearlyWDayMonth, 1, 5);
    yearly->setColumnStretch(6, 1);

    auto* patterns = new QVBoxLayout;
    for (QRadioButton* b : { obDaly, obMonthly, obYearly })
        patterns->addWidget(b);
    patterns->addStretch(1);
    auto* separator = new QFrame(frmSeries);
    separator->setFrameShape(QFrame::VLine);
    separator->setFrameShadow(QFrame::Sunken);
    auto* panels = new QVBoxLayout;
    for (QWidget* panel : { pbDayly, pbMonthly, pbYear })
        panels->addWidget(panel);
    panels->addStretch(1);
    auto* series = new QHBoxLayout(frmSeries);
    series->addLayout(patterns);
    series->addWidget(separator);
    series->addLayout(panels, 1);

    frmSeriesStanding = named(new QGroupBox(QStringLiteral("Seriendauer"), this), "frmSeriesStanding");
    obEndingTime = named(new QRadioButton(QStringLiteral("nach"), frmSeriesStanding), "obEndingTime");
    tbSendTimes = named(new QLineEdit(QStringLiteral("1"), frmSeriesStanding), "tbSendTimes",
                        QStringLiteral("Anzahl der Sendungen"));
    tbSendTimes->setMaxLength(3);
    tbSendTimes->setMaximumWidth(48);
    obEndingDate = named(new QRadioButton(QStringLiteral("am "), frmSeriesStanding), "obEndingDate");
    DTPickerStop = datePicker(frmSeriesStanding, "DTPickerStop", QStringLiteral("Die Serie endet am"));
    auto* standing = new QGridLayout(frmSeriesStanding);
    standing->addWidget(label(QStringLiteral("Die Serie endet "), frmSeriesStanding, "lblEndSeries"), 0, 0);
    standing->addWidget(obEndingTime, 0, 1);
    standing->addWidget(tbSendTimes, 0, 2);
    standing->addWidget(label(QStringLiteral("Sendung(en)"), frmSeriesStanding, "Label1", tbSendTimes), 0, 3);
    standing->addWidget(obEndingDate, 1, 1);
    standing->addWidget(DTPickerStop, 1, 2, 1, 2);
    standing->setColumnStretch(4, 1);

    // Option buttons that belong together exclude each other, wherever they stand.
    const auto group = [this](std::initializer_list<QRadioButton*> buttons) {
        auto* g = new QButtonGroup(this);
        for (QRadioButton* b : buttons)
            g->addButton(b);
    };
    group({ obDaly, obMonthly, obYearly });
    group({ obSeriesDayly, obSeriesWorkDay });
    group({ obSeriesMonthly, obSeriesWMonth });
    group({ obSeriesYear, obSeriesYearWMonth });
    group({ obEndingTime, obEndingDate });

    cbSend = named(new QPushButton(QStringLiteral("Senden"), this), "cbSend");
    cbSend->setDefault(true);
    cbCancel = named(new QPushButton(QStringLiteral("Abbrechen"), this), "cbCancel");
    lblEditCronSMS = named(new LinkLabel(QStringLiteral("Aufträge bearbeiten"), this), "lblEditCronSMS");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lblEditCronSMS);
    buttons->addStretch(1);
    buttons->addWidget(cbSend);
    buttons->addWidget(cbCancel);

    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 10, 12, 12);
    body->addWidget(frmdate);
    body->addWidget(cbRepetition);
    body->addWidget(frmSeries);
    body->addWidget(frmSeriesStanding);
    body->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(header);
    layout->addLayout(body);
    // The window grows and shrinks with the series settings.
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmTimeControl::connectHandlers()
{
    // An option button acts on every click, the selected one's too, and whenever it becomes
    // selected otherwise (keyboard, assistive technology, the program). Each action only sets
    // what its button stands for, so running it twice for one click does no harm.
    const auto onSelect = [this](QRadioButton* button, std::function<void()> action) {
        connect(button, &QRadioButton::toggled, this, [action](bool on) {
            if (on)
                action();
        });
        connect(button, &QRadioButton::clicked, this, action);
    };
    connect(cbRepetition, &QCheckBox::toggled, this, &frmTimeControl::cbRepetition_Click);
    onSelect(obDaly, [this] { showPattern(pbDayly); });
    onSelect(obMonthly, [this] { showPattern(pbMonthly); });
    onSelect(obYearly, [this] { showPattern(pbYear); });
    onSelect(obSeriesDayly, [this] { obSeriesDayly_Click(); });
    onSelect(obSeriesWorkDay, [this] { obSeriesWorkDay_Click(); });
    onSelect(obSeriesMonthly, [this] { obSeriesMonthly_Click(true); });
    onSelect(obSeriesWMonth, [this] { obSeriesMonthly_Click(false); });
    onSelect(obSeriesYear, [this] { obSeriesYear_Click(true); });
    onSelect(obSeriesYearWMonth, [this] { obSeriesYear_Click(false); });
    onSelect(obEndingTime, [this] { obEnding_Click(true); });
    onSelect(obEndingDate, [this] { obEnding_Click(false); });

    // A change of the month and a click on one, the same again included, refresh the day list.
    connect(cmbYearlyMonthDate, &QComboBox::currentIndexChanged, this, &frmTimeControl::refreshYearlyDayList);
    connect(cmbYearlyMonthDate, &QComboBox::activated, this, &frmTimeControl::refreshYearlyDayList);
    const std::pair<QComboBox*, ScheduleDialogRules::Box> checked[] = {
        { cmbMonthWDayMulti, ScheduleDialogRules::Box::cmbMonthWDayMulti },
        { cmbYearlyWDayMulti, ScheduleDialogRules::Box::cmbYearlyWDayMulti },
        { cmbYearlyDayDate, ScheduleDialogRules::Box::cmbYearlyDayDate },
    };
    for (const auto& [box, rule] : checked) {
        connect(box, &QComboBox::editTextChanged, this,
                [this, box = box, rule = rule] { checkOnChange(box, int(rule)); });
    }
    connect(tbSendTimes, &QLineEdit::textChanged, this, &frmTimeControl::tbSendTimes_Change);
    // The start picker's own button and its field (a child of its own) both take clicks.
    m_startPickerField = DTPickerStart->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* w :
         { static_cast<QWidget*>(cmbMonthDayDate->lineEdit()), static_cast<QWidget*>(cmbYearlyDayDate->lineEdit()),
           static_cast<QWidget*>(tbSendTimes), static_cast<QWidget*>(DTPickerStart), m_startPickerField })
        w->installEventFilter(this);

    // The pickers check what the user chose: when editing ends and when a day is picked.
    connect(DTPickerStart, &QDateTimeEdit::editingFinished, this, &frmTimeControl::DTPickerStart_Change);
    connect(DTPickerStart->calendarWidget(), &QCalendarWidget::clicked, this, &frmTimeControl::DTPickerStart_Change);
    connect(DTPickerStop, &QDateTimeEdit::editingFinished, this, &frmTimeControl::DTPickerStop_Change);
    connect(DTPickerStop->calendarWidget(), &QCalendarWidget::clicked, this, &frmTimeControl::DTPickerStop_Change);

    connect(cbSend, &QPushButton::clicked, this, &frmTimeControl::cbSend_Click);
    connect(cbCancel, &QPushButton::clicked, this, &frmTimeControl::cbCancel_Click);
    connect(lblEditCronSMS, &LinkLabel::clicked, this, &frmTimeControl::lblEditCronSMS_Click);
}

void frmTimeControl::loadDefaults(const QString& lastStartTime)
{
    const QDateTime now = Clock::now();
    cmbTimeHour->addItems(ScheduleDialogRules::hourItems());
    cmbTimeMinutes->addItems(ScheduleDialogRules::minuteItems());
    const ScheduleDialogRules::RestoredStart restored = ScheduleDialogRules::restoreStartTime(lastStartTime);
    if (!lastStartTime.isEmpty() && restored.ok) {
        setPicker(DTPickerStart, restored.DTPickerStart);
        setComboText(cmbTimeHour, restored.cmbTimeHour);
        setComboText(cmbTimeMinutes, restored.cmbTimeMinutes);
    } else {
        const ScheduleDialogRules::Proposal proposal = ScheduleDialogRules::proposeStartTime(now);
        setComboText(cmbTimeHour, proposal.cmbTimeHour);
        setComboText(cmbTimeMinutes, proposal.cmbTimeMinutes);
        setPicker(DTPickerStart, proposal.DTPickerStart);
        setPicker(DTPickerStop, proposal.DTPickerStop);
    }

    for (QRadioButton* b : { obDaly, obEndingTime, obSeriesDayly, obSeriesMonthly, obSeriesYear })
        b->setChecked(true);

    cmbMonthWDayMulti->addItems(ScheduleDialogRules::weekNumberItems());
    cmbMonthDayDate->addItems(ScheduleDialogRules::monthDayItems());
    cmbMonthWDAy->addItems(ScheduleDialogRules::weekdayItems());
    cmbYearlyWDayMulti->addItems(ScheduleDialogRules::weekNumberItems());
    cmbYearlyWDay->addItems(ScheduleDialogRules::weekdayItems());
    const ScheduleDialogRules::TodayDefaults today = ScheduleDialogRules::todayDefaults(now.date());
    setComboText(cmbMonthDayDate, today.cmbMonthDayDate);
    setComboText(cmbYearlyDayDate, today.cmbYearlyDayDate);
    setComboText(cmbMonthWDayMulti, today.cmbMonthWDayMulti);
    setComboText(cmbYearlyWDayMulti, today.cmbYearlyWDayMulti);
    {
        // The month lists select the current month once they are filled; that runs the day list.
        const QSignalBlocker blockMonth(cmbYearlyMonthDate);
        cmbYearlyMonthDate->addItems(ScheduleDialogRules::monthItems());
        cmbYearlyMonthDate->setCurrentIndex(-1);
    }
    cmbYearlyWDayMonth->addItems(ScheduleDialogRules::monthItems());
    setComboText(cmbYearlyMonthDate, today.cmbYearlyMonthDate);
    setComboText(cmbYearlyWDayMonth, today.cmbYearlyWDayMonth);
    setComboText(cmbMonthWDAy, today.cmbMonthWDAy);
    setComboText(cmbYearlyWDay, today.cmbYearlyWDay);

    cbRepetition->setChecked(false);
    cbRepetition_Click();
}

void frmTimeControl::setPicker(QDateTimeEdit* picker, const QDateTime& value)
{
    const QSignalBlocker block(picker);
    picker->setDateTime(value);
}

void frmTimeControl::setComboText(QComboBox* box, const QString& text)
{
    if (box->isEditable()) {
        box->setEditText(text);
        return;
    }
    const int index = box->findText(text);
    if (index >= 0)
        box->setCurrentIndex(index);
}

void frmTimeControl::cbRepetition_Click()
{
    const bool series = cbRepetition->isChecked();
    frmSeries->setVisible(series);
    frmSeriesStanding->setVisible(series);
    if (!series) {
        for (QWidget* panel : { pbDayly, pbMonthly, pbYear })
            panel->hide();
        return;
    }
    // The daily panel and the count come up, whatever option buttons are selected meanwhile.
    showPattern(pbDayly);
    obEnding_Click(true);
    tbSendTimes->setText(QStringLiteral("1"));
}

void frmTimeControl::showPattern(QWidget* panel)
{
    for (QWidget* p : { pbDayly, pbMonthly, pbYear })
        p->setVisible(p == panel);
}

void frmTimeControl::obSeriesDayly_Click()
{
    for (QCheckBox* day : { chMon, chDie, chMit, chDon, chFre, chSam, chSon }) {
        day->setChecked(false);
        day->setEnabled(false);
    }
}

void frmTimeControl::obSeriesWorkDay_Click()
{
    for (QCheckBox* day : { chMon, chDie, chMit, chDon, chFre, chSam, chSon })
        day->setEnabled(true);
}

void frmTimeControl::obSeriesMonthly_Click(bool dayOfMonth)
{
    cmbMonthDayDate->setEnabled(dayOfMonth);
    cmbMonthWDayMulti->setEnabled(!dayOfMonth);
    cmbMonthWDAy->setEnabled(!dayOfMonth);
}

void frmTimeControl::obSeriesYear_Click(bool date)
{
    cmbYearlyDayDate->setEnabled(date);
    cmbYearlyMonthDate->setEnabled(date);
    cmbYearlyWDayMulti->setEnabled(!date);
    cmbYearlyWDay->setEnabled(!date);
    cmbYearlyWDayMonth->setEnabled(!date);
}

void frmTimeControl::obEnding_Click(bool afterCount)
{
    tbSendTimes->setEnabled(afterCount);
    DTPickerStop->setEnabled(!afterCount);
}

void frmTimeControl::refreshYearlyDayList()
{
    const ScheduleDialogRules::YearlyDayList list = ScheduleDialogRules::refreshYearlyDayList(
        cmbYearlyMonthDate->currentText(), cmbYearlyDayDate->currentText(), cmbTimeHour->currentText(),
        cmbTimeMinutes->currentText(), Clock::now());
    {
        const QSignalBlocker block(cmbYearlyDayDate);
        cmbYearlyDayDate->clear();
        cmbYearlyDayDate->addItems(list.days);
    }
    cmbYearlyDayDate->setEditText(list.cmbYearlyDayDate);
}

void frmTimeControl::checkOnChange(QComboBox* box, int rule)
{
    if (m_checking)
        return;
    const QString text = box->currentText();
    const QString kept
        = ScheduleDialogRules::checkOnChange(ScheduleDialogRules::Box(rule), text, cmbYearlyDayDate->count());
    if (kept == text)
        return;
    m_checking = true;
    box->setEditText(kept);
    m_checking = false;
}

void frmTimeControl::tbSendTimes_Change()
{
    const QString text = tbSendTimes->text();
    const QString kept = ScheduleDialogRules::checkOnChange(ScheduleDialogRules::Box::tbSendTimes, text);
    if (kept != text)
        tbSendTimes->setText(kept);
}

bool frmTimeControl::eventFilter(QObject* watched, QEvent* event)
{
    // Each click on the start picker adds the days once more to the day-of-month list. The press
    // counts: the release of a click on the button goes to the calendar it opened.
    if (event->type() == QEvent::MouseButtonPress && (watched == DTPickerStart || watched == m_startPickerField))
        cmbMonthDayDate->addItems(ScheduleDialogRules::monthDayItems());
    if (event->type() != QEvent::FocusOut)
        return QDialog::eventFilter(watched, event);
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason)
        return QDialog::eventFilter(watched, event);
    if (watched == cmbMonthDayDate->lineEdit()) {
        // A text that isn't a number ends this check without a word; "Senden" names the box.
        for (const CronRules::Message& message : ScheduleDialogRules::monthDayOnLeave(cmbMonthDayDate->currentText()))
            MessageBox::show(this, message.text, MessageBox::Buttons::Ok, iconOf(message.icon), message.title);
    } else if (watched == cmbYearlyDayDate->lineEdit()) {
        cmbYearlyDayDate->setEditText(
            ScheduleDialogRules::yearlyDayOnLeave(cmbYearlyDayDate->currentText(), Clock::now().date()));
    } else if (watched == tbSendTimes) {
        tbSendTimes->setText(ScheduleDialogRules::sendTimesOnLeave(tbSendTimes->text()));
    }
    return QDialog::eventFilter(watched, event);
}

void frmTimeControl::keyPressEvent(QKeyEvent* event)
{
    // QDialog would reject() on Esc, which is the close box's way out: it hands back the schedule
    // of a refused "Senden", and the main window would send it.
    if (event->matches(QKeySequence::Cancel)) {
        cbCancel_Click();
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmTimeControl::DTPickerStart_Change()
{
    setPicker(DTPickerStart, ScheduleDialogRules::startPickerChanged(DTPickerStart->dateTime(), Clock::now()));
}

void frmTimeControl::DTPickerStop_Change()
{
    setPicker(DTPickerStop,
              ScheduleDialogRules::stopPickerChanged(DTPickerStop->dateTime(), DTPickerStart->dateTime()));
}

ScheduleChoices frmTimeControl::choices() const
{
    ScheduleChoices c;
    c.cbRepetition = cbRepetition->isChecked();
    c.obDaly = obDaly->isChecked();
    c.obMonthly = obMonthly->isChecked();
    c.obYearly = obYearly->isChecked();
    c.obSeriesDayly = obSeriesDayly->isChecked();
    c.obSeriesWorkDay = obSeriesWorkDay->isChecked();
    c.chSon = chSon->isChecked();
    c.chMon = chMon->isChecked();
    c.chDie = chDie->isChecked();
    c.chMit = chMit->isChecked();
    c.chDon = chDon->isChecked();
    c.chFre = chFre->isChecked();
    c.chSam = chSam->isChecked();
    c.obSeriesMonthly = obSeriesMonthly->isChecked();
    c.obSeriesWMonth = obSeriesWMonth->isChecked();
    c.cmbMonthDayDate = cmbMonthDayDate->currentText();
    c.cmbMonthWDayMulti = cmbMonthWDayMulti->currentText();
    c.cmbMonthWDAy = cmbMonthWDAy->currentText();
    c.obSeriesYear = obSeriesYear->isChecked();
    c.obSeriesYearWMonth = obSeriesYearWMonth->isChecked();
    c.cmbYearlyDayDate = cmbYearlyDayDate->currentText();
    c.cmbYearlyMonthDate = cmbYearlyMonthDate->currentText();
    c.cmbYearlyWDayMulti = cmbYearlyWDayMulti->currentText();
    c.cmbYearlyWDay = cmbYearlyWDay->currentText();
    c.cmbYearlyWDayMonth = cmbYearlyWDayMonth->currentText();
    c.cmbTimeHour = cmbTimeHour->currentText();
    c.cmbTimeMinutes = cmbTimeMinutes->currentText();
    c.DTPickerStart = DTPickerStart->dateTime();
    c.DTPickerStop = DTPickerStop->dateTime();
    c.obEndingTime = obEndingTime->isChecked();
    c.obEndingDate = obEndingDate->isChecked();
    c.tbSendTimes = tbSendTimes->text();
    return c;
}

void frmTimeControl::cbSend_Click()
{
    const CronRules::Result result = CronRules::generate(choices());
    setPicker(DTPickerStart, result.DTPickerStart);
    if (tbSendTimes->text() != result.tbSendTimes)
        tbSendTimes->setText(result.tbSendTimes);
    m_cronjob = result.job;
    if (!result.invalidControl.isEmpty()) {
        // The dialog stays open with the user's choices, and the box in question gets the focus.
        MessageBox::show(this,
                         QStringLiteral("Im Feld „") + controlCaption(result.invalidControl)
                             + QStringLiteral("“ muss eine Zahl stehen. Bitte korrigieren Sie die Eingabe."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning, QStringLiteral("Terminversand"));
        if (auto* box = findChild<QWidget*>(result.invalidControl))
            box->setFocus();
        return;
    }
    for (const CronRules::Message& message : result.messages)
        MessageBox::show(this, message.text, MessageBox::Buttons::Ok, iconOf(message.icon), message.title);
    if (!result.success)
        return;
    m_scheduleCancelled = false;
    accept();
}

void frmTimeControl::cbCancel_Click()
{
    m_scheduleCancelled = true;
    reject();
}

void frmTimeControl::lblEditCronSMS_Click()
{
    // The job list is a pane of the options dialog; this dialog stays open behind it, with the
    // user's choices.
    frmOptionen::showOptionTerminversand(this);
}

std::optional<CCronjob> frmTimeControl::showTimeControl(const QString& lastStartTime, QWidget* owner)
{
    frmTimeControl dialog(lastStartTime, owner);
    dialog.exec();
    if (dialog.scheduleCancelled())
        return std::nullopt;
    return dialog.cronjob();
}
