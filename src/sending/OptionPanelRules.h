// SPDX-License-Identifier: GPL-3.0-or-later
// What a click on one of the main window's option panels does to the options: sender identity
// and replies exclude each other, the hand-in confirmation is free.
#pragma once

#include <QString>

namespace OptionPanelRules {

struct PanelOptions
{
    bool isAbsenderkennung = false;
    bool isAntwortEnabled = false;
    bool isControlEmail = false;
};

struct PanelClick
{
    PanelOptions options;
    // "Sie haben keine Absenderkennung eingegeben." comes, then the options dialog opens.
    bool warnNoSender = false;
};

// key is "absender", "antwort" or "einlieferung"; the clicked panel turns to the other state.
PanelClick clickPanel(const QString& key, const PanelOptions& current, const QString& Absenderkennung);

} // namespace OptionPanelRules
