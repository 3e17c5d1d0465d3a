// SPDX-License-Identifier: GPL-3.0-or-later
// What became of one SMS, told honestly: sent, refused, never left, or left without an answer (so
// nobody knows). A script or the user decides by it whether to send again; an SMS whose outcome
// is unknown may have been billed and must not go out blindly a second time.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace SendOutcome {

enum class State {
    Sent, // the gateway said so, or the job file lies in the server folder
    Refused, // the gateway answered otherwise, or nothing was sent by the balance test or the user
    Unreached, // the request never left: no connection, name not found, certificate refused
    Unknown, // the request left and no answer came: time-out, connection dropped
    Skipped, // not attempted: the run was stopped before this row
};

// "sent", "refused", "unreached", "unknown", "skipped": the names scripts read.
QString name(State state);
// The state of a name as name() gives it; none for another text.
std::optional<State> fromName(QStringView name);
// The German word for the log and the command's lines.
QString label(State state);

// Whether a state counts as not sent, for the closing figures and for sending again.
inline bool isNotSent(State state)
{
    return state == State::Refused || state == State::Unreached || state == State::Skipped;
}

// The outcome of a transfer that ended without a readable answer. requestLeft: some of the
// request was written to the connection (or an answer began). httpStatus: the status the server
// (or a proxy) sent, 0 when none came.
State ofFailedTransfer(bool requestLeft, int httpStatus);

// The worse of two parts' outcomes, for a message of several parts: unknown before not reached
// before refused before sent.
State worse(State a, State b);

} // namespace SendOutcome
