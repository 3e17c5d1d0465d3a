// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: recipient, message, counters and the send buttons. It owns the send state,
// the two transfer objects and the used-number list, and walks the load sequence of the start,
// announcing each step on the splash window.
#pragma once

#include "GatewayRequest.h"
#include "SendRecord.h"
#include "SendingSession.h"
#include "bulk/ListCheck.h"
#include "settings/clsMRU.h"

#include <QWidget>

#include <memory>
#include <optional>

class frmSplash;
class frmMinimizeWarning;
class frmPhonebook;
class mTrayIcon;
class OptionsBar;
class CTooltip;
class QListWidget;
class QMenu;
class QAction;
class Inet;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QTimer;
class SendRecorder;
class frmSentSms;
class SmsTextEdit;
class ToolbarButton;
class UnsendableCharsBar;

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

    // The click on tbSend: check, password, balance test, used number, send.
    void tbSend_Click();
    // The click on tbTerminversand: the scheduling dialog, then the send with its schedule.
    void tbTerminversand_Click();
    // MultiSMS mode: the recipient fields give way to the table of frmMultiSMS at the side.
    void tbMultiSMS_Click();
    void showMultiSMS();
    void disableMultiSMS();
    // The phonebook beside the window: opened and closed by tbPhonebook.
    void tbPhonebook_Click();
    void showPhonebook();
    void disposePhonebook();
    // An entry the phonebook hands over ("telefon://Name@Nummer") into the recipient fields.
    enum class PhonebookEntry { Taken, NotMobile, Failed };
    PhonebookEntry takePhonebookEntry(const QString& address);
    PhonebookEntry takeRecipient(const QString& name, const QString& internationalNumber); // name, number apart
    // The window comes to the front with the focus on txtSMS, as after a phonebook entry.
    void focusMessage();
    // A contact of the address book into the recipient fields, as the phonebook hands one over.
    void tbAddressBook_Click();
    // The balance query; blocks until the service answered.
    void refreshCredits();
    // "Gesendete SMS", from the button, Strg+G or the tray's menu.
    void showSentSms();
    // A recorded SMS back in the fields, to be sent again with "Senden".
    void takeSentSms(const SendRecord::Entry& entry);
    // The record of what went out; null when none is kept.
    SendRecord* sendRecord() const { return m_record.get(); }
    // What sends this window's messages and runs; the log window and the editor observe it.
    SendingSession* sending() const { return m_sending; }
    // Sends rows (0-based) of the MultiSMS table again, through the checks, the password and the
    // balance test of "Senden": those a run left unsent, and those without an answer (which may
    // have gone out) only when the user confirms them.
    void sendRowsAgain(const QList<int>& notSent, const QList<int>& unknown);
    // When the table of the editor is one whose run was ended by the program's end, offers to go
    // on with the rows that did not go out.
    void offerToGoOn();
    // The version check of the start.
    void checkForUpdate();
    // Size, counters and send button from the text.
    void recalcSmsSize();
    // The longest values of the MultiSMS table's columns and its rows; none without the table.
    MessageSize::PlaceholderSizes placeholderSizes() const;
    // What a recipient's message is worked out with: the text, its options, the price. The parts
    // a row is checked against are partsPerMultiSms().
    ListCheck::Context listCheckContext() const;
    // The parts per SMS the MultiSMS counters show for the table ("SMS pro Nachricht").
    int partsPerMultiSms() const;
    // txtKostenProSMS from the options, the prefix and the number.
    void updateCost();
    // The option panels from the options, then the price.
    void setOptionsBar();
    // The guard timer of a single send fired.
    void tm_Timer();
    // One tick of the balance timer.
    void tmCredits_Timer();

    bool isMultiSMSMode = false;
    bool isPhonebookOpen = false;
    bool tooltipShown = false;
    qint32 credits = -1;
    QString sessionPassword;
    // Set only while a scheduled send is being submitted.
    std::optional<GatewayRequest::Schedule> pendingCronjob;
    QString lastStartTime;
    qint16 handOffCount = 0;
    qint16 creditsTicks = 0;
    QString lastSmsText;

    // The default text of the header line.
    static QString defaultHeaderInfo();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    // Sets the window's fixed size: as wide as its rows need and at most widthLimit (the rows
    // wrap), as tall as the rows of both modes need, within the screen.
    void fitWindow(int widthLimit);
    // Back to the width the rows need, once the side window it narrowed for is gone.
    void widenAgain();
    void connectHandlers();
    void configureTransfers();
    void LoadTheme();
    void initPrefixes();
    void createMru();
    void FillListCombo();
    void restorePosition();
    void restoreSession();
    void savePosition();
    void saveSession();

    // The handlers of the recipient fields.
    void cmbVorwahl_Click();
    void txtNummer_Change();
    void txtSMS_Change();
    void cmbName_Click(int index);
    void chkPublic_Click();
    void lblReuseText_Click();
    void optionsBar_PanelClick(const QString& key);
    // The signatures: insert, add, edit, delete.
    void lvSignaturen_DblClick();
    void signatureNew();
    void signatureEdit();
    void signatureDelete();
    QStringList signatureTexts() const;
    // Starts the updater from the program's folder.
    void startUpdater();
    // The balloon over a control, or closed when the mouse is over the window itself.
    bool hoverHint(QObject* watched);

    // The send road.
    bool validateInput();
    // The stored password for this send, or the one the password prompt gives.
    void takeSessionPassword();
    // The stop list for this send or run, read now; false, told in a box, when the shared list
    // named in oem.inf can't be read, as nobody on it may get an SMS by mistake.
    bool takeStopList();
    // Whether the number in the fields is on the stop list; told in a box when it is.
    bool numberIsStopped();
    void sendSingle();
    // The start of a bulk run: balance test, question, then the run over the MultiSMS table, or
    // over only the rows of only.
    void sendBulk(const QList<int>& only = {});
    // Hands the message to the sending and returns once its last part is on its way.
    void sendMessage(const QString& number, const QString& text, const QString& name);
    // What a send from this window is made with now.
    SendingSession::Send currentSend() const;
    // A part's outcome: the gateway's answer in a box, or the note after a hand-off to the server.
    void sendingDelivered(const SendingSession::Delivery& delivery);
    void handOffDone(const SendingSession::Delivery& delivery);
    // The gateway's answer to a single message.
    void showGatewayAnswer(const QString& body);
    void iNet2_StateChanged(int state);
    // Shows or hides the update link and picture; false for an answer that is no version.
    bool applyVersionAnswer(const QString& text);
    void setMarked(QWidget* field, bool marked);
    void setHourglass(bool on);

    QWidget* header;
    QLabel* lblHeader;
    QLabel* lblHeaderInfo;
    QLabel* imgWarning;
    QLabel* imgInformation;
    QComboBox* cmbName;
    QComboBox* cmbVorwahl;
    QLineEdit* txtNummer;
    QCheckBox* chkPrivat;
    QCheckBox* chkPublic;
    SmsTextEdit* txtSMS;
    QLineEdit* txtZeichen;
    QLineEdit* txtAnzahlSMS;
    QLineEdit* txtKostenProSMS;
    QList<QWidget*> m_singleModeCounters;
    bool m_narrowed = false;
    UnsendableCharsBar* unsendableChars;
    QWidget* boxReuseLastSMS;
    QLabel* lblReuseText;
    OptionsBar* optionsBar;
    QWidget* boxVariablesToolbar;
    QWidget* boxPlatzhalter;
    QLineEdit* txtZeichenMultiSMS;
    QLineEdit* txtAnzahlProNachricht;
    QLineEdit* txtAnzahlMultiSMS;
    QWidget* boxSignaturen;
    QListWidget* lvSignaturen;
    ToolbarButton* tbAddSignature;
    ToolbarButton* tbEditSignature;
    ToolbarButton* tbDeleteSignature;
    QMenu* mnuSigPopup;
    QAction* mnuSigNew;
    QAction* mnuSigEdit;
    QAction* mnuSigDelete;
    ToolbarButton* tbSend;
    ToolbarButton* tbTerminversand;
    ToolbarButton* tbMultiSMS;
    ToolbarButton* tbPhonebook;
    ToolbarButton* tbAddressBook;
    ToolbarButton* tbSentSms;
    ToolbarButton* tbOptions;
    ToolbarButton* tbHelp;
    ToolbarButton* tbAdmin;
    QLabel* lblCredits;
    QLabel* lblBuyCredits;
    QLabel* lblUpdate;
    QLabel* picUpdate;
    QLabel* lblVersion;
    QLabel* lblCopyright;
    SendingSession* m_sending;
    // What went out, kept on the user's machine; opened at start, which also drops old entries.
    std::unique_ptr<SendRecord> m_record;
    std::unique_ptr<SendRecorder> m_recorder; // goes before the record it writes to
    std::unique_ptr<frmSentSms> m_sentSms; // goes before the record it shows
    // Tells the user once that the record can't be written; the sending goes on.
    void recordFailed();
    // The road and the price the next send is recorded with.
    void recordAs(bool bulk);
    Inet* iNet; // the sending's transfer
    Inet* iNet2;
    QTimer* tm;
    QTimer* tmCredits;

    clsMRU mru;
    CTooltip* tooltip = nullptr;
    mTrayIcon* m_tray = nullptr;
    frmMinimizeWarning* m_minimizeWarning = nullptr;
    std::unique_ptr<frmPhonebook> m_phonebook;
    bool m_unloaded = false;
    int m_lastHandedOver = 0;
    StopList m_stopList; // of the send or run in hand
};
