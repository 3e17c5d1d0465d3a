// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmPhonebook.h"

#include "frmLogin.h"
#include "sending/frmMain.h"
#include "sending/mUrlEncode.h"
#include "settings/CUrlStore.h"
#include "settings/cOptionen.h"
#include "toolkit/WebView.h"
#include "toolkit/mMoveEvent.h"

#include <QCloseEvent>
#include <QIcon>
#include <QTimer>
#include <QVBoxLayout>

frmPhonebook::frmPhonebook(frmMain* main)
    : QWidget(nullptr)
    , m_main(main)
{
    setObjectName(QStringLiteral("frmPhonebook"));
    setWindowTitle(QStringLiteral("Telefonbuch"));
    setWindowIcon(QIcon(QStringLiteral(":/pictures/phonebook.svg")));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    web = new WebView(this);
    web->setObjectName(QStringLiteral("web"));
    web->setAccessibleName(QStringLiteral("Telefonbuch"));
    web->setContextMenuEnabled(false);
    layout->addWidget(web);
    mMoveEvent::installHook(main, this);
    resize(380, main->height());
    connect(web, &WebView::beforeNavigate, this, &frmPhonebook::web_BeforeNavigate);
    // Opened, the list is where the keyboard is, so that a screen reader reads its entries.
    connect(web, &WebView::documentComplete, this, [this] {
        if (isActiveWindow())
            web->focusFirstLink();
    });
    // The e-mail address goes as it is, the password encoded.
    web->navigate(Urls().Phonebook() + QStringLiteral("?email=") + Options().Username() + QStringLiteral("&passwort=")
                  + mUrlEncode::percentEncode(GetKennwort(main), false));
}

frmPhonebook::~frmPhonebook() = default;

void frmPhonebook::closeEvent(QCloseEvent* event)
{
    mMoveEvent::removeHook(m_main, this);
    event->accept();
    // The main window lets go of the window (and clears its flag) once the close is through.
    QTimer::singleShot(0, m_main, &frmMain::disposePhonebook);
}

void frmPhonebook::web_BeforeNavigate(const QString& url, bool* cancel)
{
    if (url.contains(QStringLiteral("telefon://"))) {
        // Taken over or not, the navigation never goes to the pseudo-address.
        *cancel = true;
        const frmMain::PhonebookEntry result = m_main->takePhonebookEntry(url);
        if (result != frmMain::PhonebookEntry::Failed)
            QTimer::singleShot(0, m_main, &frmMain::disposePhonebook);
    } else if (url.contains(QStringLiteral("close://"))) {
        QTimer::singleShot(0, m_main, [main = m_main] {
            main->disposePhonebook();
            main->focusMessage();
        });
    }
}
