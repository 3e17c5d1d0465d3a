// SPDX-License-Identifier: GPL-3.0-or-later
// A recipient list looked over before its run: the rows that would not go out as the user
// expects (no number, a number the run can't send to, the same number twice, a text that loses
// characters or grows past the parts the window shows, a stopped number), and each row's message
// as its recipient gets it. Rules only: the editor shows them and lets the user act.
#pragma once

#include "RecipientTable.h"
#include "sending/MessageSize.h"

#include <QList>
#include <QString>

#include <functional>

namespace ListCheck {

enum class Kind { NoNumber, BadNumber, Duplicate, LosesCharacters, MoreParts, Stopped };

struct Finding
{
    int row = 0; // in the table, from 0
    Kind kind = Kind::NoNumber;
    QString reason; // German, for the report
};

// What the rows are measured against: the message with its placeholders, the options that split
// and price it, the parts per SMS the main window shows, and the stop list.
struct Context
{
    QString txtSMS;
    MessageSize::SmsOptions options;
    int expectedParts = 1;
    int pricePerSms = 10;
    std::function<bool(const QString& number)> stopped;
};

// Every finding, row by row; a row may have several. Duplicates are named at the later rows.
QList<Finding> check(const QList<RecipientRow>& rows, const Context& context);

// Why the run can't send to a number as written, in German; empty when it can.
QString numberProblem(const QString& Nummer);

// One row's message as its recipient gets it.
struct Preview
{
    QString number; // as the request carries it, empty for none
    QString text; // the placeholders filled in
    int size = 0; // on the wire
    int parts = 0;
    int credits = 0;
    QStringList lost; // characters that can't go out
};
Preview preview(const RecipientRow& row, const Context& context);
// "160 Zeichen, 2 SMS, 20 Credits" and what is lost, for the line under the preview.
QString previewLine(const Preview& preview);

} // namespace ListCheck
