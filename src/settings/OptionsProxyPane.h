// SPDX-License-Identifier: GPL-3.0-or-later
// Pane "Proxy-Einstellungen" of the options dialog. The choice of proxy reaches the options at
// once; host and port are stored with the others, and take effect at the next start.
#pragma once

#include <QWidget>

class QLineEdit;
class QRadioButton;

class OptionsProxyPane : public QWidget
{
    Q_OBJECT

public:
    explicit OptionsProxyPane(QWidget* parent = nullptr);

    void load();
    // Stores the three choices and the host and port. False for a host without a port: then
    // the choice falls back to the system's proxy and host and port stay as they were.
    bool save() const;

    QRadioButton* optUseDefaultProxy;
    QRadioButton* optNoProxy;
    QRadioButton* optNamedProxy;
    QLineEdit* txtProxy;
    QLineEdit* txtProxyPort;

signals:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void optionClicked(QRadioButton* option, const QString& accessType);
};
