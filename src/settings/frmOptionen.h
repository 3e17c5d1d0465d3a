// SPDX-License-Identifier: GPL-3.0-or-later
// "Einstellungen": the settings in six panes chosen by a column of buttons (account, sending,
// the Credits shop, the scheduled jobs, the local server, the proxy). It works on the one
// options record and writes it on OK and Apply.
#pragma once

#include <QDialog>

#include <array>

class HeaderBand;
class OptionsAccountPane;
class OptionsAddressBookPane;
class OptionsStopListPane;
class OptionsProxyPane;
class OptionsSendingPane;
class OptionsServerPane;
class OptionsWebPane;
class QPushButton;
class QScrollArea;
class TreeButton;

class frmOptionen : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmOptionen)

public:
    explicit frmOptionen(QWidget* owner);
    ~frmOptionen() override;

    // There is one dialog at a time: each of these shows the one that is open, if one is, on the
    // pane asked for.
    // Modal over owner, on pane "1".
    static void showModal(QWidget* owner);
    // Modal, on the shop; the highlight stays on "Kontodaten".
    static void showBuyCredits(QWidget* owner);
    // Not modal, on "Versandoptionen"; the highlight stays where the load put it.
    static void showOptionen(QWidget* owner);
    // Modal, on the list of scheduled jobs.
    static void showOptionTerminversand(QWidget* owner);

    // Shows the pane of that number ("1" to "7"); an unknown number shows none.
    void selectPane(const QString& number);
    // The button of that number gets the light blue, the others white.
    void highlight(const QString& number);

    QPushButton* cmdSave;
    QPushButton* cmdCancel;
    QPushButton* cmdApply;
    OptionsAccountPane* boxKontodaten;
    OptionsSendingPane* boxVersandoptionen;
    OptionsWebPane* boxBuySMS;
    OptionsWebPane* boxTerminversand;
    OptionsServerPane* boxXmlServerSettings;
    OptionsProxyPane* boxProxyConfiguration;
    OptionsAddressBookPane* boxOutlookIntegration;
    OptionsStopListPane* boxSperrliste;

private:
    // Shows the open dialog or a new one on pane number; highlighted, unless empty, gets the
    // highlight; modal waits until it is closed.
    static void showOn(QWidget* owner, const QString& number, const QString& highlighted, bool modal);
    void buildControls();
    // 720 x 560 and more where the texts need it; where the window would be taller than the
    // screen, the pane buttons give up the rest and scroll.
    void fitScreen();
    int heightAt(int width) const;
    void LoadFromOptions();
    void SaveToOptions();
    void cmdApply_Click();
    void cmdSave_Click();
    QWidget* pane(const QString& number) const;
    QString pageColour() const;

    std::array<TreeButton*, 8> m_treeButtons {};
    QScrollArea* m_treeScroll = nullptr;
    bool m_stayOpen = false;
};
