// SPDX-License-Identifier: GPL-3.0-or-later
// What the service sends back: the whole input is read as a gateway answer to a send, as a
// balance, and as a version.
#include "FuzzCheck.h"
#include "Version.h"
#include "sending/GatewayAnswer.h"

using namespace GatewayAnswer;

namespace {
const QString CrLf = QStringLiteral("\r\n");

void checkAnswer(const QString& body)
{
    const Answer answer = readAnswer(body);
    // One item per ";"-separated piece, each on a line of its own in the box.
    FUZZ_CHECK(answer.items.size() == body.count(u';') + 1);
    const QStringList pieces = body.split(u';');
    QString message;
    for (qsizetype i = 0; i < answer.items.size(); ++i) {
        const QString& item = answer.items.at(i);
        FUZZ_CHECK(!item.contains(u'\n'));
        // Blanks are trimmed before the line feeds go, so a blank that a line feed kept from an
        // end of the piece stays.
        const QString trimmed = fuzz::blanksTrimmed(pieces.at(i));
        if (!trimmed.startsWith(u'\n'))
            FUZZ_CHECK(!item.startsWith(u' '));
        if (!trimmed.endsWith(u'\n'))
            FUZZ_CHECK(!item.endsWith(u' '));
        message += item + CrLf;
    }
    FUZZ_CHECK(answer.message == message);
    if (answer.accepted) {
        FUZZ_CHECK(answer.message.contains(QString::fromUtf16(u"wurde erfolgreich an das Gateway übermittelt."),
                                           Qt::CaseInsensitive)
                   || answer.message.contains(QStringLiteral("wurde angelegt."), Qt::CaseInsensitive));
    }

    // The log of a bulk run gets one stamped line per item, the last item on top.
    const QDateTime now(QDate(2009, 7, 15), QTime(9, 5));
    const QString log = prependToLog(QStringLiteral("alt\r\n"), body, now);
    FUZZ_CHECK(log.endsWith(QStringLiteral("\r\nalt\r\n")));
    FUZZ_CHECK(log.contains(answer.items.constLast() + CrLf));
}

void checkBalance(const QString& text)
{
    const CreditsState state = readBalance(text);
    if (state.caption == u"nicht angemeldet") {
        FUZZ_CHECK(text.trimmed() == u"-1");
        FUZZ_CHECK(state.credits == -1 && !state.enabled && !state.buyCreditsVisible);
        return;
    }
    FUZZ_CHECK(state.enabled);
    if (state.caption == u"kein Internet") {
        FUZZ_CHECK(state.credits == -1 && !state.buyCreditsVisible);
        FUZZ_CHECK(state.colour == CreditsColour::ButtonText);
        return;
    }
    FUZZ_CHECK(state.caption == text.trimmed() + QStringLiteral(" Credits"));
    // A low balance shows in dark red, with the link to buy more.
    FUZZ_CHECK(state.buyCreditsVisible == (state.credits <= 500));
    FUZZ_CHECK((state.colour == CreditsColour::DarkRed) == state.buyCreditsVisible);
}

void checkVersion(const QString& text)
{
    const qint64 local = versionNumber(Version::major, Version::minor, Version::revision);
    const VersionCheck check = readVersionAnswer(text, local);
    FUZZ_CHECK((check == VersionCheck::NoAnswer) == text.isEmpty());
    if (check == VersionCheck::UpdateShown || check == VersionCheck::UpdateHidden) {
        FUZZ_CHECK(text.count(u'.') >= 2);
        // The same answer against a version far ahead never offers an update.
        FUZZ_CHECK(readVersionAnswer(text, versionNumber(32767, 32767, 32767)) == VersionCheck::UpdateHidden);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    checkAnswer(text);
    checkBalance(text);
    checkVersion(text);
    if (size >= 2) {
        const qint16 ticks = qint16(data[0] | (data[1] << 8));
        const CreditsTick tick = tmCreditsTick(ticks);
        FUZZ_CHECK(tick.refresh == (ticks == 10));
    }
    return 0;
}
