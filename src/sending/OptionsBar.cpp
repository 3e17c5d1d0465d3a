// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsBar.h"

#include "toolkit/FlowLayout.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

namespace {
struct Panel
{
    const char16_t* key;
    const char16_t* text;
    const char16_t* tip;
};
constexpr Panel Panels[] = {
    { u"absender", u"Absenderkennung ", u"SMS mit eigener Absenderkennung verschicken" },
    { u"antwort", u"Antwort ", u"Der Empfänger kann auf die SMS antworten." },
    { u"einlieferung", u"Einlieferung ", u"Einlieferung in das Gateways per eMail bestätigen" },
};
} // namespace

OptionsBar::OptionsBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("optionsBar"));
    // A narrow main window puts the panels that don't fit beside the caption into a row below.
    auto* layout = new FlowLayout(this);
    auto* label = new QLabel(QStringLiteral("Sendeoptionen"), this);
    layout->addWidget(label);
    for (const Panel& p : Panels) {
        auto* button = new QToolButton(this);
        const QString key = QString::fromUtf16(p.key);
        button->setObjectName(key);
        button->setText(QString::fromUtf16(p.text));
        button->setToolTip(QString::fromUtf16(p.tip));
        button->setAccessibleName(QString::fromUtf16(p.text).trimmed());
        button->setAccessibleDescription(QString::fromUtf16(p.tip));
        button->setCheckable(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        // On looks pressed in (inset), off raised: the state shows at a glance.
        button->setStyleSheet(QStringLiteral(
            "QToolButton { border: 1px solid palette(mid); border-radius: 3px; padding: 3px 8px;"
            " background: palette(button); }"
            "QToolButton:checked { background: #d3e3f4; border-color: #1f5f9e; color: #123a61; font-weight: bold; }"));
        // The toggle is the click, whether from the mouse, the keyboard or assistive technology;
        // the program's own writes (setPanelOn) are silent.
        connect(button, &QToolButton::toggled, this, [this, key] { emit panelClicked(key); });
        layout->addWidget(button);
    }
}

QAbstractButton* OptionsBar::panel(const QString& key) const
{
    return findChild<QAbstractButton*>(key);
}

void OptionsBar::setPanelOn(const QString& key, bool on)
{
    if (QAbstractButton* p = panel(key)) {
        const QSignalBlocker quiet(p);
        p->setChecked(on);
    }
}

bool OptionsBar::isPanelOn(const QString& key) const
{
    const QAbstractButton* p = panel(key);
    return p && p->isChecked();
}
