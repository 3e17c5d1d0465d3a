// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's controls, their layout, and the wiring of their events.
#include "MessageSize.h"
#include "OptionsBar.h"
#include "UnsendableCharsBar.h"
#include "WireText.h"
#include "account/frmHelp.h"
#include "account/frmNoInternet.h"
#include "frmMain.h"
#include "settings/CUrlStore.h"
#include "settings/OemTheme.h"
#include "settings/frmOptionen.h"
#include "settings/tools.h"
#include "toolkit/FlowLayout.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/OpenInBrowser.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WindowPlacement.h"
#include "toolkit/mMoveEvent.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QLinearGradient>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace {
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

// Between a counter and the caption of the next.
constexpr int CounterSpacing = 20;

ToolbarButton* toolButton(const QString& name, const QString& caption, const QString& tip, const QString& picture,
                          QWidget* parent)
{
    auto* button = new ToolbarButton(parent);
    button->setObjectName(name);
    button->setCaption(caption);
    button->setToolTip(tip);
    const QIcon icon(QStringLiteral(":/pictures/") + picture + QStringLiteral(".svg"));
    button->setPicture(icon);
    button->setPictureHover(icon);
    button->setAccessibleName(caption.trimmed().isEmpty() ? tip : caption.trimmed());
    return button;
}
} // namespace

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
    lblReuseText->setWordWrap(true);
    auto* reuseLayout = new QHBoxLayout(boxReuseLastSMS);
    reuseLayout->setContentsMargins(0, 0, 0, 0);
    reuseLayout->addWidget(lblReuseText);
    boxReuseLastSMS->hide();
    optionsBar = new OptionsBar(this);

    // The placeholders of a MultiSMS run; the bar shows in that mode only.
    boxVariablesToolbar = new QWidget(this);
    boxVariablesToolbar->setObjectName(QStringLiteral("boxVariablesToolbar"));
    auto* variables = new FlowLayout(boxVariablesToolbar);
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
    boxVariablesToolbar->hide();

    // The counters of a MultiSMS run, with the longest placeholder values.
    boxPlatzhalter = new QWidget(this);
    boxPlatzhalter->setObjectName(QStringLiteral("boxPlatzhalter"));
    txtZeichenMultiSMS = counterField(QStringLiteral("txtZeichenMultiSMS"), QStringLiteral("Zeichen"), boxPlatzhalter);
    txtAnzahlProNachricht
        = counterField(QStringLiteral("txtAnzahlProNachricht"), QStringLiteral("SMS pro Nachricht"), boxPlatzhalter);
    txtAnzahlMultiSMS = counterField(QStringLiteral("txtAnzahlMultiSMS"), QStringLiteral("Anzahl SMS"), boxPlatzhalter);
    auto* multiCounters = new FlowLayout(boxPlatzhalter);
    multiCounters->setSpacing(CounterSpacing);
    for (QLineEdit* field : { txtZeichenMultiSMS, txtAnzahlProNachricht, txtAnzahlMultiSMS }) {
        auto* label = new QLabel(field->accessibleName(), boxPlatzhalter);
        label->setBuddy(field);
        multiCounters->addTogether(label, field);
    }
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
    // 190 pixels at the usual font; a larger desktop font widens the box with its texts.
    boxSignaturen->setFixedWidth(
        std::max({ 190, sigButtons->minimumSize().width(), lvSignaturen->fontMetrics().averageCharWidth() * 24 }));

    tbSend = toolButton(QStringLiteral("tbSend"), QStringLiteral("Senden"), QStringLiteral("Versendet die SMS"),
                        QStringLiteral("send"), this);
    tbTerminversand = toolButton(QStringLiteral("tbTerminversand"), QStringLiteral("Terminversand"), QString(),
                                 QStringLiteral("terminversand"), this);
    tbMultiSMS = toolButton(QStringLiteral("tbMultiSMS"), QStringLiteral(" MultiSMS"),
                            QStringLiteral("Öffnet die MultiSMS Funktion"), QStringLiteral("multisms"), this);
    tbPhonebook = toolButton(QStringLiteral("tbPhonebook"), QString(), QStringLiteral("Öffnet das Telefonbuch"),
                             QStringLiteral("phonebook"), this);
    // The way to the address book on this computer (vCard files).
    tbAddressBook
        = toolButton(QStringLiteral("tbAddressBook"), QStringLiteral("Adressbuch"),
                     QStringLiteral("Übernimmt einen Empfänger aus dem Adressbuch"), QStringLiteral("user"), this);
    tbSentSms = toolButton(QStringLiteral("tbSentSms"), QStringLiteral("Gesendete SMS"),
                           QStringLiteral("Zeigt, was versendet wurde (Strg+G)"), QStringLiteral("send"), this);
    tbOptions = toolButton(QStringLiteral("tbOptions"), QStringLiteral("Einstellungen"), QString(),
                           QStringLiteral("options"), this);
    tbHelp = toolButton(QStringLiteral("tbHelp"), QStringLiteral("Hilfe"), QString(), QStringLiteral("help"), this);
    tbAdmin = toolButton(QStringLiteral("tbAdmin"), QString(), QStringLiteral("Öffnet die Quellbote Webseite"),
                         QStringLiteral("admin"), this);

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

    SendingSession::Host host;
    host.messageText = [this] {
        return txtSMS->text();
    };
    host.sendWithoutSender = [this] {
        const bool yes = MessageBox::show(this,
                                          QStringLiteral("Sie haben keinen Absender eingegeben, soll die Nachricht\r\n"
                                                         "dennoch versendet werden?"),
                                          MessageBox::Buttons::YesNo, MessageBox::Icon::Question,
                                          QStringLiteral("Kein Absendername vorhanden"))
            == MessageBox::Answer::Yes;
        return yes;
    };
    m_sending = new SendingSession(host, this);
    m_sending->setObjectName(QStringLiteral("sending"));
    iNet = m_sending->transfer();
    unsendableChars = new UnsendableCharsBar(this);
    unsendableChars->setObjectName(QStringLiteral("unsendableChars"));
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
    // A screen reader announces the text field inside the box when it has the focus.
    cmbName->lineEdit()->setAccessibleName(lblName->text());
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
    auto* bookLine = new FlowLayout;
    bookLine->addWidget(lblPhonebook);
    bookLine->addTogether(chkPrivat, chkPublic);
    form->addLayout(bookLine, 2, 1, 1, 2);
    form->addWidget(lblNachricht, 3, 0, Qt::AlignTop);
    form->addWidget(txtSMS, 3, 1, 1, 2);
    auto* counters = new FlowLayout;
    counters->setSpacing(CounterSpacing);
    for (const auto& [caption, field] : { std::pair { QStringLiteral("Zeichen"), txtZeichen },
                                          std::pair { QStringLiteral("Anzahl SMS"), txtAnzahlSMS },
                                          std::pair { QStringLiteral("Credits pro SMS"), txtKostenProSMS } }) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        counters->addTogether(label, field);
        // Size and count of one SMS give way to the placeholder counters in MultiSMS mode.
        if (field != txtKostenProSMS)
            m_singleModeCounters << label << field;
    }
    form->addLayout(counters, 4, 1, 1, 2);
    form->addWidget(unsendableChars, 5, 1, 1, 2);
    form->addWidget(optionsBar, 6, 1, 1, 2);
    form->addWidget(boxReuseLastSMS, 7, 1, 1, 2);
    form->setColumnStretch(2, 1);
    form->setRowStretch(3, 1);

    auto* buttons = new QVBoxLayout;
    for (ToolbarButton* b :
         { tbSend, tbTerminversand, tbMultiSMS, tbPhonebook, tbAddressBook, tbSentSms, tbOptions, tbHelp, tbAdmin })
        buttons->addWidget(b);
    // Side windows stand beside the window, and on a narrow screen over its edge, but never over these.
    mMoveEvent::keepUncovered(
        this,
        { tbSend, tbTerminversand, tbMultiSMS, tbPhonebook, tbAddressBook, tbSentSms, tbOptions, tbHelp, tbAdmin });
    // On a screen too narrow for both, the window narrows for a side window; its rows wrap.
    mMoveEvent::allowNarrowing(this, [this](int width) { fitWindow(width); });
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
    fitWindow(std::numeric_limits<int>::max());
}

void frmMain::fitWindow(int widthLimit)
{
    // The window has a fixed layout; it changes its size only to make room for a side window. It
    // is measured in both modes, so that the MultiSMS rows fit too, and kept within the screen (a
    // title bar's height left over): where a large font and scaling make it taller, the message
    // box gives up the rest. Where it is narrower than its rows, they wrap, as far as the screen's
    // height allows.
    const QList<QWidget*> multiRows { boxPlatzhalter, boxVariablesToolbar };
    // The rows of both modes are shown in turn to be measured; nothing of it is drawn, and the
    // keyboard stays where it is.
    QPointer<QWidget> focused = focusWidget();
    setUpdatesEnabled(false);
    QHash<QWidget*, bool> hidden;
    for (QWidget* w : multiRows + m_singleModeCounters)
        hidden.insert(w, w->isHidden());
    const auto showMultiRows = [&](bool multi) {
        for (QWidget* w : multiRows)
            w->setVisible(multi);
        for (QWidget* w : std::as_const(m_singleModeCounters))
            w->setVisible(!multi);
    };
    QSize room(std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
    if (const QScreen* shownOn = screen())
        room = WindowPlacement::contentRoom(shownOn->availableGeometry());
    QSize natural(760, 540);
    int narrowest = 0;
    for (const bool multi : { true, false }) {
        showMultiRows(multi);
        natural = natural.expandedTo(sizeHint());
        narrowest = std::max(narrowest, minimumSizeHint().width());
    }
    // Narrower only as far as the wrapped rows still find their height on the screen.
    const auto tallEnough = [&](int w) {
        for (const bool multi : { true, false }) {
            showMultiRows(multi);
            if (layout()->totalMinimumHeightForWidth(w) > room.height())
                return false;
        }
        return true;
    };
    int width = std::max(narrowest, std::min({ natural.width(), widthLimit, room.width() }));
    constexpr int Step = 16;
    while (width < natural.width() && !tallEnough(width))
        width = std::min(natural.width(), width + Step);
    int height = natural.height();
    for (const bool multi : { true, false }) {
        showMultiRows(multi);
        height = std::max(height, layout()->totalHeightForWidth(width));
    }
    for (auto it = hidden.cbegin(); it != hidden.cend(); ++it)
        it.key()->setHidden(it.value());
    if (focused && focused != focusWidget() && focused->isVisible())
        focused->setFocus();
    setUpdatesEnabled(true);
    m_narrowed = width < natural.width();
    setFixedSize(width, std::max(std::min(height, room.height()), minimumSizeHint().height()));
}

void frmMain::widenAgain()
{
    if (m_narrowed && !m_unloaded)
        fitWindow(std::numeric_limits<int>::max());
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
    // Named beside the counters as the user types; one press replaces them by plain letters.
    connect(txtSMS, &QPlainTextEdit::textChanged, this, [this] { unsendableChars->setText(txtSMS->text()); });
    connect(unsendableChars, &UnsendableCharsBar::replaceRequested, this, [this] {
        txtSMS->setText(WireText::transliterate(txtSMS->text()));
        txtSMS->setFocus();
    });
    connect(cmbName, &QComboBox::activated, this, &frmMain::cmbName_Click);
    // toggled, as a click does: by the mouse, the keyboard, assistive technology or the program.
    connect(chkPublic, &QCheckBox::toggled, this, &frmMain::chkPublic_Click);
    connect(lblReuseText, &QLabel::linkActivated, this, &frmMain::lblReuseText_Click);
    connect(tbSend, &QAbstractButton::clicked, this, &frmMain::tbSend_Click);
    connect(tbTerminversand, &QAbstractButton::clicked, this, &frmMain::tbTerminversand_Click);
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
    connect(tbSentSms, &QAbstractButton::clicked, this, &frmMain::showSentSms);
    auto* sentSmsKey = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_G), this);
    connect(sentSmsKey, &QShortcut::activated, this, &frmMain::showSentSms);
    connect(lblUpdate, &QLabel::linkActivated, this, &frmMain::startUpdater);
    picUpdate->installEventFilter(this);
    connect(tbMultiSMS, &QAbstractButton::clicked, this, &frmMain::tbMultiSMS_Click);
    connect(tbPhonebook, &QAbstractButton::clicked, this, &frmMain::tbPhonebook_Click);
    connect(tbAddressBook, &QAbstractButton::clicked, this, &frmMain::tbAddressBook_Click);
    connect(tbHelp, &QAbstractButton::clicked, this, [] { frmHelp::showHelp(); });
    // What was bought in the shop shows at once, not only at the next query of the timer.
    connect(tbOptions, &QAbstractButton::clicked, this, [this] {
        QPointer<frmMain> self(this);
        frmOptionen::showModal(this);
        if (self)
            refreshCredits();
    });
    connect(lblBuyCredits, &QLabel::linkActivated, this, [this] {
        QPointer<frmMain> self(this);
        frmOptionen::showBuyCredits(this);
        if (self)
            refreshCredits();
    });
    frmNoInternet::setOptionsOpener([](QWidget* owner) { frmOptionen::showModal(owner); });
    connect(m_sending, &SendingSession::delivered, this, &frmMain::sendingDelivered);
    connect(m_sending, &SendingSession::messageHandedOver, this, [this](int message) { m_lastHandedOver = message; });
    connect(iNet2, &Inet::StateChanged, this, &frmMain::iNet2_StateChanged);
    connect(tm, &QTimer::timeout, this, &frmMain::tm_Timer);
    connect(tmCredits, &QTimer::timeout, this, &frmMain::tmCredits_Timer);
}
