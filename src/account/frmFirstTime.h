// SPDX-License-Identifier: GPL-3.0-or-later
// The first-start wizard: a new installation gets to a usable account, either an existing one
// that the service confirms, or a new one applied for, whose password comes by e-mail. It
// writes Username, kennwort, WaitingForPassword and FirstStartHasRun, and tells when it goes
// away, by whatever path, so that the main window comes up.
#pragma once

#include <QWidget>

class Inet;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class WebView;

class frmFirstTime : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFirstTime)

public:
    frmFirstTime();
    ~frmFirstTime() override;

    QStackedWidget* pages;
    QWidget* boxPreface;
    WebView* web;
    QPushButton* cmdNext;
    QPushButton* cmdExit;
    QWidget* accountPage;
    QRadioButton* optExisting; // optNewOld 0
    QRadioButton* optNew; // optNewOld 1
    QLineEdit* txtOldEmail;
    QLineEdit* txtPassword;
    QCheckBox* chkRememberPassword;
    QLineEdit* txtFirstName;
    QLineEdit* txtName;
    QLineEdit* txtFirma;
    QLineEdit* txtStrasse;
    QLineEdit* txtPLZ;
    QLineEdit* txtOrt;
    QLineEdit* txtLand;
    QLineEdit* txtEmail;
    QLineEdit* txtEmailRepeat;
    QLineEdit* txtTelefon;
    QLineEdit* txtFax;
    QLineEdit* txtGutscheincode;
    QWidget* boxWarn;
    QLabel* lblWarning;
    QPushButton* cmdDoIt;
    QWidget* boxWait;
    QLabel* ani;
    QWidget* boxCompleteNewCustomer;
    QLabel* lblEmailIsReady;
    QLineEdit* txtPasswordNew;
    QCheckBox* chkRememberPasswordNew;
    QPushButton* cmdCompleteNewCustomer;
    QPushButton* cmdBack;
    QPushButton* cmdCancel;

signals:
    // The wizard has gone; the main window is to come up.
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildPreface();
    void buildAccountPage();
    void buildWait();
    void buildComplete();
    void optNewOld_Click();
    void cmdDoIt_Click();
    // Marks the empty ones of fields, warns, and takes the focus to the first; false when none is empty.
    bool markMissing(const QList<QLineEdit*>& fields);
    void existingAccountStep();
    void newAccountStep();
    void cmdCompleteNewCustomer_Click();
    void showComplete(const QString& text);
    void showWait();
    void endWait();
    // In use: the window colour and enabled; out of use: the button colour and disabled.
    void setInUse(QLineEdit* field, bool inUse);
    void warn(const QString& text);
    // A failed request: the service couldn't be reached or answered no number.
    void showTransferFailure();

    Inet* iNet;
    QList<QWidget*> m_existingColumn;
    QList<QWidget*> m_newColumn;
    QList<QWidget*> m_starsExisting;
    QList<QWidget*> m_starsNew;
};
