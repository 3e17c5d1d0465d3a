// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's look: the branding of oem.inf and the balloon hints over its controls.
#include "frmMain.h"
#include "settings/OemTheme.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "toolkit/CTooltip.h"
#include "toolkit/FieldColors.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/VbColor.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>

namespace {
// The lighter end of the designed header band, where light text reads worst.
const QColor BandLighterEnd(0x2b, 0x6c, 0xb0);
} // namespace

void frmMain::LoadTheme()
{
    const OemTheme theme = OemTheme::read();
    if (!theme.fileExists)
        return;
    bool designedBand = true;
    if (!theme.headerPicture.isEmpty()) {
        // A picture that can't be loaded keeps the designed header.
        const QPixmap picture(ProgramFolder::path() + u'/' + theme.headerPicture);
        if (!picture.isNull()) {
            designedBand = false;
            QPalette palette = header->palette();
            palette.setBrush(QPalette::Window, picture);
            header->setPalette(palette);
            header->setAutoFillBackground(true);
        }
    }
    // The header's colours are system colours by default (that of a window's background), white on
    // the blue band of a light desktop; a dark desktop's would vanish on it, so there they give way
    // to a readable one. On a branding picture they stay as given.
    const auto textColor = [this, designedBand](QLabel* label, const std::optional<qint64>& value) {
        if (!value)
            return;
        QColor colour = VbColor::toQColor(*value);
        if (designedBand)
            colour = FieldColors::textOn(BandLighterEnd, colour, palette());
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, colour);
        label->setPalette(palette);
    };
    textColor(lblHeader, theme.headerColor);
    textColor(lblHeaderInfo, theme.headerInfoColor);
    if (theme.backgroundColor) {
        const QColor background = VbColor::toQColor(*theme.backgroundColor);
        const QPalette desktop = this->palette();
        QPalette palette = desktop;
        palette.setColor(QPalette::Window, background);
        // The desktop's text stays readable on the theme's background.
        const QColor text = FieldColors::textOn(background, desktop.color(QPalette::WindowText), desktop);
        if (text != palette.color(QPalette::WindowText)) {
            for (const QPalette::ColorGroup group : { QPalette::Active, QPalette::Inactive })
                palette.setColor(group, QPalette::WindowText, text);
        }
        setPalette(palette);
        setAutoFillBackground(true);
        for (QWidget* w :
             { static_cast<QWidget*>(chkPrivat), static_cast<QWidget*>(chkPublic), boxSignaturen, boxVariablesToolbar,
               boxPlatzhalter, static_cast<QWidget*>(lblUpdate), static_cast<QWidget*>(picUpdate) }) {
            QPalette p = w->palette();
            p.setColor(QPalette::Window, background);
            w->setPalette(p);
            w->setAutoFillBackground(true);
        }
        for (ToolbarButton* b : { tbSend, tbTerminversand, tbAdmin, tbHelp, tbMultiSMS, tbOptions, tbPhonebook,
                                  tbAddressBook, tbSentSms, tbAddSignature, tbDeleteSignature, tbEditSignature })
            b->setThemedBackColor(background);
        for (auto* b : boxVariablesToolbar->findChildren<ToolbarButton*>())
            b->setThemedBackColor(background);
    }
    lblCopyright->setText(QStringLiteral("© ") + theme.copyright);
    setWindowTitle(ProductName());
    if (theme.hideHeaderStrings) {
        lblHeader->hide();
        lblHeaderInfo->hide();
    }
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
        { lvSignaturen->viewport(), u"Signaturen",
          u"Signaturen können durch einen Doppelklick in die aktuelle Nachricht eingefügt werden.\r\nUm die "
          u"Signaturen zu bearbeiten öffnen Sie bitte das Kontextmenü." },
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
