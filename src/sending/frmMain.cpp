// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMain.h"

#include "MessageSize.h"
#include "NumberRules.h"
#include "OptionPanelRules.h"
#include "OptionsBar.h"
#include "Prefixes.h"
#include "Version.h"
#include "frmSplash.h"
#include "settings/CUrlStore.h"
#include "settings/OemTheme.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/ProxyConfig.h"
#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"
#include "settings/frmSignaturen.h"
#include "settings/mSignaturen.h"
#include "settings/tools.h"
#include "toolkit/CTooltip.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/OpenInBrowser.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/VbColor.h"
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

QLineEdit* counterField(const QString& name, const QString& caption, QWidget* parent)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    field->setAlignment(Qt::AlignRight);
    field->setFocusPolicy(Qt::TabFocus);
    field->setAccessibleName(caption);
    field->setMaximumWidth(64);
    return field;
}

ToolbarButton* toolButton(const QString& name, const QString& caption, const QString& tip, const QString& picture,
                          QWidget* parent)
{
    auto* button = new ToolbarButton(parent);
    button->setObjectName(name);
    button->setCaption(caption);
    button->setToolTip(tip);
    button->setPicture(QIcon(QStringLiteral(":/pictures/") + picture + QStringLiteral(".svg")));
    button->setAccessibleName(caption.trimmed().isEmpty() ? tip : caption.trimmed());
    return button;
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
    // The designed band: a blue strip with white texts; a branding picture replaces it.
    {
        QPalette band = header->palette();
        QLinearGradient gradient(0, 0, 0, 72);
        gradient.setColorAt(0, QColor(0x2b, 0x6c, 0xb0));
        gradient.setColorAt(1, QColor(0x1b, 0x4f, 0x86));
        band.setBrush(QPalette::Window, gradient);
        band.setColor(QPalette::WindowText, Qt::white);
        header->setPalette(band);
        header->setAutoFillBackground(true);
    }
    auto* headerLayout = new QVBoxLayout(header);
    headerLayout->setContentsMargins(16, 10, 16, 10);
    headerLayout->addWidget(lblHeader);
    auto* infoLine = new QHBoxLayout;
    infoLine->addWidget(imgWarning);
    infoLine->addWidget(imgInformation);
    infoLine->addWidget(lblHeaderInfo, 1);
    headerLayout->addLayout(infoLine);

    cmbName = new QComboBox(this);
    cmbName->setObjectName(QStringLiteral("cmbName"));
    cmbName->setEditable(true);
    cmbName->setInsertPolicy(QComboBox::NoInsert);
    cmbVorwahl = new QComboBox(this);
    cmbVorwahl->setObjectName(QStringLiteral("cmbVorwahl"));
    cmbVorwahl->setMinimumWidth(120);
    txtNummer = new QLineEdit(this);
    txtNummer->setObjectName(QStringLiteral("txtNummer"));
    txtNummer->setToolTip(QStringLiteral("Geben Sie die Rufnummer ohne Vorwahl ein."));
    chkPrivat = new QCheckBox(QStringLiteral("privat"), this);
    chkPrivat->setObjectName(QStringLiteral("chkPrivat"));
    chkPrivat->setChecked(true);
    chkPublic = new QCheckBox(QStringLiteral("öffentlich"), this);
    chkPublic->setObjectName(QStringLiteral("chkPublic"));
    txtSMS = new SmsTextEdit(this);
    txtSMS->setObjectName(QStringLiteral("txtSMS"));
    txtSMS->setMaxLength(MessageSize::SizeLimit);
    // These keys are refused when typed; the size count knows the double quote for pasted text.
    txtSMS->setDroppedKeys(QStringLiteral("'\"`´\\"));
    txtZeichen = counterField(QStringLiteral("txtZeichen"), QStringLiteral("Zeichen"), this);
    txtAnzahlSMS = counterField(QStringLiteral("txtAnzahlSMS"), QStringLiteral("Anzahl SMS"), this);
    txtKostenProSMS = counterField(QStringLiteral("txtKostenProSMS"), QStringLiteral("Credits pro SMS"), this);

    boxReuseLastSMS = new QWidget(this);
    boxReuseLastSMS->setObjectName(QStringLiteral("boxReuseLastSMS"));
    lblReuseText
        = new QLabel(QStringLiteral("<a href=\"reuse\">Klicken Sie hier um den Text der letzten SMS nochmals zu "
                                    "verwenden</a>"),
                     boxReuseLastSMS);
    lblReuseText->setObjectName(QStringLiteral("lblReuseText"));
    lblReuseText->setAccessibleName(
        QStringLiteral("Klicken Sie hier um den Text der letzten SMS nochmals zu verwenden"));
    lblReuseText->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    auto* reuseLayout = new QHBoxLayout(boxReuseLastSMS);
    reuseLayout->setContentsMargins(0, 0, 0, 0);
    reuseLayout->addWidget(lblReuseText);
    boxReuseLastSMS->hide();
    optionsBar = new OptionsBar(this);

    // The placeholders of a MultiSMS run; the bar shows in that mode only.
    boxVariablesToolbar = new QWidget(this);
    boxVariablesToolbar->setObjectName(QStringLiteral("boxVariablesToolbar"));
    auto* variables = new QHBoxLayout(boxVariablesToolbar);
    variables->setContentsMargins(0, 0, 0, 0);
    variables->addWidget(new QLabel(QStringLiteral("Platzhalter"), boxVariablesToolbar));
    for (const auto& [name, placeholder] :
         { std::pair { QStringLiteral("tbReplaceName"), QStringLiteral("%name%") },
           std::pair { QStringLiteral("tbReplaceFrei1"), QStringLiteral("%frei1%") },
           std::pair { QStringLiteral("tbReplaceFrei2"), QStringLiteral("%frei2%") } }) {
        ToolbarButton* button = toolButton(name, placeholder, QString(), QStringLiteral("add"), boxVariablesToolbar);
        const QString inserted = placeholder + u' ';
        connect(button, &QAbstractButton::clicked, this, [this, inserted] { txtSMS->replaceSelection(inserted); });
        variables->addWidget(button);
    }
    variables->addStretch(1);
    boxVariablesToolbar->hide();

    // The counters of a MultiSMS run, with the longest placeholder values.
    boxPlatzhalter = new QWidget(this);
    boxPlatzhalter->setObjectName(QStringLiteral("boxPlatzhalter"));
    txtZeichenMultiSMS = counterField(QStringLiteral("txtZeichenMultiSMS"), QStringLiteral("Zeichen"), boxPlatzhalter);
    txtAnzahlProNachricht
        = counterField(QStringLiteral("txtAnzahlProNachricht"), QStringLiteral("SMS pro Nachricht"), boxPlatzhalter);
    txtAnzahlMultiSMS = counterField(QStringLiteral("txtAnzahlMultiSMS"), QStringLiteral("Anzahl SMS"), boxPlatzhalter);
    auto* multiCounters = new QHBoxLayout(boxPlatzhalter);
    multiCounters->setContentsMargins(0, 0, 0, 0);
    for (QLineEdit* field : { txtZeichenMultiSMS, txtAnzahlProNachricht, txtAnzahlMultiSMS }) {
        auto* label = new QLabel(field->accessibleName(), boxPlatzhalter);
        label->setBuddy(field);
        multiCounters->addWidget(label);
        multiCounters->addWidget(field);
        multiCounters->addSpacing(8);
    }
    multiCounters->addStretch(1);
    boxPlatzhalter->hide();

    boxSignaturen = new QWidget(this);
    boxSignaturen->setObjectName(QStringLiteral("boxSignaturen"));
    auto* lblSignaturen = new QLabel(QStringLiteral("Signaturen"), boxSignaturen);
    lvSignaturen = new QListWidget(boxSignaturen);
    lvSignaturen->setObjectName(QStringLiteral("lvSignaturen"));
    lvSignaturen->setAccessibleName(QStringLiteral("Signaturen"));
    lvSignaturen->setContextMenuPolicy(Qt::CustomContextMenu);
    lblSignaturen->setBuddy(lvSignaturen);
    tbAddSignature = toolButton(QStringLiteral("tbAddSignature"), QString(), QStringLiteral("Neue Signatur"),
                                QStringLiteral("add"), boxSignaturen);
    tbEditSignature = toolButton(QStringLiteral("tbEditSignature"), QString(), QStringLiteral("Signatur bearbeiten"),
                                 QStringLiteral("edit"), boxSignaturen);
    tbDeleteSignature = toolButton(QStringLiteral("tbDeleteSignature"), QString(), QStringLiteral("Signatur löschen"),
                                   QStringLiteral("delete"), boxSignaturen);
    mnuSigPopup = new QMenu(this);
    mnuSigPopup->setObjectName(QStringLiteral("mnuSigPopup"));
    mnuSigNew = mnuSigPopup->addAction(QStringLiteral("Neue Signatur"));
    mnuSigNew->setObjectName(QStringLiteral("mnuSigNew"));
    mnuSigEdit = mnuSigPopup->addAction(QStringLiteral("Signatur bearbeiten"));
    mnuSigEdit->setObjectName(QStringLiteral("mnuSigEdit"));
    mnuSigDelete = mnuSigPopup->addAction(QStringLiteral("Signatur löschen"));
    mnuSigDelete->setObjectName(QStringLiteral("mnuSigDelete"));
    auto* sigButtons = new QHBoxLayout;
    sigButtons->addWidget(lblSignaturen, 1);
    for (ToolbarButton* b : { tbAddSignature, tbEditSignature, tbDeleteSignature })
        sigButtons->addWidget(b);
    auto* sigLayout = new QVBoxLayout(boxSignaturen);
    sigLayout->setContentsMargins(0, 0, 0, 0);
    sigLayout->addLayout(sigButtons);
    sigLayout->addWidget(lvSignaturen, 1);
    boxSignaturen->setFixedWidth(190);

    tbSend = toolButton(QStringLiteral("tbSend"), QStringLiteral("Senden"), QStringLiteral("Versendet die SMS"),
                        QStringLiteral("send"), this);
    tbTerminversand = toolButton(QStringLiteral("tbTerminversand"), QStringLiteral("Terminversand"), QString(),
                                 QStringLiteral("terminversand"), this);
    tbMultiSMS = toolButton(QStringLiteral("tbMultiSMS"), QStringLiteral(" MultiSMS"),
                            QStringLiteral("Öffnet die MultiSMS Funktion"), QStringLiteral("multisms"), this);
    tbPhonebook = toolButton(QStringLiteral("tbPhonebook"), QStringLiteral("Telefonbuch"),
                             QStringLiteral("Öffnet das Telefonbuch"), QStringLiteral("phonebook"), this);
    tbOptions = toolButton(QStringLiteral("tbOptions"), QStringLiteral("Einstellungen"), QString(),
                           QStringLiteral("options"), this);
    tbHelp = toolButton(QStringLiteral("tbHelp"), QStringLiteral("Hilfe"), QString(), QStringLiteral("help"), this);
    tbAdmin = toolButton(QStringLiteral("tbAdmin"), QStringLiteral("Webseite"),
                         QStringLiteral("Öffnet die Quellbote Webseite"), QStringLiteral("admin"), this);

    lblCredits = new QLabel(QStringLiteral("nicht angemeldet"), this);
    lblCredits->setObjectName(QStringLiteral("lblCredits"));
    lblBuyCredits
        = new QLabel(QStringLiteral("<a href=\"buy\">Klicken Sie hier um neue Credits zu bestellen.</a>"), this);
    lblBuyCredits->setObjectName(QStringLiteral("lblBuyCredits"));
    lblBuyCredits->setAccessibleName(QStringLiteral("Klicken Sie hier um neue Credits zu bestellen."));
    lblBuyCredits->hide();
    lblUpdate = new QLabel(
        QStringLiteral("<a href=\"update\">Es gibt eine neue Version. Zum Update bitte hier klicken.</a>"), this);
    lblUpdate->setObjectName(QStringLiteral("lblUpdate"));
    lblUpdate->setAccessibleName(QStringLiteral("Es gibt eine neue Version. Zum Update bitte hier klicken."));
    lblUpdate->hide();
    picUpdate = new QLabel(this);
    picUpdate->setObjectName(QStringLiteral("picUpdate"));
    picUpdate->setPixmap(QIcon(QStringLiteral(":/pictures/update.svg")).pixmap(16, 16));
    picUpdate->setAccessibleName(lblUpdate->accessibleName());
    picUpdate->hide();
    lblVersion = new QLabel(this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblCopyright = new QLabel(QStringLiteral("© ") + OemTheme::builtInCopyright(), this);
    lblCopyright->setObjectName(QStringLiteral("lblCopyright"));

    iNet = new Inet(this);
    iNet->setObjectName(QStringLiteral("iNet"));
    iNet2 = new Inet(this);
    iNet2->setObjectName(QStringLiteral("iNet2"));
    tm = new QTimer(this);
    tm->setObjectName(QStringLiteral("tm"));
    tm->setInterval(60000);
    tmCredits = new QTimer(this);
    tmCredits->setObjectName(QStringLiteral("tmCredits"));
    tmCredits->setInterval(60000);

    auto* lblName = new QLabel(QStringLiteral("Empfängername"), this);
    lblName->setBuddy(cmbName);
    auto* lblRufnummer = new QLabel(QStringLiteral("Rufnummer"), this);
    lblRufnummer->setBuddy(cmbVorwahl);
    auto* lblPhonebook = new QLabel(QStringLiteral("Nummer im Telefonbuch speichern als"), this);
    auto* lblNachricht = new QLabel(QStringLiteral("Nachricht"), this);
    lblNachricht->setBuddy(txtSMS);
    auto* lblGuthaben = new QLabel(QStringLiteral("Guthaben"), this);
    lblGuthaben->setBuddy(lblCredits);
    cmbName->setAccessibleName(lblName->text());
    cmbVorwahl->setAccessibleName(QStringLiteral("Vorwahl"));
    txtNummer->setAccessibleName(lblRufnummer->text());
    chkPrivat->setAccessibleName(QStringLiteral("privat"));
    chkPublic->setAccessibleName(QStringLiteral("öffentlich"));
    txtSMS->setAccessibleName(lblNachricht->text());
    lblCredits->setAccessibleName(lblGuthaben->text());

    auto* form = new QGridLayout;
    form->addWidget(lblName, 0, 0);
    form->addWidget(cmbName, 0, 1, 1, 2);
    form->addWidget(lblRufnummer, 1, 0);
    form->addWidget(cmbVorwahl, 1, 1);
    form->addWidget(txtNummer, 1, 2);
    auto* bookLine = new QHBoxLayout;
    bookLine->addWidget(lblPhonebook);
    bookLine->addWidget(chkPrivat);
    bookLine->addWidget(chkPublic);
    bookLine->addStretch(1);
    form->addLayout(bookLine, 2, 1, 1, 2);
    form->addWidget(lblNachricht, 3, 0, Qt::AlignTop);
    form->addWidget(txtSMS, 3, 1, 1, 2);
    auto* counters = new QHBoxLayout;
    for (const auto& [caption, field] : { std::pair { QStringLiteral("Zeichen"), txtZeichen },
                                          std::pair { QStringLiteral("Anzahl SMS"), txtAnzahlSMS },
                                          std::pair { QStringLiteral("Credits pro SMS"), txtKostenProSMS } }) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        counters->addWidget(label);
        counters->addWidget(field);
        counters->addSpacing(8);
    }
    counters->addStretch(1);
    form->addLayout(counters, 4, 1, 1, 2);
    form->addWidget(optionsBar, 5, 1, 1, 2);
    form->addWidget(boxReuseLastSMS, 6, 1, 1, 2);
    form->setColumnStretch(2, 1);
    form->setRowStretch(3, 1);

    auto* buttons = new QVBoxLayout;
    for (ToolbarButton* b : { tbSend, tbTerminversand, tbMultiSMS, tbPhonebook, tbOptions, tbHelp, tbAdmin })
        buttons->addWidget(b);
    buttons->addSpacing(8);
    buttons->addWidget(boxSignaturen, 1);

    auto* body = new QHBoxLayout;
    body->addLayout(form, 1);
    body->addSpacing(10);
    body->addLayout(buttons);

    auto* status = new QHBoxLayout;
    status->addWidget(lblGuthaben);
    status->addWidget(lblCredits);
    status->addWidget(lblBuyCredits);
    status->addStretch(1);
    status->addWidget(picUpdate);
    status->addWidget(lblUpdate);
    auto* footer = new QHBoxLayout;
    footer->addWidget(lblCopyright);
    footer->addStretch(1);
    footer->addWidget(lblVersion);
    for (QLabel* small : { lblCopyright, lblVersion }) {
        QFont f = small->font();
        f.setPointSizeF(f.pointSizeF() * 0.9);
        small->setFont(f);
        small->setForegroundRole(QPalette::PlaceholderText);
    }

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 8);
    layout->addWidget(header);
    auto* content = new QVBoxLayout;
    content->setContentsMargins(10, 0, 10, 0);
    layout->addLayout(content, 1);
    content->addLayout(body, 1);
    form->addWidget(boxVariablesToolbar, 7, 1, 1, 2);
    form->addWidget(boxPlatzhalter, 8, 1, 1, 2);
    boxPlatzhalter->setMouseTracking(true);
    boxPlatzhalter->installEventFilter(this);
    content->addLayout(status);
    content->addLayout(footer);
    // The window has a fixed layout; it never changes its size.
    setFixedSize(sizeHint().expandedTo(QSize(760, 540)));
}

void frmMain::connectHandlers()
{
    connect(cmbVorwahl, &QComboBox::activated, this, &frmMain::cmbVorwahl_Click);
    connect(txtNummer, &QLineEdit::textChanged, this, &frmMain::txtNummer_Change);
    txtNummer->installEventFilter(this);
    setMouseTracking(true);
    installEventFilter(this);
    for (QWidget* w :
         { static_cast<QWidget*>(lblUpdate), static_cast<QWidget*>(picUpdate), static_cast<QWidget*>(lblCredits),
           lvSignaturen->viewport(), static_cast<QWidget*>(chkPrivat), static_cast<QWidget*>(chkPublic) }) {
        w->setMouseTracking(true);
        w->installEventFilter(this);
    }
    connect(txtSMS, &QPlainTextEdit::textChanged, this, &frmMain::txtSMS_Change);
    connect(cmbName, &QComboBox::activated, this, &frmMain::cmbName_Click);
    connect(chkPublic, &QCheckBox::clicked, this, &frmMain::chkPublic_Click);
    connect(lblReuseText, &QLabel::linkActivated, this, &frmMain::lblReuseText_Click);
    connect(tbSend, &QAbstractButton::clicked, this, &frmMain::tbSend_Click);
    connect(optionsBar, &OptionsBar::panelClicked, this, &frmMain::optionsBar_PanelClick);
    connect(lvSignaturen, &QListWidget::itemDoubleClicked, this, &frmMain::lvSignaturen_DblClick);
    connect(lvSignaturen, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        const bool selected = lvSignaturen->currentItem() && lvSignaturen->currentItem()->isSelected();
        mnuSigEdit->setEnabled(selected);
        mnuSigDelete->setEnabled(selected);
        mnuSigPopup->popup(lvSignaturen->viewport()->mapToGlobal(at));
    });
    connect(mnuSigNew, &QAction::triggered, this, &frmMain::signatureNew);
    connect(tbAddSignature, &QAbstractButton::clicked, this, &frmMain::signatureNew);
    connect(mnuSigEdit, &QAction::triggered, this, &frmMain::signatureEdit);
    connect(tbEditSignature, &QAbstractButton::clicked, this, &frmMain::signatureEdit);
    connect(mnuSigDelete, &QAction::triggered, this, &frmMain::signatureDelete);
    connect(tbDeleteSignature, &QAbstractButton::clicked, this, &frmMain::signatureDelete);
    connect(tbAdmin, &QAbstractButton::clicked, this, [this] { tools::OpenInBrowser(Urls().Homepage(), this); });
    connect(lblUpdate, &QLabel::linkActivated, this, &frmMain::startUpdater);
    picUpdate->installEventFilter(this);
    connect(iNet, &Inet::StateChanged, this, &frmMain::iNet_StateChanged);
    connect(iNet2, &Inet::StateChanged, this, [this](int state) {
        if (state == Inet::icError)
            lblUpdate->hide();
    });
    connect(tm, &QTimer::timeout, this, &frmMain::tm_Timer);
    connect(tmCredits, &QTimer::timeout, this, &frmMain::tmCredits_Timer);
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
    info(QStringLiteral("Optionen wiederherstellen ..."));
    setOptionsBar();
    info(QStringLiteral("Sitzung wiederherstellen ..."));
    restoreSession();
    info(ProductName() + QStringLiteral(" geladen"));
    m_tray = new mTrayIcon(this, [this] { SysTrayMouseEventHandler(); });
    lastStartTime.clear();
    creditsTicks = 0;
    tmCredits->start();
    show();
}

void frmMain::LoadTheme()
{
    const OemTheme theme = OemTheme::read();
    if (!theme.fileExists)
        return;
    if (!theme.headerPicture.isEmpty()) {
        // A picture that can't be loaded keeps the designed header.
        const QPixmap picture(ProgramFolder::path() + u'/' + theme.headerPicture);
        if (!picture.isNull()) {
            QPalette palette = header->palette();
            palette.setBrush(QPalette::Window, picture);
            header->setPalette(palette);
            header->setAutoFillBackground(true);
        }
    }
    const auto textColor = [](QLabel* label, const std::optional<qint64>& value) {
        if (!value)
            return;
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, VbColor::toQColor(*value));
        label->setPalette(palette);
    };
    textColor(lblHeader, theme.headerColor);
    textColor(lblHeaderInfo, theme.headerInfoColor);
    if (theme.backgroundColor) {
        const QColor background = VbColor::toQColor(*theme.backgroundColor);
        QPalette palette = this->palette();
        palette.setColor(QPalette::Window, background);
        setPalette(palette);
        setAutoFillBackground(true);
        for (QWidget* w : { static_cast<QWidget*>(chkPrivat), static_cast<QWidget*>(chkPublic),
                            static_cast<QWidget*>(lblUpdate), static_cast<QWidget*>(picUpdate) }) {
            QPalette p = w->palette();
            p.setColor(QPalette::Window, background);
            w->setPalette(p);
            w->setAutoFillBackground(true);
        }
        for (ToolbarButton* b : { tbSend, tbTerminversand, tbAdmin, tbHelp, tbMultiSMS, tbOptions, tbPhonebook })
            b->setThemedBackColor(background);
    }
    lblCopyright->setText(QStringLiteral("© ") + theme.copyright);
    setWindowTitle(ProductName());
    if (theme.hideHeaderStrings) {
        lblHeader->hide();
        lblHeaderInfo->hide();
    }
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
    bool ok = false;
    double x = tools::NumericValue(readSession(u"x"), &ok);
    if (!ok || x < 0)
        x = screen.width() / 2 - size.width() / 2;
    double y = tools::NumericValue(readSession(u"y"), &ok);
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
    // Light red marks a field in error; the normal colour comes back from the palette.
    field->setStyleSheet(marked ? QStringLiteral("background-color: rgb(255, 192, 192);") : QString());
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
        // The options dialog, which asks for the sender identity, comes with the settings work.
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

void frmMain::recalcSmsSize()
{
    setMarked(txtSMS, false);
    const MessageSize::SmsSizeFigures figures
        = MessageSize::recalcSmsSize(txtSMS->text(), isMultiSMSMode, MessageSize::smsOptionsOf(Options()));
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
        return;
    }
    txtZeichen->setText(QString::number(figures.txtZeichen));
    txtAnzahlSMS->setText(QString::number(figures.txtAnzahlSMS));
}

void frmMain::updateCost()
{
    txtKostenProSMS->setText(QString::number(
        MessageSize::updateCost(MessageSize::smsOptionsOf(Options()), selectedPrefixKey(), txtNummer->text())));
}

bool frmMain::hoverHint(QObject* watched)
{
    if (!tooltip)
        return false;
    if (watched == this || watched == boxPlatzhalter) {
        if (tooltipShown) {
            tooltipShown = false;
            tooltip->Destroy();
        }
        return false;
    }
    struct Hint
    {
        QWidget* control;
        const char16_t* title;
        const char16_t* text;
    };
    const Hint hints[] = {
        { lblUpdate, u"Neues Update verfügbar",
          u"Klicken Sie hier um das neuste Update aus dem Internet herunterzuladen." },
        { picUpdate, u"Neues Update verfügbar",
          u"Klicken Sie hier um das neuste Update aus dem Internet herunterzuladen." },
        { lblCredits, u"Guthaben",
          u"Zeigt Ihr verbleibendes Guthaben an.\r\nIn den 'Einstellungen' können Sie neue Credits kaufen." },
        { chkPrivat, u"Privates Telefonbuch",
          u"Selektieren Sie diese Häkchen wenn der Empfänger \r\nin Ihrem privaten Telefonbuch eingetragen werden "
          u"soll." },
        { chkPublic, u"Öffentliches Telefonbuch",
          u"Selektieren Sie diese Häkchen wenn der Empfänger \r\nin Ihrem öffentlichen Telefonbuch eingetragen werden "
          u"soll." },
    };
    for (const Hint& hint : hints) {
        if (watched != hint.control)
            continue;
        if (!tooltipShown) {
            tooltipShown = true;
            tooltip->setTitle(QString::fromUtf16(hint.title));
            tooltip->setTipText(QString::fromUtf16(hint.text));
            tooltip->Create(hint.control);
        }
        // The move stays with the control; the window under it doesn't see it.
        return true;
    }
    return false;
}

void frmMain::startUpdater()
{
    // The updater runs on its own; the program goes on.
    QProcess::startDetached(ProgramFolder::path() + u'/' + Urls().UpdaterName(), {}, ProgramFolder::path());
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
            QTimer::singleShot(0, txtNummer, [this] { txtNummer->setFocus(Qt::OtherFocusReason); });
        }
    }
    return QWidget::eventFilter(watched, event);
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
    tm->stop();
    tmCredits->stop();
    if (!(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen)))
        savePosition();
    saveSession();
    if (m_minimizeWarning)
        m_minimizeWarning->close();
    event->accept();
}
