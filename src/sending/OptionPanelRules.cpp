// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionPanelRules.h"

namespace OptionPanelRules {

PanelClick clickPanel(const QString& key, const PanelOptions& current, const QString& Absenderkennung)
{
    PanelClick click { current, false };
    PanelOptions& o = click.options;
    if (key == u"absender") {
        o.isAbsenderkennung = !current.isAbsenderkennung;
        if (o.isAbsenderkennung) {
            o.isAntwortEnabled = false;
            click.warnNoSender = Absenderkennung.isEmpty();
        }
    } else if (key == u"antwort") {
        o.isAntwortEnabled = !current.isAntwortEnabled;
        if (o.isAntwortEnabled)
            o.isAbsenderkennung = false;
    } else if (key == u"einlieferung") {
        o.isControlEmail = !current.isControlEmail;
    }
    return click;
}

} // namespace OptionPanelRules
