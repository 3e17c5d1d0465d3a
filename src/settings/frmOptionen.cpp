// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmOptionen.h"

#include "CUrlStore.h"
#include "OptionsAccountPane.h"
#include "OptionsAddressBookPane.h"
#include "OptionsDialogRules.h"
#include "OptionsProxyPane.h"
#include "OptionsSendingPane.h"
#include "OptionsServerPane.h"
#include "OptionsStopListPane.h"
#include "OptionsWebPane.h"
#include "account/frmLogin.h"
#include "cOptionen.h"
#include "sending/frmMain.h"
#include "toolkit/HeaderBand.h"
#include "toolkit/MessageBox.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WindowPlacement.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace {
// 0xFFD7CB as the colour is stored (blue, green, red): a light blue.
const QColor Highlighted(0xCB, 0xD7, 0xFF);

struct PaneButton
{
    const char* name;
    const char* caption;
    const char* picture;
};
const std::array<PaneButton, 8> PaneButtons { {
    { "tbKontodaten", "Kontodaten", ":/pictures/user.svg" },
    { "tbVersandoperationen", "Versandoptionen", ":/pictures/send.svg" },
    { "tbCreditsKaufen", "Credits kaufen", ":/pictures/credits.svg" },
    { "tbTerminversand", "Terminversand", ":/pictures/terminversand.svg" },
    { "tbQuellboteServer", "Quellbote Server", ":/pictures/server.svg" },
    { "tbProxy", "Proxy-Einstellungen", ":/pictures/proxy.svg" },
    // The address book's pane, which had no way in of its own.
    { "tbAdressbuch", "Adressbuch", ":/pictures/phonebook.svg" },
    { "tbSperrliste", "Sperrliste", ":/pictures/warning.svg" },
} };
} // namespace

frmOptionen::frmOptionen(QWidget* owner)
    : QDialog(owner)
{
    setObjectName(QStringLiteral("frmOptionen"));
    setWindowTitle(QStringLiteral("Einstellungen"));
    buildControls();
    m_stayOpen = false;
    LoadFromOptions();
    highlight(QStringLiteral("1"));
}

frmOptionen::~frmOptionen() = default;

void frmOptionen::buildControls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* header = new HeaderBand(QStringLiteral("Einstellungen"),
                                  QStringLiteral("Hier können Sie die Versandoptionen anpassen, Ihren Benutzernamen "
                                                 "eingeben und neue SMS-Credits erwerben."),
                                  QStringLiteral(":/pictures/options.svg"), this);
    header->titleLabel()->setObjectName(QStringLiteral("Label7"));
    header->textLabel()->setObjectName(QStringLiteral("Label12"));
    layout->addWidget(header);

    auto* body = new QHBoxLayout;
    body->setContentsMargins(8, 8, 8, 0);
    auto* tree = new QVBoxLayout;
    tree->setSpacing(2);
    for (int i = 0; i < int(PaneButtons.size()); ++i) {
        auto* button = new TreeButton(this);
        button->setObjectName(QLatin1String(PaneButtons[i].name));
        button->setCaption(QString::fromUtf8(PaneButtons[i].caption));
        button->setPicture(QIcon(QLatin1String(PaneButtons[i].picture)));
        button->setPictureHover(QIcon(QLatin1String(PaneButtons[i].picture)));
        button->setMinimumWidth(120);
        const QString number = QString::number(i + 1);
        connect(button, &QAbstractButton::clicked, this, [this, number] {
            selectPane(number);
            highlight(number);
        });
        tree->addWidget(button);
        m_treeButtons[size_t(i)] = button;
    }
    tree->addStretch();
    // The pane buttons scroll where a large font makes them taller than the screen allows.
    auto* treeBox = new QWidget;
    treeBox->setLayout(tree);
    tree->setContentsMargins(0, 0, 0, 0);
    m_treeScroll = new QScrollArea(this);
    m_treeScroll->setObjectName(QStringLiteral("treeScroll"));
    m_treeScroll->setFrameShape(QFrame::NoFrame);
    m_treeScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_treeScroll->setWidgetResizable(true);
    m_treeScroll->setWidget(treeBox);
    m_treeScroll->setMinimumSize(treeBox->sizeHint());
    body->addWidget(m_treeScroll);

    auto* panes = new QGridLayout;
    boxKontodaten = new OptionsAccountPane(this);
    boxVersandoptionen = new OptionsSendingPane(this);
    boxBuySMS = new OptionsWebPane({ "boxBuySMS", "Label14", "Label13", "ani", "wBrowser" },
                                   QStringLiteral("Credits einkaufen"),
                                   QStringLiteral("Die Verbindung zum Onlineshop wird aufgebaut. Bitte haben Sie "
                                                  "einen Moment Geduld."),
                                   this);
    boxTerminversand = new OptionsWebPane(
        { "boxTerminversand", "lblHeaderTerminversand", "lblLoadTerminversand", "aniTerminversand",
          "wBrowserTerminversand" },
        QStringLiteral("Terminversand"),
        QStringLiteral("Eine Liste der aktiven SMS - Aufträge wird erstellt. Bitte haben Sie einen Moment Geduld."),
        this);
    boxXmlServerSettings = new OptionsServerPane(this);
    boxProxyConfiguration = new OptionsProxyPane(this);
    boxOutlookIntegration = new OptionsAddressBookPane(this);
    boxSperrliste = new OptionsStopListPane(this);
    for (QWidget* box : { static_cast<QWidget*>(boxKontodaten), static_cast<QWidget*>(boxVersandoptionen),
                          static_cast<QWidget*>(boxBuySMS), static_cast<QWidget*>(boxTerminversand),
                          static_cast<QWidget*>(boxXmlServerSettings), static_cast<QWidget*>(boxProxyConfiguration),
                          static_cast<QWidget*>(boxOutlookIntegration), static_cast<QWidget*>(boxSperrliste) }) {
        // The panes lie on top of each other, in the dialog's button colour.
        box->setAutoFillBackground(true);
        box->setBackgroundRole(QPalette::Button);
        box->hide();
        panes->addWidget(box, 0, 0);
    }
    body->addLayout(panes, 1);
    layout->addLayout(body, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(8, 8, 8, 8);
    buttons->addStretch();
    cmdSave = new QPushButton(QStringLiteral("&OK"), this);
    cmdSave->setObjectName(QStringLiteral("cmdSave"));
    cmdCancel = new QPushButton(QStringLiteral("&Abbrechen"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdApply = new QPushButton(QStringLiteral("&Übernehmen"), this);
    cmdApply->setObjectName(QStringLiteral("cmdApply"));
    cmdSave->setDefault(true);
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdApply);
    layout->addLayout(buttons);

    const auto enableApply = [this] {
        cmdApply->setEnabled(true);
    };
    connect(boxKontodaten, &OptionsAccountPane::changed, this, enableApply);
    connect(boxVersandoptionen, &OptionsSendingPane::changed, this, enableApply);
    connect(boxVersandoptionen, &OptionsSendingPane::saveAllowed, this, [this](bool allowed) {
        cmdApply->setEnabled(allowed);
        cmdSave->setEnabled(allowed);
    });
    connect(boxProxyConfiguration, &OptionsProxyPane::changed, this, enableApply);
    connect(boxSperrliste, &OptionsStopListPane::changed, this, enableApply);
    // An oddity of the folder chooser that has always been there: the e-mail label goes blank.
    connect(boxXmlServerSettings, &OptionsServerPane::folderChosen, this,
            [this] { boxKontodaten->Label1->setText(QString()); });
    connect(boxBuySMS, &OptionsWebPane::closeRequested, this, &QDialog::close);
    connect(cmdApply, &QPushButton::clicked, this, &frmOptionen::cmdApply_Click);
    connect(cmdSave, &QPushButton::clicked, this, &frmOptionen::cmdSave_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    fitScreen();
}

int frmOptionen::heightAt(int width) const
{
    // Word-wrapped texts make the height depend on the width.
    return layout()->hasHeightForWidth() ? layout()->totalMinimumHeightForWidth(width) : minimumSizeHint().height();
}

void frmOptionen::fitScreen()
{
    const int width = std::max(720, minimumSizeHint().width());
    if (const QScreen* shownOn = screen()) {
        const int over = heightAt(width) - WindowPlacement::contentRoom(shownOn->availableGeometry()).height();
        if (over > 0) {
            const int scrollBar = m_treeScroll->verticalScrollBar()->sizeHint().width();
            const QSize whole = m_treeScroll->widget()->sizeHint();
            m_treeScroll->setMinimumSize(whole.width() + scrollBar,
                                         std::max(whole.height() - over, whole.height() / 4));
            // The rows keep what they measured before; they measure again.
            const std::function<void(QLayout*)> remeasure = [&remeasure](QLayout* l) {
                l->invalidate();
                for (int i = 0; i < l->count(); ++i) {
                    if (QLayout* inner = l->itemAt(i)->layout())
                        remeasure(inner);
                }
            };
            remeasure(layout());
        }
    }
    resize(width, std::max(560, heightAt(width)));
}

void frmOptionen::LoadFromOptions()
{
    boxKontodaten->load();
    boxVersandoptionen->load();
    boxXmlServerSettings->load();
    boxProxyConfiguration->load();
    boxOutlookIntegration->load();
    boxSperrliste->load();
    // The copying has fired the change handlers.
    cmdApply->setEnabled(false);
    selectPane(QStringLiteral("1"));
}

void frmOptionen::SaveToOptions()
{
    boxKontodaten->save();
    boxVersandoptionen->save();
    boxXmlServerSettings->save();
    boxOutlookIntegration->save();
    if (!boxSperrliste->save())
        m_stayOpen = true;
    if (!boxProxyConfiguration->save()) {
        MessageBox::show(this, QStringLiteral("Sie müssen eine Portnummer eingeben"), MessageBox::Buttons::Ok,
                         MessageBox::Icon::None, QStringLiteral("Quellbote"));
        m_stayOpen = true;
        selectPane(QStringLiteral("6"));
        if (boxProxyConfiguration->txtProxyPort->isEnabled())
            boxProxyConfiguration->txtProxyPort->setFocus();
    }
    // Stored whatever went before.
    saveOptionsWithPassword(this);
    if (frmMain* main = frmMain::instance())
        main->setOptionsBar();
}

void frmOptionen::cmdApply_Click()
{
    SaveToOptions();
    cmdApply->setEnabled(false);
}

void frmOptionen::cmdSave_Click()
{
    SaveToOptions();
    const bool stay = m_stayOpen;
    m_stayOpen = false;
    if (!stay)
        accept();
}

QWidget* frmOptionen::pane(const QString& number) const
{
    const QList<QWidget*> boxes { boxKontodaten,         boxVersandoptionen,   boxBuySMS,
                                  boxTerminversand,      boxXmlServerSettings, boxProxyConfiguration,
                                  boxOutlookIntegration, boxSperrliste };
    bool ok = false;
    const int index = number.toInt(&ok) - 1;
    return ok && index >= 0 && index < boxes.size() ? boxes.at(index) : nullptr;
}

QString frmOptionen::pageColour() const
{
    const QColor face = palette().color(QPalette::Button);
    return OptionsDialogRules::colourText(face.red(), face.green(), face.blue());
}

void frmOptionen::selectPane(const QString& number)
{
    for (int i = 1; i <= int(m_treeButtons.size()); ++i)
        pane(QString::number(i))->hide();
    boxBuySMS->hidePage();
    boxTerminversand->hidePage();
    cmdSave->show();
    cmdCancel->show();
    cmdApply->show();
    // The button of the pane shown is the chosen one, which a screen reader says.
    for (int i = 0; i < int(m_treeButtons.size()); ++i) {
        const bool chosen = QString::number(i + 1) == number;
        m_treeButtons[size_t(i)]->setChosen(chosen);
        // Where the buttons scroll, the chosen one is in sight; once laid out, before the first
        // show too.
        if (chosen) {
            QTimer::singleShot(0, m_treeScroll, [scroll = m_treeScroll, button = m_treeButtons[size_t(i)]] {
                scroll->ensureWidgetVisible(button, 0, 0);
            });
        }
    }
    QWidget* box = pane(number);
    if (!box)
        return;
    box->show();
    if (number == u"3") {
        cmdSave->hide();
        cmdCancel->hide();
        cmdApply->hide();
    }
    // The pages load anew at each visit; a user without a stored password is asked now.
    if (number == u"3") {
        boxBuySMS->load(
            OptionsDialogRules::shopUrl(Urls().BuyCredits(), Options().Username(), GetKennwort(this), pageColour()));
    } else if (number == u"4") {
        boxTerminversand->load(OptionsDialogRules::jobListUrl(Urls().EditCronSMS(), Options().Username(),
                                                              GetKennwort(this), pageColour()));
    }
}

void frmOptionen::highlight(const QString& number)
{
    for (int i = 0; i < int(m_treeButtons.size()); ++i)
        m_treeButtons[size_t(i)]->setThemedBackColor(QString::number(i + 1) == number ? Highlighted : Qt::white);
}

namespace {
// The dialog that is open, if one is: there is never a second, so that OK in an older one can't
// write back values a newer one has changed.
QPointer<frmOptionen>& openDialog()
{
    static QPointer<frmOptionen> dialog;
    return dialog;
}
} // namespace

void frmOptionen::showOn(QWidget* owner, const QString& number, const QString& highlighted, bool modal)
{
    QPointer<frmOptionen>& dialog = openDialog();
    const bool reused = !dialog.isNull();
    if (!reused) {
        dialog = new frmOptionen(owner); // deleted when it closes
        dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    dialog->selectPane(number);
    if (!highlighted.isEmpty())
        dialog->highlight(highlighted);
    if (!modal) {
        dialog->show();
        dialog->raise();
        dialog->activateWindow();
        return;
    }
    if (reused && dialog->isModal()) {
        // Already shown modally further up: it only comes to the front.
        dialog->raise();
        dialog->activateWindow();
        return;
    }
    // A dialog open without modality becomes modal for as long as this call waits for it.
    dialog->hide();
    dialog->exec();
}

void frmOptionen::showModal(QWidget* owner)
{
    showOn(owner, QStringLiteral("1"), QStringLiteral("1"), true);
}

void frmOptionen::showBuyCredits(QWidget* owner)
{
    showOn(owner, QStringLiteral("3"), QString(), true);
}

void frmOptionen::showOptionen(QWidget* owner)
{
    showOn(owner, QStringLiteral("2"), QString(), false);
}

void frmOptionen::showOptionTerminversand(QWidget* owner)
{
    showOn(owner, QStringLiteral("4"), QStringLiteral("4"), true);
}
