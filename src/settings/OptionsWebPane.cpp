// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsWebPane.h"

#include "toolkit/PaneHeading.h"
#include "toolkit/WebView.h"
#include "toolkit/mAni2.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {
constexpr int OptionsClip = 103;
}

OptionsWebPane::OptionsWebPane(const Names& names, const QString& heading, const QString& loadingText, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QLatin1String(names.box));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(PaneHeading::make(QLatin1String(names.heading), heading, this));
    auto* loadingRow = new QHBoxLayout;
    ani = new QLabel(this);
    ani->setObjectName(QLatin1String(names.animation));
    ani->setFixedSize(48, 48);
    loadingRow->addWidget(ani);
    loadingLabel = new QLabel(loadingText, this);
    loadingLabel->setObjectName(QLatin1String(names.loading));
    loadingLabel->setWordWrap(true);
    loadingRow->addWidget(loadingLabel, 1);
    layout->addLayout(loadingRow);
    browser = new WebView(this);
    browser->setObjectName(QLatin1String(names.browser));
    browser->setAccessibleName(heading);
    browser->setContextMenuEnabled(false);
    browser->hide();
    layout->addWidget(browser, 1);

    connect(browser, &WebView::documentComplete, this, &OptionsWebPane::showBrowser);
    // The navigation goes ahead; the dialog closes around it.
    connect(browser, &WebView::beforeNavigate, this, [this](const QString& url, bool*) {
        if (url.contains(QStringLiteral("close://")))
            emit closeRequested();
    });
}

void OptionsWebPane::hidePage()
{
    browser->hide();
}

void OptionsWebPane::load(const QString& url)
{
    ani->show();
    loadingLabel->show();
    mAni2::startAnimation(ani, OptionsClip);
    browser->navigate(url);
    // Without the web engine no page comes; the view says why, instead of a wait without end.
    if (!browser->canShowPages())
        showBrowser();
}

void OptionsWebPane::showBrowser()
{
    mAni2::stopAnimation(ani);
    ani->hide();
    // The page takes the place of the loading text.
    loadingLabel->hide();
    browser->show();
}
