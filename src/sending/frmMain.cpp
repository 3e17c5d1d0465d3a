// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMain.h"

#include "Prefixes.h"
#include "Version.h"
#include "frmSplash.h"
#include "settings/ProductName.h"
#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"
#include "settings/tools.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/frmMinimizeWarning.h"
#include "toolkit/mTrayIcon.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

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
}

frmMain::~frmMain()
{
    if (theInstance() == this)
        theInstance() = nullptr;
}

frmMain* frmMain::instance()
{
    return theInstance();
}

QString frmMain::defaultHeaderInfo()
{
    return QStringLiteral("Die einfache, sichere und schnelle Methode eine SMS zu verschicken. Weltweit.");
}

void frmMain::buildControls()
{
    header = new QWidget(this);
    header->setObjectName(QStringLiteral("header"));
    lblHeader = new QLabel(QStringLiteral("SMS versenden"), header);
    lblHeader->setObjectName(QStringLiteral("lblHeader"));
    QFont headerFont = lblHeader->font();
    headerFont.setPointSizeF(headerFont.pointSizeF() * 1.6);
    headerFont.setBold(true);
    lblHeader->setFont(headerFont);
    lblHeaderInfo = new QLabel(defaultHeaderInfo(), header);
    lblHeaderInfo->setObjectName(QStringLiteral("lblHeaderInfo"));
    lblHeaderInfo->setWordWrap(true);
    imgWarning = new QLabel(header);
    imgWarning->setObjectName(QStringLiteral("imgWarning"));
    imgWarning->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(16, 16));
    imgWarning->hide();
    imgInformation = new QLabel(header);
    imgInformation->setObjectName(QStringLiteral("imgInformation"));
    imgInformation->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(16, 16));
    imgInformation->hide();
    auto* headerLayout = new QVBoxLayout(header);
    headerLayout->addWidget(lblHeader);
    auto* infoLine = new QHBoxLayout;
    infoLine->addWidget(imgWarning);
    infoLine->addWidget(imgInformation);
    infoLine->addWidget(lblHeaderInfo, 1);
    headerLayout->addLayout(infoLine);

    cmbName = new QComboBox(this);
    cmbName->setObjectName(QStringLiteral("cmbName"));
    cmbName->setEditable(true);
    cmbVorwahl = new QComboBox(this);
    cmbVorwahl->setObjectName(QStringLiteral("cmbVorwahl"));
    txtNummer = new QLineEdit(this);
    txtNummer->setObjectName(QStringLiteral("txtNummer"));
    txtNummer->setToolTip(QStringLiteral("Geben Sie die Rufnummer ohne Vorwahl ein."));
    txtSMS = new SmsTextEdit(this);
    txtSMS->setObjectName(QStringLiteral("txtSMS"));
    txtSMS->setMaxLength(1500);
    lblCredits = new QLabel(QStringLiteral("nicht angemeldet"), this);
    lblCredits->setObjectName(QStringLiteral("lblCredits"));
    lblVersion = new QLabel(this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));

    auto* lblName = new QLabel(QStringLiteral("Empfängername"), this);
    lblName->setBuddy(cmbName);
    auto* lblRufnummer = new QLabel(QStringLiteral("Rufnummer"), this);
    lblRufnummer->setBuddy(cmbVorwahl);
    auto* lblNachricht = new QLabel(QStringLiteral("Nachricht"), this);
    lblNachricht->setBuddy(txtSMS);
    auto* lblGuthaben = new QLabel(QStringLiteral("Guthaben"), this);
    lblGuthaben->setBuddy(lblCredits);
    cmbName->setAccessibleName(lblName->text());
    cmbVorwahl->setAccessibleName(QStringLiteral("Vorwahl"));
    txtNummer->setAccessibleName(lblRufnummer->text());
    txtSMS->setAccessibleName(lblNachricht->text());
    lblCredits->setAccessibleName(lblGuthaben->text());

    auto* form = new QGridLayout;
    form->addWidget(lblName, 0, 0);
    form->addWidget(cmbName, 0, 1, 1, 2);
    form->addWidget(lblRufnummer, 1, 0);
    form->addWidget(cmbVorwahl, 1, 1);
    form->addWidget(txtNummer, 1, 2);
    form->addWidget(lblNachricht, 2, 0, Qt::AlignTop);
    form->addWidget(txtSMS, 2, 1, 1, 2);
    form->setColumnStretch(2, 1);

    auto* status = new QHBoxLayout;
    status->addWidget(lblGuthaben);
    status->addWidget(lblCredits);
    status->addStretch(1);
    status->addWidget(lblVersion);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(header);
    layout->addLayout(form, 1);
    layout->addLayout(status);
    // The window has a fixed layout; it never changes its size.
    setFixedSize(sizeHint().expandedTo(QSize(720, 520)));
}

void frmMain::load(frmSplash* splash)
{
    const auto info = [splash](const QString& line) {
        if (splash)
            splash->info(line);
    };
    credits = -1;
    info(QStringLiteral("Lade ") + ProductName() + QStringLiteral(" ..."));
    restorePosition();
    lblVersion->setText(QStringLiteral("Version ") + Version::text());
    info(QStringLiteral("Lade Theme ..."));
    info(QStringLiteral("Initialisiere Vorwahlen ..."));
    initPrefixes();
    info(QStringLiteral("Lade Signaturen ..."));
    info(QStringLiteral("Suche nach Updates ..."));
    info(QStringLiteral("Überprüfe Guthaben ..."));
    isMultiSMSMode = false;
    info(QStringLiteral("MRU laden ..."));
    info(QStringLiteral("News herunterladen ..."));
    info(QStringLiteral("Optionen wiederherstellen ..."));
    info(QStringLiteral("Sitzung wiederherstellen ..."));
    restoreSession();
    info(ProductName() + QStringLiteral(" geladen"));
    m_tray = new mTrayIcon(this, [this] { SysTrayMouseEventHandler(); });
    lastStartTime.clear();
    creditsTicks = 0;
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
    bool ok = false;
    const QString xText = readSession(u"x");
    double x = tools::NumericValue(xText, &ok);
    if (!ok || x < 0)
        x = screen.width() / 2 - size.width() / 2;
    const QString yText = readSession(u"y");
    double y = tools::NumericValue(yText, &ok);
    if (!ok || y < 0)
        y = screen.height() / 2 - size.height() / 2;
    move(int(x), int(y));
}

void frmMain::restoreSession()
{
    const QString lastPrefix = readSession(u"lastPrefix");
    const QString lastNumber = readSession(u"lastNumber");
    const QString lastText = readSession(u"lastText");
    selectPrefixKey(lastPrefix);
    txtNummer->setText(lastNumber);
    txtSMS->setText(lastText);
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

void frmMain::SysTrayMouseEventHandler()
{
    if (windowState() & Qt::WindowMinimized) {
        setWindowState(windowState() & ~Qt::WindowMinimized);
        show();
        raise();
        activateWindow();
    } else if (!(windowState() & Qt::WindowMaximized)) {
        setWindowState(windowState() | Qt::WindowMinimized);
    }
}

void frmMain::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    if (windowState() & Qt::WindowMinimized) {
        // Only the tray icon remains; without a tray the window stays in the task bar.
        if (m_tray && m_tray->isVisible())
            hide();
        if (!Options().DontDisplayMinimizeWarning()) {
            if (!m_minimizeWarning)
                m_minimizeWarning = new frmMinimizeWarning(this);
            m_minimizeWarning->show();
        }
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
    if (!(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen)))
        savePosition();
    saveSession();
    if (m_minimizeWarning)
        m_minimizeWarning->close();
    event->accept();
}
