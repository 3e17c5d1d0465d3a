// SPDX-License-Identifier: GPL-3.0-or-later
#include "VCardContact.h"

QString VCardContact::mobileNumber() const
{
    for (const VCardPhone& phone : phones) {
        if (phone.isCell())
            return phone.number;
    }
    return {};
}
