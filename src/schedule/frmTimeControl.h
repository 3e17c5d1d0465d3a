// SPDX-License-Identifier: GPL-3.0-or-later
// "Terminversand": the dialog in which the user chooses when an SMS goes out, once at a date and
// time or as a series with a pattern and an end. It hands back the schedule, or nothing. The
// rules that turn the choices into the schedule's strings live in CronRules and
// ScheduleDialogRules; the dialog copies its controls in and applies what they compute.
#pragma once

#include "CCronjob.h"
#include "ScheduleChoices.h"

#include <QDialog>

#include <optional>

class LinkLabel;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDateTimeEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

class frmTimeControl : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmTimeControl)

public:
    // The dialog as it opens: the last start time (empty for none) decides date and time.
    frmTimeControl(const QString& lastStartTime, QWidget* owner);
    ~frmTimeControl() override;

    // Shows the dialog modally over owner. Nothing when it was cancelled or never sent; otherwise
    // the schedule of the last press of "Senden", also one that the dialog refused and the user
    // then left by the window's close box.
    static std::optional<CCronjob> showTimeControl(const QString& lastStartTime, QWidget* owner);

    // The choices as the controls hold them.
    ScheduleChoices choices() const;

    bool scheduleCancelled() const { return m_scheduleCancelled; }
    const std::optional<CCronjob>& cronjob() const { return m_cronjob; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    // Esc is the key of "Abbrechen": only the close box leaves with a schedule held.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildControls();
    void connectHandlers();
    void loadDefaults(const QString& lastStartTime);

    void cbRepetition_Click();
    void showPattern(QWidget* panel);
    void obSeriesDayly_Click();
    void obSeriesWorkDay_Click();
    void obSeriesMonthly_Click(bool dayOfMonth);
    void obSeriesYear_Click(bool date);
    void obEnding_Click(bool afterCount);
    void refreshYearlyDayList();
    void checkOnChange(QComboBox* box, int rule);
    void tbSendTimes_Change();
    void DTPickerStart_Change();
    void DTPickerStop_Change();
    void cbSend_Click();
    void cbCancel_Click();
    void lblEditCronSMS_Click();
    // Program writes to the pickers never run their change checks.
    void setPicker(QDateTimeEdit* picker, const QDateTime& value);
    void setComboText(QComboBox* box, const QString& text);

    QString m_lastStartTime;
    bool m_scheduleCancelled = false;
    std::optional<CCronjob> m_cronjob;
    bool m_checking = false;

    QDateTimeEdit* DTPickerStart;
    QWidget* m_startPickerField = nullptr; // the text field inside DTPickerStart
    QComboBox* cmbTimeHour;
    QComboBox* cmbTimeMinutes;
    QCheckBox* cbRepetition;
    QGroupBox* frmSeries;
    QRadioButton* obDaly;
    QRadioButton* obMonthly;
    QRadioButton* obYearly;
    QWidget* pbDayly;
    QRadioButton* obSeriesDayly;
    QRadioButton* obSeriesWorkDay;
    QCheckBox* chMon;
    QCheckBox* chDie;
    QCheckBox* chMit;
    QCheckBox* chDon;
    QCheckBox* chFre;
    QCheckBox* chSam;
    QCheckBox* chSon;
    QWidget* pbMonthly;
    QRadioButton* obSeriesMonthly;
    QComboBox* cmbMonthDayDate;
    QRadioButton* obSeriesWMonth;
    QComboBox* cmbMonthWDayMulti;
    QComboBox* cmbMonthWDAy;
    QWidget* pbYear;
    QRadioButton* obSeriesYear;
    QComboBox* cmbYearlyDayDate;
    QComboBox* cmbYearlyMonthDate;
    QRadioButton* obSeriesYearWMonth;
    QComboBox* cmbYearlyWDayMulti;
    QComboBox* cmbYearlyWDay;
    QComboBox* cmbYearlyWDayMonth;
    QGroupBox* frmSeriesStanding;
    QRadioButton* obEndingTime;
    QLineEdit* tbSendTimes;
    QRadioButton* obEndingDate;
    QDateTimeEdit* DTPickerStop;
    QPushButton* cbSend;
    QPushButton* cbCancel;
    LinkLabel* lblEditCronSMS;
};
