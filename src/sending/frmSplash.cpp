// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmSplash.h"

#include "Version.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/iniHandler.h"
#include "toolkit/Pause.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>
#include <QScreen>
#include <QVBoxLayout>

frmSplash::frmSplash(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
    , lblProductName(new QLabel(this))
    , imgLogo(new QLabel(this))
    , lblVersion(new QLabel(this))
    , lblInfo(new QLabel(this))
{
    setObjectName(QStringLiteral("frmSplash"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    lblProductName->setObjectName(QStringLiteral("lblProductName"));
    imgLogo->setObjectName(QStringLiteral("imgLogo"));
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblInfo->setObjectName(QStringLiteral("lblInfo"));

    lblProductName->setText(ProductName());
    QFont big = lblProductName->font();
    big.setPointSizeF(big.pointSizeF() * 2.2);
    big.setBold(true);
    lblProductName->setFont(big);
    lblProductName->setAlignment(Qt::AlignCenter);

    imgLogo->setAlignment(Qt::AlignCenter);
    imgLogo->setPixmap(QPixmap(QStringLiteral(":/pictures/logo.svg")));
    if (ProgramFolder::oemFileExists()) {
        const QString logo = iniHandler::GetIniValue(ProgramFolder::oemFile(), QStringLiteral("Images"),
                                                     QStringLiteral("Logo"));
        if (!logo.isEmpty()) {
            // A picture that can't be loaded keeps the designed logo.
            const QPixmap picture(ProgramFolder::path() + QLatin1Char('/') + logo);
            if (!picture.isNull())
                imgLogo->setPixmap(picture);
        }
    }
    lblVersion->setText(QStringLiteral("Version ") + Version::text());
    lblVersion->setAlignment(Qt::AlignCenter);
    lblInfo->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lblInfo->setMinimumWidth(360);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 24, 28, 18);
    layout->setSpacing(10);
    layout->addWidget(imgLogo);
    layout->addWidget(lblProductName);
    layout->addWidget(lblVersion);
    layout->addSpacing(12);
    layout->addWidget(lblInfo);
    setWindowTitle(ProductName());
    setAccessibleName(ProductName());
    setStyleSheet(QStringLiteral("frmSplash { background: palette(base); border: 1px solid palette(mid); }"));
    setAttribute(Qt::WA_StyledBackground);
    adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

void frmSplash::info(const QString& text)
{
    m_lines.append(text);
    lblInfo->setText(text);
    lblInfo->repaint();
    Pause::pumpAndSleep(200);
}
