// SPDX-License-Identifier: GPL-3.0-or-later
// "Gruppe öffnen": the service's page of the user's groups in an embedded browser. A click on a
// group is not followed; the group's data is downloaded and replaces the MultiSMS table.
#pragma once

#include <QDialog>

class Inet;
class QLabel;
class RecipientTable;
class WebView;

class frmOpenWebGroup : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmOpenWebGroup)

public:
    frmOpenWebGroup(RecipientTable& table, QWidget* owner);
    ~frmOpenWebGroup() override;

    // Modal over the main window until a group is loaded, "close://" is followed or the user
    // closes it; true when a group was loaded into the table.
    static bool showOpenWebGroup(RecipientTable& table, QWidget* owner);

    // Where a picked group's data is fetched from: "http://gruppe//" becomes WebGroupDir, any
    // other form stays as it is.
    static QString groupDataUrl(const QString& address, const QString& webGroupDir);

private:
    void web_BeforeNavigate(const QString& url, bool* cancel);
    void loadGroup(const QString& url);
    void showLoading(bool loading);

    RecipientTable& m_table;
    QWidget* header;
    WebView* web;
    QWidget* loadingRow;
    QLabel* ani;
    QLabel* Label2;
    Inet* iNet;
};
