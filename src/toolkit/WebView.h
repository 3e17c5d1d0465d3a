// SPDX-License-Identifier: GPL-3.0-or-later
// An embedded browser that shows every navigation to the program before it happens, with a way
// to cancel it, and that can suppress its context menu. The pseudo-schemes of the service's
// pages ("telefon", "close", "gruppe") reach it like any other address. The web engine behind it
// is loaded with the first page any WebView shows.
#pragma once

#include <QWidget>

class WebEngineSurface;

class WebView : public QWidget
{
    Q_OBJECT

public:
    explicit WebView(QWidget* parent = nullptr);

    // url as the program writes it; characters beyond ASCII go out as their Windows-1252 bytes.
    void navigate(const QString& url);
    void setContextMenuEnabled(bool enabled);
    // The focus into the shown page, on its first link.
    void focusFirstLink();
    QString currentUrl() const;
    // Whether pages can be shown; without the web engine the view says why in their place.
    bool canShowPages();

    // Hands a pseudo-address ("telefon://", "gruppe://", "close://", "http://gruppe//") to the
    // window as the page wrote it; it never loads.
    void deliverPseudoAddress(const QString& url);

signals:
    // url is the raw encoded form, so "%20" stays "%20"; a pseudo-address comes exactly as
    // the page's link wrote it.
    void beforeNavigate(const QString& url, bool* cancel);
    void documentComplete(const QString& url);

private:
    // The browser, made on first use; nullptr when the web engine can't be loaded.
    WebEngineSurface* engine();

    WebEngineSurface* m_engine = nullptr;
    bool m_engineFailed = false;
    bool m_contextMenuEnabled = true;
};
