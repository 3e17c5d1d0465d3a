// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmOpenWebGroup.h"

#include "RecipientTable.h"
#include "account/frmLogin.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/ProxyConfig.h"
#include "settings/cOptionen.h"
#include "toolkit/HeaderBand.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/Twips.h"
#include "toolkit/WebView.h"
#include "toolkit/mAni2.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr int WebGroupClip = 102;
}

frmOpenWebGroup::frmOpenWebGroup(RecipientTable& table, QWidget* owner)
    : QDialog(owner)
    , m_table(table)
{
    setObjectName(QStringLiteral("frmOpenWebGroup"));
    setWindowTitle(QStringLiteral("Gruppe öffnen"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    header = new HeaderBand(QStringLiteral("Gruppe öffnen"),
                            QStringLiteral("Öffnet eine der im Internet gespeicherten Gruppen zum Massenversand."),
                            QStringLiteral(":/pictures/webgroup.svg"), this);
    header->setObjectName(QStringLiteral("header"));
    layout->addWidget(header);

    loadingRow = new QWidget(this);
    auto* loadingLayout = new QHBoxLayout(loadingRow);
    loadingLayout->setContentsMargins(12, 8, 12, 8);
    ani = new QLabel(loadingRow);
    ani->setObjectName(QStringLiteral("ani"));
    ani->setFixedSize(48, 48);
    loadingLayout->addWidget(ani);
    Label2 = new QLabel(QStringLiteral("Die Daten werden geladen "), loadingRow);
    Label2->setObjectName(QStringLiteral("Label2"));
    loadingLayout->addWidget(Label2, 1);
    loadingRow->hide();
    layout->addWidget(loadingRow);

    web = new WebView(this);
    web->setObjectName(QStringLiteral("web"));
    web->setAccessibleName(QStringLiteral("Gruppen"));
    web->setContextMenuEnabled(false);
    layout->addWidget(web, 1);
    // Keeps the head compact once the browser gives way to the loading message.
    layout->addStretch();

    iNet = new Inet(this);
    iNet->setObjectName(QStringLiteral("iNet"));
    iNet->setAccessType(ProxyConfig::GetAccessType());
    iNet->setProxy(ProxyConfig::GetProxyString());

    connect(web, &WebView::beforeNavigate, this, &frmOpenWebGroup::web_BeforeNavigate);
    connect(web, &WebView::documentComplete, this, [this] { showLoading(false); });
    resize(640, 520);

    // Neither value is escaped: the page takes them as they stand.
    const QString password = GetKennwort(owner);
    showLoading(true);
    web->navigate(Urls().WebGroup() + QStringLiteral("?email=") + Options().Username() + QStringLiteral("&passwort=")
                  + password);
}

frmOpenWebGroup::~frmOpenWebGroup() = default;

bool frmOpenWebGroup::showOpenWebGroup(RecipientTable& table, QWidget* owner)
{
    frmOpenWebGroup dialog(table, owner);
    return dialog.exec() == QDialog::Accepted;
}

QString frmOpenWebGroup::groupDataUrl(const QString& address, const QString& webGroupDir)
{
    // Only "http://gruppe//" leads to the data; "http://gruppe://" would be the same step, but
    // its result has never been used, and "gruppe://" links are fetched as they stand.
    return QString(address).replace(QStringLiteral("http://gruppe//"), webGroupDir);
}

void frmOpenWebGroup::showLoading(bool loading)
{
    loadingRow->setVisible(loading);
    if (loading)
        mAni2::startAnimation(ani, WebGroupClip);
    else
        mAni2::stopAnimation(ani);
}

void frmOpenWebGroup::web_BeforeNavigate(const QString& url, bool* cancel)
{
    if (url.contains(QStringLiteral("gruppe://")) || url.contains(QStringLiteral("gruppe//"))) {
        *cancel = true;
        // Loaded once the browser is done with the navigation it asked about.
        const QString dataUrl = groupDataUrl(url, Urls().WebGroupDir());
        QTimer::singleShot(0, this, [this, dataUrl] { loadGroup(dataUrl); });
    } else if (url.contains(QStringLiteral("close://"))) {
        *cancel = true;
        QTimer::singleShot(0, this, &QDialog::reject);
    }
}

void frmOpenWebGroup::loadGroup(const QString& url)
{
    web->hide();
    resize(width(), Twips::toPixels(2580));
    showLoading(true);
    repaint();

    bool ok = false;
    QPointer<frmOpenWebGroup> self(this);
    const QString text = iNet->OpenURL(url, &ok);
    if (!self)
        return;
    showLoading(false);
    // A failed download or one that isn't a group (an error page, a broken line) must not pass
    // for a good table: the table before stays as it was.
    QString problem;
    if (!ok)
        problem = QStringLiteral("Die Gruppe konnte nicht aus dem Internet geladen werden.")
            + (iNet->CertificateRefused() ? QStringLiteral("\r\n") + iNet->FailureText() : QString());
    else if (!m_table.loadGroup(text))
        problem = QStringLiteral("Die geladenen Daten sind keine gültige Gruppe.");
    if (!problem.isEmpty()) {
        MessageBox::show(this, problem + QStringLiteral("\r\nDie bisherigen Einträge bleiben unverändert."),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
        reject();
        return;
    }
    accept();
}
