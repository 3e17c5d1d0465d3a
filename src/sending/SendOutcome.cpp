// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendOutcome.h"

namespace SendOutcome {

QString name(State state)
{
    switch (state) {
    case State::Sent:
        return QStringLiteral("sent");
    case State::Refused:
        return QStringLiteral("refused");
    case State::Unreached:
        return QStringLiteral("unreached");
    case State::Unknown:
        return QStringLiteral("unknown");
    case State::Skipped:
        break;
    }
    return QStringLiteral("skipped");
}

std::optional<State> fromName(QStringView name)
{
    for (const State s : { State::Sent, State::Refused, State::Unreached, State::Unknown, State::Skipped })
        if (SendOutcome::name(s) == name)
            return s;
    return std::nullopt;
}

QString label(State state)
{
    switch (state) {
    case State::Sent:
        return QStringLiteral("versendet");
    case State::Refused:
        return QStringLiteral("abgelehnt");
    case State::Unreached:
        return QStringLiteral("nicht versendet");
    case State::Unknown:
        return QStringLiteral("ungewiss");
    case State::Skipped:
        break;
    }
    return QStringLiteral("übersprungen");
}

State ofFailedTransfer(bool requestLeft, int httpStatus)
{
    // A proxy that gave up waiting for the gateway, or couldn't hand the answer on, doesn't know
    // either whether the gateway took the SMS.
    if (httpStatus == 502 || httpStatus == 504)
        return State::Unknown;
    if (httpStatus > 0)
        return State::Refused;
    return requestLeft ? State::Unknown : State::Unreached;
}

State worse(State a, State b)
{
    const auto rank = [](State s) {
        switch (s) {
        case State::Unknown:
            return 4;
        case State::Unreached:
            return 3;
        case State::Skipped:
            return 2;
        case State::Refused:
            return 1;
        case State::Sent:
            break;
        }
        return 0;
    };
    return rank(a) >= rank(b) ? a : b;
}

} // namespace SendOutcome
