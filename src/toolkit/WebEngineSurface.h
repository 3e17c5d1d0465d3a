// SPDX-License-Identifier: GPL-3.0-or-later
// The embedded browser lives in a module of its own (quellbote_webengine), loaded when the first
// page is to be shown: a start that shows no page then costs neither the web engine's libraries
// nor an OpenGL context. These are the two sides of that module.
#pragma once

#include <QList>
#include <QSslError>
#include <QString>
#include <QtPlugin>

#include <functional>

class QUrl;
class QWidget;

// An address holding one of these is a pseudo-address of the service's pages: the window that
// shows the page takes it, and it never loads. A regular expression, for the page's script too.
inline constexpr char PseudoAddressPattern[] = "telefon://|gruppe://|gruppe//|close://";

// What the browser reports to the window that holds it.
struct WebEngineHandlers
{
    // Asked before every navigation, with the address in its raw encoded form; false cancels it.
    std::function<bool(const QString& url)> navigation;
    // A click on a link to a pseudo-address, exactly as the page wrote the link.
    std::function<void(const QString& url)> pseudoAddress;
    // A page has finished loading.
    std::function<void(const QString& url)> loaded;
    // Why a server's certificate was refused, in the words of the program's other windows.
    std::function<QString(const QString& host, const QList<QSslError>& errors)> describeCertificate;
};

// One browser, a child widget of the window that asked for it.
class WebEngineSurface
{
public:
    virtual ~WebEngineSurface() = default;
    virtual QWidget* widget() = 0;
    virtual void load(const QUrl& url) = 0;
    virtual QString url() const = 0;
    virtual void setContextMenuEnabled(bool enabled) = 0;
    // The keyboard's focus into the page, on its first link: a screen reader then says the page
    // and the link, and reads on from there.
    virtual void focusFirstLink() = 0;
};

class WebEngineFactory
{
public:
    virtual ~WebEngineFactory() = default;
    // A new browser whose widget is a child of parent, and so owned by it.
    virtual WebEngineSurface* create(QWidget* parent, WebEngineHandlers handlers) = 0;
};

#define WebEngineFactory_iid "de.tarnholt.Quellbote.WebEngineFactory/2"
Q_DECLARE_INTERFACE(WebEngineFactory, WebEngineFactory_iid)
