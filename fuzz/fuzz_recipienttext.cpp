// SPDX-License-Identifier: GPL-3.0-or-later
// A row of a MultiSMS run, as a .msms file or a web group brings it: the input is txtSMS, "\|",
// Name, "\|", Freitext1, "\|", Freitext2, "\|", and Nummer.
#include "FuzzCheck.h"
#include "sending/RecipientText.h"

using namespace RecipientText;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const QString txtSMS = fuzz::field(input, 1024);
    const QString Name = fuzz::field(input);
    const QString Freitext1 = fuzz::field(input);
    const QString Freitext2 = fuzz::field(input);
    const QString Nummer = fuzz::text(input.ConsumeRemainingBytesAsString());

    const QString text = rowText(txtSMS, Name, Freitext1, Freitext2);
    // Without a "%" there is nothing to replace; each placeholder put in for itself changes nothing.
    if (!txtSMS.contains(u'%'))
        FUZZ_CHECK(text == txtSMS);
    FUZZ_CHECK(rowText(txtSMS, QStringLiteral("%name%"), QStringLiteral("%frei1%"), QStringLiteral("%frei2%"))
               == txtSMS);
    // Values without "%" leave no "%" that txtSMS didn't have.
    if (!Name.contains(u'%') && !Freitext1.contains(u'%') && !Freitext2.contains(u'%'))
        FUZZ_CHECK(text.count(u'%') <= txtSMS.count(u'%'));

    const std::optional<QString> number = rowNumber(Nummer);
    FUZZ_CHECK(number.has_value() == !Nummer.isEmpty());
    if (number) {
        FUZZ_CHECK(number->startsWith(QStringLiteral("00")));
        FUZZ_CHECK(number->size() == (Nummer.startsWith(QStringLiteral("00")) ? Nummer.size() : Nummer.size() + 3));
    }
    return 0;
}
