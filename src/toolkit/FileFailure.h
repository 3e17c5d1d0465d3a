// SPDX-License-Identifier: GPL-3.0-or-later
// Why a file could not be written or read, told the way the program's messages tell it: a
// number and a German description, with the system's own words behind it.
#pragma once

#include <QString>

class QFileDevice;

struct FileFailure
{
    int number = 0;
    QString description;

    // From the error the file reports; path is the file that was meant.
    static FileFailure of(const QFileDevice& file, const QString& path);
};
