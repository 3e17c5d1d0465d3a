// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmFirstTime.h"

#include "AccountProtocol.h"
#include "Version.h"
#include "frmAGBs.h"
#include "frmLogin.h"
#include "settings/ProductName.h"
#include "settings/ProxyConfig.h"
#include "settings/cOptionen.h"
#include "toolkit/FieldColors.h"
#include "toolkit/HeaderBand.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/WebView.h"
#include "toolkit/mAni2.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr int WizardClip = 104;
const QString MissingFields = QStringLiteral("Bitte füllen Sie alle rot markierten Felder aus.");

QLabel* star(QWidget* parent)
{
    auto* label = new QLabel(QStringLiteral("*"), parent);
    // Dark red, or a light red where the desktop is dark.
    const QColor red = FieldColors::warningTextColour(parent->palette());
    label->setStyleSheet(
        QStringLiteral("color: rgb(%1, %2, %3); font-weight: bold;").arg(red.red()).arg(red.green()).arg(red.blue()));
    label->setToolTip(QStringLiteral("Dies ist ein Pflichtfeld und muss ausgefüllt werden."));
    return label;
}
} // namespace

frmFirstTime::frmFirstTime()
    : QWidget(nullptr)
{
    setObjectName(QStringLiteral("frmFirstTime"));
    setWindowTitle(ProductName());
    setWindowIcon(QIcon(QStringLiteral(":/pictures/logo.svg")));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* header = new HeaderBand(ProductName(),
                                  QStringLiteral("Hier können Sie Ihre Benutzerdaten eintragen oder ein neues Konto "
                                                 "beantragen."),
                                  QStringLiteral(":/pictures/logo.svg"), this);
    header->setObjectName(QStringLiteral("header"));
    header->titleLabel()->setObjectName(QStringLiteral("lblHeader"));
    header->textLabel()->setObjectName(QStringLiteral("Label1"));
    layout->addWidget(header);

    iNet = new Inet(this);
    iNet->setObjectName(QStringLiteral("iNet"));
    iNet->setAccessType(ProxyConfig::GetAccessType());
    iNet->setProxy(ProxyConfig::GetProxyString());

    pages = new QStackedWidget(this);
    layout->addWidget(pages, 1);
    buildPreface();
    buildAccountPage();
    buildComplete();
    buildWait();
    layout->addWidget(boxWait);

    auto* lblVersion = new QLabel(QStringLiteral("Version ") + Version::text(), this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblVersion->setAlignment(Qt::AlignRight);
    lblVersion->setContentsMargins(8, 0, 8, 6);
    layout->addWidget(lblVersion);
    // The usual size, or what the forms need with a larger desktop font.
    resize(QSize(720, 600).expandedTo(sizeHint()));

    web->navigate(QStringLiteral("qrc:/web/FIRSTSTART.HTML"));
    optNewOld_Click();
    pages->setCurrentWidget(boxPreface);
    if (Options().WaitingForPassword()) {
        // Applied for before: straight to the password.
        cmdBack->hide();
        showComplete(QStringLiteral("Ihr persönliches Kennwort für die Nutzung von ") + ProductName()
                     + QStringLiteral(" wurde an die eMailadresse: '") + Options().Username()
                     + QStringLiteral("' versand. "));
    }
}

frmFirstTime::~frmFirstTime() = default;

void frmFirstTime::buildPreface()
{
    boxPreface = new QWidget(pages);
    boxPreface->setObjectName(QStringLiteral("boxPreface"));
    auto* layout = new QVBoxLayout(boxPreface);
    web = new WebView(boxPreface);
    web->setObjectName(QStringLiteral("web"));
    web->setAccessibleName(QStringLiteral("Willkommen"));
    boxPreface->setAccessibleName(QStringLiteral("Willkommen"));
    layout->addWidget(web, 1);
    auto* buttons = new QHBoxLayout;
    cmdExit = new QPushButton(QStringLiteral("Assistent abbrechen"), boxPreface);
    cmdExit->setObjectName(QStringLiteral("cmdExit"));
    cmdNext = new QPushButton(QStringLiteral("Weiter >>"), boxPreface);
    cmdNext->setObjectName(QStringLiteral("cmdNext"));
    cmdNext->setDefault(true);
    buttons->addWidget(cmdExit);
    buttons->addStretch();
    buttons->addWidget(cmdNext);
    layout->addLayout(buttons);
    pages->addWidget(boxPreface);
    // The way on is where the keyboard starts, not the way out.
    setTabOrder(cmdNext, cmdExit);
    cmdNext->setFocus();
    connect(cmdNext, &QPushButton::clicked, this, [this] { pages->setCurrentWidget(accountPage); });
    // Nothing stored: the wizard comes back at the next start.
    connect(cmdExit, &QPushButton::clicked, this, &QWidget::close);
}

void frmFirstTime::buildAccountPage()
{
    accountPage = new QWidget(pages);
    accountPage->setObjectName(QStringLiteral("accountPage"));
    auto* grid = new QGridLayout(accountPage);
    grid->setHorizontalSpacing(8);
    const auto field = [this](const char* name, const QString& label, const char* labelName, QGridLayout* into, int row,
                              int column, QList<QWidget*>* columnList, QList<QWidget*>* stars) {
        auto* caption = new QLabel(label, accountPage);
        caption->setObjectName(QLatin1String(labelName));
        auto* edit = new QLineEdit(accountPage);
        edit->setObjectName(QLatin1String(name));
        edit->setAccessibleName(label);
        caption->setBuddy(edit);
        into->addWidget(caption, row, column);
        into->addWidget(edit, row, column + 1);
        columnList->append(caption);
        columnList->append(edit);
        if (stars) {
            QLabel* mark = star(accountPage);
            into->addWidget(mark, row, column + 2);
            stars->append(mark);
        }
        return edit;
    };

    optExisting = new QRadioButton(QStringLiteral("Ich habe bereits ein ") + ProductName() + QStringLiteral(" Konto"),
                                   accountPage);
    optExisting->setObjectName(QStringLiteral("optNewOld0"));
    optExisting->setChecked(true);
    grid->addWidget(optExisting, 0, 0, 1, 3);
    txtOldEmail
        = field("txtOldEmail", QStringLiteral("eMail"), "lblOldEmail", grid, 1, 0, &m_existingColumn, &m_starsExisting);
    txtPassword = field("txtPassword", QStringLiteral("Kennwort"), "lblPassword", grid, 2, 0, &m_existingColumn,
                        &m_starsExisting);
    FieldColors::showAsStars(txtPassword);
    chkRememberPassword = new QCheckBox(QStringLiteral("Kennwort speichern"), accountPage);
    chkRememberPassword->setObjectName(QStringLiteral("chkRememberPassword"));
    grid->addWidget(chkRememberPassword, 3, 1);
    m_existingColumn.append(chkRememberPassword);

    optNew = new QRadioButton(QStringLiteral("Ich möchte ein neues Konto anlegen"), accountPage);
    optNew->setObjectName(QStringLiteral("optNewOld1"));
    grid->addWidget(optNew, 0, 4, 1, 3);
    int row = 1;
    const auto newField = [&](const char* name, const QString& label, const char* labelName, bool required) {
        return field(name, label, labelName, grid, row++, 4, &m_newColumn, required ? &m_starsNew : nullptr);
    };
    txtFirstName = newField("txtFirstName", QStringLiteral("Vorname"), "lblFirstName", true);
    txtName = newField("txtName", QStringLiteral("Name"), "lblName", true);
    txtFirma = newField("txtFirma", QStringLiteral("Firma"), "lblFirma", false);
    txtStrasse = newField("txtStrasse", QStringLiteral("Strasse / Nr."), "lblStrasse", true);
    // Postcode and town share one label.
    {
        auto* caption = new QLabel(QStringLiteral("PLZ / Ort"), accountPage);
        caption->setObjectName(QStringLiteral("lblPLZ"));
        auto* both = new QHBoxLayout;
        txtPLZ = new QLineEdit(accountPage);
        txtPLZ->setObjectName(QStringLiteral("txtPLZ"));
        txtPLZ->setAccessibleName(QStringLiteral("PLZ"));
        txtPLZ->setMaximumWidth(70);
        txtOrt = new QLineEdit(accountPage);
        txtOrt->setObjectName(QStringLiteral("txtOrt"));
        txtOrt->setAccessibleName(QStringLiteral("Ort"));
        caption->setBuddy(txtPLZ);
        both->addWidget(txtPLZ);
        both->addWidget(txtOrt, 1);
        grid->addWidget(caption, row, 4);
        grid->addLayout(both, row, 5);
        QLabel* mark = star(accountPage);
        grid->addWidget(mark, row++, 6);
        m_starsNew.append(mark);
        m_newColumn << caption << txtPLZ << txtOrt;
    }
    txtLand = newField("txtLand", QStringLiteral("Land"), "lblLand", false);
    txtEmail = newField("txtEmail", QStringLiteral("eMail"), "lblEmail", true);
    txtEmailRepeat = newField("txtEmailRepeat", QStringLiteral("eMail (Wiederh.)"), "lblEmailRepeat", true);
    txtTelefon = newField("txtTelefon", QStringLiteral("Telefon"), "lblTelefon", false);
    txtFax = newField("txtFax", QStringLiteral("Fax"), "lblFax", false);
    auto* lblGutschein = new QLabel(
        QStringLiteral("Sollten Sie einen Gutscheincode besitzen geben Sie diesen bitte hier ein:"), accountPage);
    lblGutschein->setObjectName(QStringLiteral("lblGutschein"));
    lblGutschein->setWordWrap(true);
    grid->addWidget(lblGutschein, row++, 4, 1, 3);
    txtGutscheincode = new QLineEdit(accountPage);
    txtGutscheincode->setObjectName(QStringLiteral("txtGutscheincode"));
    txtGutscheincode->setAccessibleName(QStringLiteral("Gutscheincode"));
    lblGutschein->setBuddy(txtGutscheincode);
    grid->addWidget(txtGutscheincode, row++, 5);
    m_newColumn << lblGutschein << txtGutscheincode;
    grid->setColumnMinimumWidth(3, 16);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(5, 1);

    auto* Label12
        = new QLabel(QStringLiteral("Mit einem Stern versehene Felder müssen ausgefüllt werden."), accountPage);
    grid->addWidget(Label12, row++, 0, 1, 7);
    boxWarn = new QWidget(accountPage);
    boxWarn->setObjectName(QStringLiteral("boxWarn"));
    auto* warnLayout = new QHBoxLayout(boxWarn);
    warnLayout->setContentsMargins(0, 0, 0, 0);
    auto* warnIcon = new QLabel(boxWarn);
    warnIcon->setPixmap(QIcon(QStringLiteral(":/pictures/warning.svg")).pixmap(16, 16));
    warnLayout->addWidget(warnIcon);
    lblWarning = new QLabel(MissingFields, boxWarn);
    lblWarning->setObjectName(QStringLiteral("lblWarning"));
    warnLayout->addWidget(lblWarning, 1);
    boxWarn->hide();
    grid->addWidget(boxWarn, row++, 0, 1, 7);
    cmdDoIt = new QPushButton(accountPage);
    cmdDoIt->setObjectName(QStringLiteral("cmdDoIt"));
    cmdDoIt->setDefault(true);
    grid->addWidget(cmdDoIt, row++, 4, 1, 3, Qt::AlignRight);
    grid->setRowStretch(row, 1);
    pages->addWidget(accountPage);

    // toggled(true) is the click, whether from the mouse, the keyboard or assistive technology.
    connect(optExisting, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            optNewOld_Click();
    });
    connect(optNew, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            optNewOld_Click();
    });
    for (QLineEdit* typed :
         { txtEmail, txtEmailRepeat, txtFirstName, txtName, txtOldEmail, txtOrt, txtPassword, txtPLZ, txtStrasse }) {
        connect(typed, &QLineEdit::textEdited, typed, [typed] {
            FieldColors::setBackground(typed);
            typed->setAccessibleDescription(QString());
        });
    }
    txtPassword->installEventFilter(this);
    connect(cmdDoIt, &QPushButton::clicked, this, &frmFirstTime::cmdDoIt_Click);
    // Qt 6.4 tells a screen reader of a field's caret before its focus, the first time the field
    // gets the focus, and the field goes unannounced; a caret placed once before is no news.
    for (QLineEdit* edit : accountPage->findChildren<QLineEdit*>())
        edit->setCursorPosition(0);
    // What the page asks for is heard with the choice the focus enters it on: a screen reader
    // says a control's description, not the name of the page around it.
    accountPage->setAccessibleName(QStringLiteral("Kontodaten"));
    const QString instructions = QStringLiteral("Kontodaten: Melden Sie sich mit Ihrem Konto an oder beantragen Sie "
                                                "ein neues Konto. ")
        + Label12->text();
    optExisting->setAccessibleDescription(instructions);
    optNew->setAccessibleDescription(instructions);
}

void frmFirstTime::buildWait()
{
    boxWait = new QWidget(this);
    boxWait->setObjectName(QStringLiteral("boxWait"));
    auto* layout = new QHBoxLayout(boxWait);
    ani = new QLabel(boxWait);
    ani->setObjectName(QStringLiteral("ani"));
    ani->setFixedSize(48, 48);
    layout->addWidget(ani);
    auto* lblInternet = new QLabel(QStringLiteral("Verbindung zum Internet wird aufgebaut"), boxWait);
    lblInternet->setObjectName(QStringLiteral("lblInternet"));
    layout->addWidget(lblInternet, 1);
    boxWait->hide();
}

void frmFirstTime::buildComplete()
{
    boxCompleteNewCustomer = new QWidget(pages);
    boxCompleteNewCustomer->setObjectName(QStringLiteral("boxCompleteNewCustomer"));
    auto* layout = new QVBoxLayout(boxCompleteNewCustomer);
    lblEmailIsReady = new QLabel(boxCompleteNewCustomer);
    lblEmailIsReady->setObjectName(QStringLiteral("lblEmailIsReady"));
    lblEmailIsReady->setWordWrap(true);
    layout->addWidget(lblEmailIsReady);
    auto* Label3 = new QLabel(QStringLiteral("Sobald Sie Ihr Kennwort erhalten haben, geben Sie es bitte hier ein:"),
                              boxCompleteNewCustomer);
    layout->addWidget(Label3);
    txtPasswordNew = new QLineEdit(boxCompleteNewCustomer);
    txtPasswordNew->setObjectName(QStringLiteral("txtPasswordNew"));
    txtPasswordNew->setAccessibleName(QStringLiteral("Kennwort"));
    FieldColors::showAsStars(txtPasswordNew);
    Label3->setBuddy(txtPasswordNew);
    boxCompleteNewCustomer->setAccessibleName(QStringLiteral("Kennwort eingeben"));
    txtPasswordNew->setCursorPosition(0);
    layout->addWidget(txtPasswordNew);
    chkRememberPasswordNew = new QCheckBox(QStringLiteral("Kennwort speichern"), boxCompleteNewCustomer);
    chkRememberPasswordNew->setObjectName(QStringLiteral("chkRememberPasswordNew"));
    layout->addWidget(chkRememberPasswordNew);
    cmdCompleteNewCustomer
        = new QPushButton(QStringLiteral("Kennwort überprüfen und Konto freischalten >"), boxCompleteNewCustomer);
    cmdCompleteNewCustomer->setObjectName(QStringLiteral("cmdCompleteNewCustomer"));
    cmdCompleteNewCustomer->setEnabled(false);
    cmdCompleteNewCustomer->setDefault(true);
    layout->addWidget(cmdCompleteNewCustomer, 0, Qt::AlignLeft);
    layout->addStretch();
    auto* buttons = new QHBoxLayout;
    cmdBack = new QPushButton(QStringLiteral("< Zurück"), boxCompleteNewCustomer);
    cmdBack->setObjectName(QStringLiteral("cmdBack"));
    cmdCancel = new QPushButton(QStringLiteral("Ohne Überprüfung direkt zum Programm"), boxCompleteNewCustomer);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdBack);
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);
    pages->addWidget(boxCompleteNewCustomer);

    connect(txtPasswordNew, &QLineEdit::textChanged, this,
            [this](const QString& text) { cmdCompleteNewCustomer->setEnabled(!text.isEmpty()); });
    connect(cmdCompleteNewCustomer, &QPushButton::clicked, this, &frmFirstTime::cmdCompleteNewCustomer_Click);
    connect(cmdBack, &QPushButton::clicked, this, [this] {
        // WaitingForPassword stays set.
        boxWait->hide();
        pages->setCurrentWidget(accountPage);
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        // The password is asked for at the first send instead.
        Options().setFirstStartHasRun(true);
        Options().save();
        close();
    });
}

void frmFirstTime::closeEvent(QCloseEvent* event)
{
    event->accept();
    hide();
    emit unloaded();
}

bool frmFirstTime::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txtPassword && event->type() == QEvent::FocusIn)
        QTimer::singleShot(0, txtPassword, &QLineEdit::selectAll);
    return QWidget::eventFilter(watched, event);
}

void frmFirstTime::setInUse(QLineEdit* field, bool inUse)
{
    field->setEnabled(inUse);
    FieldColors::setBackground(field, inUse ? QColor() : palette().color(QPalette::Button));
}

void frmFirstTime::optNewOld_Click()
{
    const bool existing = optExisting->isChecked();
    for (QWidget* w : m_existingColumn) {
        w->setEnabled(existing);
        if (auto* edit = qobject_cast<QLineEdit*>(w))
            setInUse(edit, existing);
    }
    for (QWidget* w : m_newColumn) {
        w->setEnabled(!existing);
        if (auto* edit = qobject_cast<QLineEdit*>(w))
            setInUse(edit, !existing);
    }
    for (QWidget* s : m_starsExisting)
        s->setVisible(existing);
    for (QWidget* s : m_starsNew)
        s->setVisible(!existing);
    cmdDoIt->setText(existing ? QStringLiteral("Kontodaten überprüfen und anmelden")
                              : QStringLiteral("Neues Konto anlegen"));
}

void frmFirstTime::warn(const QString& text)
{
    lblWarning->setText(text);
    boxWarn->show();
}

void frmFirstTime::showWait()
{
    boxWait->show();
    mAni2::startAnimation(ani, WizardClip);
    repaint();
    QCoreApplication::processEvents();
    setEnabled(false);
}

void frmFirstTime::endWait()
{
    boxWait->hide();
    setEnabled(true);
}

void frmFirstTime::showComplete(const QString& text)
{
    lblEmailIsReady->setText(text);
    // Heard with the password field, which has the focus on this page.
    txtPasswordNew->setAccessibleDescription(text);
    pages->setCurrentWidget(boxCompleteNewCustomer);
}

void frmFirstTime::showTransferFailure()
{
    // A server that isn't trusted is named as such: no new attempt would help.
    MessageBox::show(
        this,
        iNet->CertificateRefused()
            ? iNet->FailureText()
            : QStringLiteral("Der Server ist zurzeit nicht erreichbar oder hat nicht wie erwartet geantwortet.\r\n"
                             "Bitte überprüfen Sie Ihre Internetverbindung und versuchen Sie es erneut."),
        MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
}

void frmFirstTime::cmdDoIt_Click()
{
    boxWarn->hide();
    if (optExisting->isChecked())
        existingAccountStep();
    else
        newAccountStep();
}

bool frmFirstTime::markMissing(const QList<QLineEdit*>& fields)
{
    QLineEdit* first = nullptr;
    for (QLineEdit* field : fields) {
        if (!field->text().isEmpty())
            continue;
        FieldColors::setMarked(field, true);
        // The red is colour only: a screen reader hears the warning with the field.
        field->setAccessibleDescription(MissingFields);
        if (!first)
            first = field;
    }
    if (!first)
        return false;
    warn(MissingFields);
    first->setFocus(Qt::OtherFocusReason);
    return true;
}

void frmFirstTime::existingAccountStep()
{
    if (markMissing({ txtOldEmail, txtPassword }))
        return;
    showWait();
    switch (AccountProtocol::checkAccount(*iNet, txtOldEmail->text(), txtPassword->text())) {
    case AccountProtocol::Answer::Accepted:
        Options().setUsername(txtOldEmail->text());
        if (chkRememberPassword->isChecked())
            Options().setKennwort(txtPassword->text());
        Options().setFirstStartHasRun(true);
        saveOptionsWithPassword(this);
        close();
        return;
    case AccountProtocol::Answer::Refused:
        MessageBox::show(this,
                         QStringLiteral("Für diese Kombination aus eMail und Kennwort ist kein Konto vorhanden.\r\n\r\n"
                                        "Bitte überprüfen Sie Ihre Daten."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning,
                         QStringLiteral("Unbekanntes Benutzerkonto"));
        break;
    case AccountProtocol::Answer::Failed:
        showTransferFailure();
        break;
    }
    txtOldEmail->selectAll();
    endWait();
    txtOldEmail->setFocus();
}

void frmFirstTime::newAccountStep()
{
    if (markMissing({ txtFirstName, txtName, txtEmail, txtEmailRepeat, txtStrasse, txtPLZ, txtOrt }))
        return;
    boxWarn->hide();
    if (txtEmail->text() != txtEmailRepeat->text()) {
        FieldColors::setBackground(txtEmail, FieldColors::LightYellow);
        FieldColors::setBackground(txtEmailRepeat, FieldColors::LightYellow);
        warn(QStringLiteral("Die beiden angegebenen eMailadressen sind nicht identisch."));
        return;
    }
    FieldColors::setBackground(txtEmail);
    FieldColors::setBackground(txtEmailRepeat);
    if (!frmAGBs::acceptAGBs(this)) {
        MessageBox::show(this,
                         QStringLiteral("Um ") + ProductName()
                             + QStringLiteral(" nutzen zu können, müssen Sie die AGBs akzeptieren."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        return;
    }
    showWait();
    const AccountProtocol::NewAccount account { txtName->text(),    txtFirstName->text(),    txtFirma->text(),
                                                txtEmail->text(),   txtTelefon->text(),      txtFax->text(),
                                                txtStrasse->text(), txtPLZ->text(),          txtOrt->text(),
                                                txtLand->text(),    txtGutscheincode->text() };
    switch (AccountProtocol::createAccount(*iNet, account)) {
    case AccountProtocol::Answer::Accepted:
        Options().setUsername(txtEmail->text());
        Options().setWaitingForPassword(true);
        Options().save();
        showComplete(
            QStringLiteral("Ihr persönliches Kennwort für die Nutzung von ") + ProductName()
            + QStringLiteral(" wurde an die eMailadresse: '") + Options().Username()
            + QStringLiteral("' versand. Ihr neues Konto wird von uns in den nächsten Minuten freigeschaltet."));
        break;
    case AccountProtocol::Answer::Refused:
        MessageBox::show(this,
                         QStringLiteral("Es ist ein Fehler beim Übertragen der Daten aufgetreten, bitte versuchen Sie "
                                        "es später nocheinmal."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
        break;
    case AccountProtocol::Answer::Failed:
        showTransferFailure();
        break;
    }
    endWait();
}

void frmFirstTime::cmdCompleteNewCustomer_Click()
{
    switch (AccountProtocol::checkAccount(*iNet, Options().Username(), txtPasswordNew->text())) {
    case AccountProtocol::Answer::Accepted:
        if (chkRememberPasswordNew->isChecked())
            Options().setKennwort(txtPasswordNew->text());
        Options().setWaitingForPassword(false);
        Options().setFirstStartHasRun(true);
        saveOptionsWithPassword(this);
        MessageBox::show(this, QStringLiteral("Ihr Konto ist jetzt freigeschaltet."), MessageBox::Buttons::Ok,
                         MessageBox::Icon::Information, ProductName());
        close();
        return;
    case AccountProtocol::Answer::Refused:
        MessageBox::show(this,
                         QStringLiteral("Das eingegebene Kennwort ist nicht korrekt.\r\n\r\n"
                                        "Bitte überprüfen Sie Ihre Daten."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning,
                         QStringLiteral("Unbekanntes Benutzerkonto"));
        break;
    case AccountProtocol::Answer::Failed:
        showTransferFailure();
        break;
    }
    txtPasswordNew->setFocus();
    txtPasswordNew->selectAll();
}
