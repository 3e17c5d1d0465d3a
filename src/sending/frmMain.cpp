// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMain.h"

#include "MessageSize.h"
#include "NumberRules.h"
#include "OptionPanelRules.h"
#include "OptionsBar.h"
#include "Prefixes.h"
#include "SendRecord.h"
#include "SendRecorder.h"
#include "Version.h"
#include "account/frmHelp.h"
#include "account/frmNews.h"
#include "account/frmPhonebook.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "frmSentSms.h"
#include "frmSplash.h"
#include "settings/CUrlStore.h"
#include "settings/OemTheme.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/ProxyConfig.h"
#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"
#include "settings/frmOptionen.h"
#include "settings/frmSignaturen.h"
#include "settings/mSignaturen.h"
#include "settings/tools.h"
#include "toolkit/CTooltip.h"
#include "toolkit/FieldColors.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/OpenInBrowser.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/VbColor.h"
#include "toolkit/WindowPlacement.h"
#include "toolkit/frmMinimizeWarning.h"
#include "toolkit/mTrayIcon.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLinearGradient>
#include <QListWidget>
#include <QMenu>
#include <QProcess>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include <limits>

namespace {
frmMain*& theInstance()
{
    static frmMain* window = nullptr;
    return window;
}

QString root()
{
    return QString::fromUtf16(ToolRegistry::RootKey);
}

QString readSession(const char16_t* name)
{
    return ToolRegistry::GetRegString(root(), QString::fromUtf16(name));
}

void writeSession(const char16_t* name, const QString& value)
{
    ToolRegistry::SaveRegString(root(), QString::fromUtf16(name), value);
}

// A coordinate as the store keeps it: the decimal text of a single-precision number.
QString coordinateText(int value)
{
    return QString::number(float(value), 'g', 7);
}

} // namespace

frmMain::frmMain(QWidget* parent)
    : QWidget(parent)
{
    theInstance() = this;
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(ProductName());
    setWindowIcon(QIcon(QStringLiteral(":/pictures/logo.svg")));
    buildControls();
    connectHandlers();
}

frmMain::~frmMain()
{
    if (theInstance() == this)
        theInstance() = nullptr;
    // The side window goes with the main window, even when that was never closed.
    delete frmMultiSMS::loaded();
    delete frmMultiSMSLog::loaded();
    delete frmNews::loaded();
    delete frmHelp::loaded();
}

frmMain* frmMain::instance()
{
    return theInstance();
}

QString frmMain::defaultHeaderInfo()
{
    return QStringLiteral("Die einfache, sichere und schnelle Methode eine SMS zu verschicken. Weltweit.");
}

void frmMain::showSentSms()
{
    if (!m_sentSms) {
        m_sentSms = std::make_unique<frmSentSms>(m_record.get());
        connect(m_sentSms.get(), &frmSentSms::sendAgain, this, &frmMain::takeSentSms);
    } else {
        m_sentSms->search();
    }
    m_sentSms->show();
    m_sentSms->raise();
    m_sentSms->activateWindow();
}

void frmMain::takeSentSms(const SendRecord::Entry& entry)
{
    // Into the fields of a single SMS; nothing leaves before "Senden".
    if (m_sending->isRunning())
        return;
    if (isMultiSMSMode)
        disableMultiSMS();
    if (isMinimized() || !isVisible())
        showNormal();
    takeRecipient(entry.name, entry.number);
    txtSMS->setText(entry.text);
    focusMessage();
}

void frmMain::configureTransfers()
{
    for (Inet* transfer : { iNet, iNet2 }) {
        transfer->setAccessType(ProxyConfig::GetAccessType());
        transfer->setProxy(ProxyConfig::GetProxyString());
    }
}

void frmMain::load(frmSplash* splash)
{
    const auto info = [splash](const QString& line) {
        if (splash)
            splash->info(line);
    };
    configureTransfers();
    m_record = std::make_unique<SendRecord>();
    m_recorder = std::make_unique<SendRecorder>(m_sending, m_record.get(), SendRecord::Road::Single);
    connect(m_record.get(), &SendRecord::failed, this, &frmMain::recordFailed);
    if (m_record->takeFailure())
        recordFailed();
    credits = -1;
    info(QStringLiteral("Lade ") + ProductName() + QStringLiteral(" ..."));
    restorePosition();
    lblVersion->setText(QStringLiteral("Version ") + Version::text());
    info(QStringLiteral("Lade Theme ..."));
    LoadTheme();
    info(QStringLiteral("Initialisiere Vorwahlen ..."));
    initPrefixes();
    info(QStringLiteral("Lade Signaturen ..."));
    for (const QString& text : mSignaturen::LoadSignaturen())
        lvSignaturen->addItem(new QListWidgetItem(QIcon(QStringLiteral(":/pictures/stift.svg")), text));
    info(QStringLiteral("Suche nach Updates ..."));
    checkForUpdate();
    info(QStringLiteral("Überprüfe Guthaben ..."));
    refreshCredits();
    isMultiSMSMode = false;
    info(QStringLiteral("MRU laden ..."));
    createMru();
    tooltip = new CTooltip(this);
    tooltip->setStyle(1);
    tooltip->setIcon(1);
    info(QStringLiteral("News herunterladen ..."));
    frmNews::load()->checkForInfo();
    info(QStringLiteral("Optionen wiederherstellen ..."));
    setOptionsBar();
    info(QStringLiteral("Sitzung wiederherstellen ..."));
    restoreSession();
    info(ProductName() + QStringLiteral(" geladen"));
    m_tray = new mTrayIcon(this, ProductName(), [this] { SysTrayMouseEventHandler(); });
    m_tray->addMenuEntry(QStringLiteral("Gesendete SMS"), [this] { showSentSms(); });
    lastStartTime.clear();
    creditsTicks = 0;
    tmCredits->start();
    show();
}

void frmMain::initPrefixes()
{
    cmbVorwahl->clear();
    for (const PrefixEntry& entry : Prefixes::table()) {
        cmbVorwahl->addItem(QIcon(QStringLiteral(":/pictures/") + entry.picture + QStringLiteral(".svg")), entry.text,
                            entry.key);
    }
    cmbVorwahl->setCurrentIndex(-1);
}

void frmMain::createMru()
{
    mru = clsMRU();
    mru.setMax(10);
    mru.ReadSettings();
    FillListCombo();
}

void frmMain::FillListCombo()
{
    const QString typed = cmbName->currentText();
    cmbName->clear();
    for (const clsMRU::ComboItem& item : mru.comboItems())
        cmbName->addItem(QIcon(QStringLiteral(":/pictures/user.svg")), item.name, item.tag);
    cmbName->setCurrentIndex(-1);
    cmbName->setEditText(typed);
}

QString frmMain::selectedPrefixKey() const
{
    return cmbVorwahl->currentIndex() < 0 ? QString() : cmbVorwahl->currentData().toString();
}

bool frmMain::selectPrefixKey(const QString& key)
{
    const int index = cmbVorwahl->findData(key);
    if (index < 0)
        return false;
    cmbVorwahl->setCurrentIndex(index);
    return true;
}

void frmMain::restorePosition()
{
    const QRect screen = (this->screen() ? this->screen() : QGuiApplication::primaryScreen())->geometry();
    const QSize size = frameGeometry().size().isValid() ? frameGeometry().size() : this->size();
    // A stored number beyond what a position (an int) holds is no position either.
    constexpr double beyond = std::numeric_limits<int>::max();
    bool ok = false;
    double x = tools::NumericValue(readSession(u"x"), &ok);
    if (!ok || x < 0 || x > beyond)
        x = screen.width() / 2 - size.width() / 2;
    double y = tools::NumericValue(readSession(u"y"), &ok);
    if (!ok || y < 0 || y > beyond)
        y = screen.height() / 2 - size.height() / 2;
    // A place stored on a screen that is gone, or larger than this one, would leave the window
    // out of reach; where its title bar lies on no present screen it comes onto the nearest.
    QList<QRect> screens;
    for (const QScreen* present : QGuiApplication::screens()) {
        if (present == QGuiApplication::primaryScreen())
            screens.prepend(present->availableGeometry());
        else
            screens.append(present->availableGeometry());
    }
    // The title bar is only known once the window shows; until then the style's height stands for it.
    const int titleBar = geometry().top() > frameGeometry().top() ? geometry().top() - frameGeometry().top()
                                                                  : style()->pixelMetric(QStyle::PM_TitleBarHeight);
    move(WindowPlacement::ontoScreens(QRect(QPoint(int(x), int(y)), size), titleBar, screens).topLeft());
}

void frmMain::restoreSession()
{
    const QString lastPrefix = readSession(u"lastPrefix");
    const QString lastNumber = readSession(u"lastNumber");
    const QString lastText = readSession(u"lastText");
    selectPrefixKey(lastPrefix);
    txtNummer->setText(lastNumber);
    // An empty number is still checked, so the field comes up marked.
    if (lastNumber.isEmpty())
        txtNummer_Change();
    txtSMS->setText(lastText);
    if (lastText.isEmpty())
        txtSMS_Change();
}

void frmMain::savePosition()
{
    writeSession(u"x", coordinateText(x()));
    writeSession(u"y", coordinateText(y()));
}

void frmMain::saveSession()
{
    writeSession(u"lastPrefix", selectedPrefixKey());
    writeSession(u"lastNumber", txtNummer->text());
    writeSession(u"lastText", txtSMS->text());
}

void frmMain::showWarning(const QString& text)
{
    hideInformation();
    lblHeaderInfo->setText(text);
    imgWarning->show();
}

void frmMain::clearWarning()
{
    imgWarning->hide();
    lblHeaderInfo->setText(defaultHeaderInfo());
}

void frmMain::showInformation(const QString& text)
{
    lblHeaderInfo->setText(text);
    imgInformation->show();
}

void frmMain::hideInformation()
{
    imgInformation->hide();
}

void frmMain::setMarked(QWidget* field, bool marked)
{
    FieldColors::setMarked(field, marked);
}

void frmMain::cmbVorwahl_Click()
{
    setMarked(cmbVorwahl, false);
    txtNummer->setFocus();
    const QString key = selectedPrefixKey();
    if (key.isEmpty())
        return;
    if (key == u"W") {
        const QString text = QStringLiteral("Bitte geben sie die Rufnummer inklusive der internationalen Vorwahl ein.");
        showInformation(text);
        txtNummer->setToolTip(text);
    } else {
        hideInformation();
        txtNummer->setToolTip(QStringLiteral("Geben Sie die Rufnummer ohne Vorwahl ein."));
    }
    updateCost();
}

void frmMain::txtNummer_Change()
{
    if (!NumberRules::keepsFocus(txtNummer->text()))
        txtNummer->setAccessibleDescription(QString());
    clearWarning();
    setMarked(txtNummer, false);
    const NumberRules::NumberCheck check = NumberRules::checkNumber(selectedPrefixKey(), txtNummer->text());
    if (check.marked)
        setMarked(txtNummer, true);
    if (!check.warningText.isEmpty())
        showWarning(check.warningText);
    updateCost();
}

void frmMain::txtSMS_Change()
{
    boxReuseLastSMS->hide();
    recalcSmsSize();
}

void frmMain::cmbName_Click(int index)
{
    if (index < 0)
        return;
    const NumberRules::UsedNumber used = NumberRules::splitUsedNumberTag(cmbName->itemData(index).toString());
    selectPrefixKey(used.key);
    txtNummer->setText(used.number);
}

void frmMain::chkPublic_Click()
{
    // A number goes into one phonebook at most: a public tick greys the private one.
    if (chkPublic->isChecked()) {
        chkPrivat->setTristate(true);
        chkPrivat->setCheckState(Qt::PartiallyChecked);
        chkPrivat->setEnabled(false);
    } else {
        chkPrivat->setCheckState(Qt::Checked);
        chkPrivat->setTristate(false);
        chkPrivat->setEnabled(true);
    }
}

void frmMain::lblReuseText_Click()
{
    txtSMS->setText(lastSmsText);
    boxReuseLastSMS->hide();
}

void frmMain::setOptionsBar()
{
    optionsBar->setPanelOn(QStringLiteral("absender"), Options().isAbsenderkennung());
    optionsBar->setPanelOn(QStringLiteral("antwort"), Options().isAntwortEnabled());
    optionsBar->setPanelOn(QStringLiteral("einlieferung"), Options().isControlEmail());
    updateCost();
}

void frmMain::optionsBar_PanelClick(const QString& key)
{
    const OptionPanelRules::PanelOptions current { Options().isAbsenderkennung(), Options().isAntwortEnabled(),
                                                   Options().isControlEmail() };
    const OptionPanelRules::PanelClick click = OptionPanelRules::clickPanel(key, current, Options().Absenderkennung());
    Options().setIsAbsenderkennung(click.options.isAbsenderkennung);
    Options().setIsAntwortEnabled(click.options.isAntwortEnabled);
    Options().setIsControlEmail(click.options.isControlEmail);
    setOptionsBar();
    if (click.warnNoSender) {
        MessageBox::show(this, QStringLiteral("Sie haben keine Absenderkennung eingegeben."), MessageBox::Buttons::Ok,
                         MessageBox::Icon::Warning, ProductName());
        frmOptionen::showOptionen(this);
    }
    Options().save();
    updateCost();
    recalcSmsSize();
}

QStringList frmMain::signatureTexts() const
{
    QStringList texts;
    for (int i = 0; i < lvSignaturen->count(); ++i)
        texts.append(lvSignaturen->item(i)->text());
    return texts;
}

void frmMain::lvSignaturen_DblClick()
{
    if (QListWidgetItem* item = lvSignaturen->currentItem())
        txtSMS->replaceSelection(item->text());
}

void frmMain::signatureNew()
{
    QString text;
    if (!frmSignaturen::showNew(this, &text))
        return;
    lvSignaturen->addItem(new QListWidgetItem(QIcon(QStringLiteral(":/pictures/stift.svg")), text));
    mSignaturen::SaveSignaturen(signatureTexts());
}

void frmMain::signatureEdit()
{
    QListWidgetItem* item = lvSignaturen->currentItem();
    QString text;
    if (!item || !item->isSelected() || !frmSignaturen::showEdit(this, item->text(), &text))
        return;
    item->setText(text);
    mSignaturen::SaveSignaturen(signatureTexts());
}

void frmMain::signatureDelete()
{
    QListWidgetItem* item = lvSignaturen->currentItem();
    if (!item || !item->isSelected())
        return;
    // Removed at once, without a question.
    delete lvSignaturen->takeItem(lvSignaturen->row(item));
    mSignaturen::SaveSignaturen(signatureTexts());
}

MessageSize::PlaceholderSizes frmMain::placeholderSizes() const
{
    frmMultiSMS* table = frmMultiSMS::loaded();
    if (!table)
        return {};
    return { table->getMaxNameSize(), table->getMaxFrei1Size(), table->getMaxFrei2Size(),
             int(table->table().rowCount()) };
}

void frmMain::recalcSmsSize()
{
    setMarked(txtSMS, false);
    const MessageSize::PlaceholderSizes placeholders = placeholderSizes();
    const MessageSize::SmsSizeFigures figures = MessageSize::recalcSmsSize(
        txtSMS->text(), isMultiSMSMode, MessageSize::smsOptionsOf(Options()), placeholders);
    if (figures.overLimit) {
        setMarked(txtSMS, true);
        showWarning(figures.warningText);
    } else {
        clearWarning();
    }
    tbSend->setEnabled(figures.sendEnabled);
    if (isMultiSMSMode) {
        txtZeichenMultiSMS->setText(QString::number(figures.txtZeichenMultiSMS));
        txtAnzahlProNachricht->setText(QString::number(figures.txtAnzahlProNachricht));
        txtAnzahlMultiSMS->setText(QString::number(figures.txtAnzahlMultiSMS));
        if (frmMultiSMS* table = frmMultiSMS::loaded())
            table->refreshPreview();
        return;
    }
    txtZeichen->setText(QString::number(figures.txtZeichen));
    txtAnzahlSMS->setText(QString::number(figures.txtAnzahlSMS));
}

ListCheck::Context frmMain::listCheckContext() const
{
    ListCheck::Context context;
    context.txtSMS = txtSMS->text();
    context.options = MessageSize::smsOptionsOf(Options());
    // A bulk run is priced without the single send's prefix.
    context.pricePerSms = MessageSize::updateCost(context.options, QString(), QString());
    return context;
}

int frmMain::partsPerMultiSms() const
{
    return MessageSize::recalcSmsSize(txtSMS->text(), true, MessageSize::smsOptionsOf(Options()), placeholderSizes())
        .txtAnzahlProNachricht;
}

void frmMain::updateCost()
{
    txtKostenProSMS->setText(QString::number(
        MessageSize::updateCost(MessageSize::smsOptionsOf(Options()), selectedPrefixKey(), txtNummer->text())));
}

void frmMain::startUpdater()
{
    // The updater runs on its own; the program goes on, also when it can't be started.
    const QString updater = ProgramFolder::path() + u'/' + Urls().UpdaterName();
    if (!QProcess::startDetached(updater, {}, ProgramFolder::path()))
        MessageBox::show(this, QStringLiteral("Das Update-Programm %1 konnte nicht gestartet werden.").arg(updater),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
}

bool frmMain::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == picUpdate && event->type() == QEvent::MouseButtonRelease) {
        startUpdater();
        return true;
    }
    if (event->type() == QEvent::MouseMove && hoverHint(watched))
        return true;
    if (watched == txtNummer && event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        // Leaving the field with a number that isn't one brings the focus back; a change of
        // window or an opened list doesn't count as leaving.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason
            && NumberRules::keepsFocus(txtNummer->text()) && !isMultiSMSMode) {
            // A screen reader says why when the field has the focus again.
            txtNummer->setAccessibleDescription(txtNummer->text().isEmpty()
                                                    ? QStringLiteral("Bitte geben Sie eine Rufnummer ein.")
                                                    : QStringLiteral("Die Rufnummer darf nur aus Ziffern bestehen."));
            QTimer::singleShot(0, txtNummer, [this] { txtNummer->setFocus(Qt::OtherFocusReason); });
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmMain::SysTrayMouseEventHandler()
{
    if (windowState() & Qt::WindowMinimized) {
        // Back in the normal state, whatever it was before it went to the tray.
        setWindowState(Qt::WindowNoState);
        show();
        raise();
        activateWindow();
    } else if (!(windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen))) {
        setWindowState(Qt::WindowMinimized);
    }
}

void frmMain::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    if (windowState() & Qt::WindowMinimized) {
        // Only the tray icon remains, and the hint says where the window went; without a tray the
        // window stays in the task bar and there is nothing to hint at.
        if (m_tray && m_tray->isVisible()) {
            hide();
            if (!Options().DontDisplayMinimizeWarning()) {
                if (!m_minimizeWarning)
                    m_minimizeWarning = new frmMinimizeWarning(this);
                m_minimizeWarning->show();
            }
        }
        if (isMultiSMSMode && frmMultiSMS::loaded())
            frmMultiSMS::loaded()->hide();
        if (isPhonebookOpen && m_phonebook)
            m_phonebook->hide();
    } else if (windowState() == Qt::WindowNoState) {
        if (isMultiSMSMode)
            frmMultiSMS::instance()->show();
        if (isPhonebookOpen && m_phonebook)
            m_phonebook->show();
    }
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (m_unloaded) {
        event->accept();
        return;
    }
    m_unloaded = true;
    Pause::pumpAndSleep(200);
    QCoreApplication::processEvents();
    delete m_tray;
    m_tray = nullptr;
    tm->stop();
    tmCredits->stop();
    if (!(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen)))
        savePosition();
    saveSession();
    if (frmMultiSMS* side = frmMultiSMS::loaded())
        side->close();
    disposePhonebook();
    if (frmNews* news = frmNews::loaded())
        news->close();
    if (m_minimizeWarning)
        m_minimizeWarning->close();
    event->accept();
}
