// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers that come from outside the main window: a number of the web phonebook, the tag of an
// entry in the list of used numbers, and the prefix key and txtNummer they end up in. The input
// is the phonebook number, "\|", the tag, "\|", a prefix key, "\|", and txtNummer.
#include "FuzzCheck.h"
#include "sending/NumberRules.h"
#include "settings/tools.h"

using namespace NumberRules;

namespace {
QString withoutSlashes(QString text)
{
    return text.remove(u'/');
}

void checkPhonebookNumber(const QString& number)
{
    const PhonebookNumber split = splitPhonebookNumber(number);
    FUZZ_CHECK(!split.rest.contains(u'/'));
    if (split.countryWord.isEmpty()) {
        FUZZ_CHECK(split.key == u"W");
        FUZZ_CHECK(split.rest == withoutSlashes(number));
        return;
    }
    // A country was found: its letter leads the key, and key and rest together give back the
    // number, less its slashes.
    FUZZ_CHECK(!countryCode(split.key).isEmpty());
    FUZZ_CHECK(withoutSlashes(countryCode(split.key) + split.key.mid(1) + split.rest) == withoutSlashes(number));
}

void checkUsedNumberTag(const QString& tag)
{
    const UsedNumber used = splitUsedNumberTag(tag);
    FUZZ_CHECK(!used.key.contains(u'V'));
    FUZZ_CHECK(!used.number.contains(u'-'));
    QString oldKeys = tag;
    oldKeys.replace(u'V', u'G');
    if (!tag.contains(u'-')) {
        FUZZ_CHECK(used.key == oldKeys && used.number.isEmpty());
        return;
    }
    FUZZ_CHECK(oldKeys.startsWith(used.key + u'-'));
    FUZZ_CHECK(tag.mid(used.key.size() + 1).startsWith(used.number));
}

void checkSendNumber(const QString& key, const QString& txtNummer)
{
    const SendNumber send = sendNumber(key, txtNummer);
    const bool known = !key.isEmpty() && QStringLiteral("GASW").contains(key.front());
    FUZZ_CHECK(send.ok == known);
    if (send.ok)
        FUZZ_CHECK(send.number.endsWith(txtNummer));
    const QString server = serverNumber(send.number);
    FUZZ_CHECK(server.size() == send.number.size() - (send.number.contains(QStringLiteral("00")) ? 1 : 0));

    const NumberCheck check = checkNumber(key, txtNummer);
    FUZZ_CHECK(check.marked == !check.warningText.isEmpty());
    FUZZ_CHECK(keepsFocus(txtNummer) == !tools::IsNumeric(txtNummer));
    if (keepsFocus(txtNummer))
        FUZZ_CHECK(check.marked);
}

// The web group window traps the pseudo-addresses "gruppe://" and "gruppe//" of the service's
// group page. That trap lives in the window for now; once it is a rule of its own, the address
// text of this input is fed to it here.
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const QString number = fuzz::field(input, 64);
    const QString tag = fuzz::field(input, 64);
    const QString key = fuzz::field(input, 16);
    const QString txtNummer = fuzz::text(input.ConsumeRemainingBytesAsString());

    checkPhonebookNumber(number);
    checkUsedNumberTag(tag);
    checkSendNumber(key, txtNummer);
    // A split number goes back into the two fields of the main window.
    const PhonebookNumber split = splitPhonebookNumber(number);
    checkSendNumber(split.key, split.rest);
    const UsedNumber used = splitUsedNumberTag(tag);
    checkSendNumber(used.key, used.number);
    return 0;
}
