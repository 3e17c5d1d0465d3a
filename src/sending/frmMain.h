// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: recipient, message, counters and the send buttons. It owns the send state
// and walks the load sequence of the start, announcing each step on the splash window.
#pragma once

#include <QWidget>

class frmSplash;
class frmMinimizeWarning;
class mTrayIcon;
class QComboBox;
class QLabel;
class QLineEdit;
class SmsTextEdit;

class frmMain : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMain)

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // The one main window, while it exists.
    static frmMain* instance();

    // The load sequence, each step announced on the splash. The window shows when it ends.
    void load(frmSplash* splash);

    // Called by the tray icon: normal goes to the tray, minimised comes back.
    void SysTrayMouseEventHandler();

    // The header line.
    void showWarning(const QString& text);
    void clearWarning();
    void showInformation(const QString& text);
    void hideInformation();

    // The Key of the selected entry of cmbVorwahl, empty when none is selected.
    QString selectedPrefixKey() const;
    // Selects the entry with that Key; false, and the selection unchanged, when there is none.
    bool selectPrefixKey(const QString& key);

    bool isMultiSMSMode = false;
    bool isPhonebookOpen = false;
    qint32 credits = -1;
    QString sessionPassword;
    QString lastStartTime;
    qint16 handOffCount = 0;
    qint16 creditsTicks = 0;
    QString lastSmsText;

    // The default text of the header line.
    static QString defaultHeaderInfo();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildControls();
    void initPrefixes();
    void restorePosition();
    void restoreSession();
    void savePosition();
    void saveSession();

    QWidget* header;
    QLabel* lblHeader;
    QLabel* lblHeaderInfo;
    QLabel* imgWarning;
    QLabel* imgInformation;
    QComboBox* cmbName;
    QComboBox* cmbVorwahl;
    QLineEdit* txtNummer;
    SmsTextEdit* txtSMS;
    QLabel* lblCredits;
    QLabel* lblVersion;

    mTrayIcon* m_tray = nullptr;
    frmMinimizeWarning* m_minimizeWarning = nullptr;
    bool m_unloaded = false;
};
