// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsProxyPane.h"

#include "cOptionen.h"
#include "toolkit/MessageBox.h"
#include "toolkit/PaneHeading.h"
#include "tools.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>

namespace {
const QString ProxyPlaceholder = QStringLiteral("Proxy");
const QString PortPlaceholder = QStringLiteral("Port");
} // namespace

OptionsProxyPane::OptionsProxyPane(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("boxProxyConfiguration"));
    auto* grid = new QGridLayout(this);
    grid->addWidget(
        PaneHeading::make(QStringLiteral("lblHeadProxyConfig"), QStringLiteral("Proxy-Einstellungen"), this), 0, 0);
    const auto option = [this](const char* name, const QString& caption) {
        auto* button = new QRadioButton(caption, this);
        button->setObjectName(QLatin1String(name));
        return button;
    };
    optUseDefaultProxy = option("optUseDefaultProxy", QStringLiteral("Proxy des Internet Explorers verwenden"));
    optNoProxy = option("optNoProxy", QStringLiteral("kein Proxy verwenden"));
    optNamedProxy = option("optNamedProxy", QStringLiteral("Proxy selbst festlegen"));
    grid->addWidget(optUseDefaultProxy, 1, 0);
    grid->addWidget(optNoProxy, 2, 0);
    grid->addWidget(optNamedProxy, 3, 0);
    auto* hostRow = new QHBoxLayout;
    txtProxy = new QLineEdit(this);
    txtProxy->setObjectName(QStringLiteral("txtProxy"));
    txtProxy->setAccessibleName(QStringLiteral("Proxy"));
    auto* lblTrenn = new QLabel(QStringLiteral(":"), this);
    txtProxyPort = new QLineEdit(this);
    txtProxyPort->setObjectName(QStringLiteral("txtProxyPort"));
    txtProxyPort->setAccessibleName(QStringLiteral("Port"));
    txtProxyPort->setMaximumWidth(80);
    hostRow->addWidget(txtProxy, 1);
    hostRow->addWidget(lblTrenn);
    hostRow->addWidget(txtProxyPort);
    grid->addLayout(hostRow, 4, 0);
    auto* lblProxyMsg = new QLabel(QStringLiteral("Die Einstellungen werden beim nächsten Start aktiv"), this);
    lblProxyMsg->setObjectName(QStringLiteral("lblProxyMsg"));
    grid->addWidget(lblProxyMsg, 5, 0);
    grid->setRowStretch(6, 1);

    // toggled(true) is the click, from the mouse, the keyboard or assistive technology alike.
    connect(optUseDefaultProxy, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            optionClicked(optUseDefaultProxy, QStringLiteral("0"));
    });
    connect(optNoProxy, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            optionClicked(optNoProxy, QStringLiteral("1"));
    });
    connect(optNamedProxy, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            optionClicked(optNamedProxy, QStringLiteral("2"));
    });
    connect(txtProxy, &QLineEdit::textChanged, this, &OptionsProxyPane::changed);
    connect(txtProxyPort, &QLineEdit::textChanged, this, &OptionsProxyPane::changed);
    txtProxy->installEventFilter(this);
    txtProxyPort->installEventFilter(this);
}

void OptionsProxyPane::optionClicked(QRadioButton* option, const QString& accessType)
{
    // Takes effect in the options at once, before any Apply and untouched by Cancel.
    Options().setProxyAccessType(accessType);
    const bool named = option == optNamedProxy;
    txtProxy->setEnabled(named);
    txtProxyPort->setEnabled(named);
    emit changed();
}

void OptionsProxyPane::load()
{
    optUseDefaultProxy->setAutoExclusive(false);
    optNoProxy->setAutoExclusive(false);
    optNamedProxy->setAutoExclusive(false);
    optUseDefaultProxy->setChecked(false);
    optNoProxy->setChecked(false);
    optNamedProxy->setChecked(false);
    optUseDefaultProxy->setAutoExclusive(true);
    optNoProxy->setAutoExclusive(true);
    optNamedProxy->setAutoExclusive(true);
    optUseDefaultProxy->setChecked(Options().ProxyOptionDefault());
    optNoProxy->setChecked(Options().ProxyOptionNoProxy());
    optNamedProxy->setChecked(Options().ProxyOptionCustom());
    if (!Options().ProxyAddress().isEmpty()) {
        txtProxy->setText(Options().ProxyAddress());
        txtProxyPort->setText(Options().ProxyPort());
    } else {
        txtProxy->setText(ProxyPlaceholder);
        txtProxyPort->setText(PortPlaceholder);
    }
    if (!optUseDefaultProxy->isChecked() && !optNoProxy->isChecked() && !optNamedProxy->isChecked())
        optUseDefaultProxy->setChecked(true);
    const bool named = optNamedProxy->isChecked();
    txtProxy->setEnabled(named);
    txtProxyPort->setEnabled(named);
}

bool OptionsProxyPane::save() const
{
    Options().setProxyOptionCustom(optNamedProxy->isChecked());
    Options().setProxyOptionDefault(optUseDefaultProxy->isChecked());
    Options().setProxyOptionNoProxy(optNoProxy->isChecked());
    // Stored whichever choice is made.
    if (txtProxy->text() == ProxyPlaceholder) {
        Options().setProxyAddress(QString());
        Options().setProxyPort(QString());
    } else if (txtProxyPort->text() != PortPlaceholder) {
        Options().setProxyAddress(txtProxy->text());
        Options().setProxyPort(txtProxyPort->text());
    } else {
        Options().setProxyOptionDefault(true);
        Options().setProxyOptionCustom(false);
        Options().setProxyOptionNoProxy(false);
        return false;
    }
    return true;
}

bool OptionsProxyPane::eventFilter(QObject* watched, QEvent* event)
{
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (!field)
        return QWidget::eventFilter(watched, event);
    const QString& placeholder = field == txtProxy ? ProxyPlaceholder : PortPlaceholder;
    if (event->type() == QEvent::FocusIn && field->text() == placeholder) {
        field->clear();
    } else if (event->type() == QEvent::FocusOut) {
        if (field->text().isEmpty()) {
            field->setText(placeholder);
        } else if (field == txtProxyPort && !tools::IsNumeric(field->text())
                   && static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason
                   && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
            MessageBox::show(window(), QStringLiteral("Der Port muss eine Zahl sein"), MessageBox::Buttons::Ok,
                             MessageBox::Icon::None, QStringLiteral("Quellbote"));
            QTimer::singleShot(0, field, [field] { field->setFocus(Qt::OtherFocusReason); });
        }
    }
    return QWidget::eventFilter(watched, event);
}
