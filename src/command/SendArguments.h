// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of quellbote-send, read into what it asks for. A fault in it is told in German,
// as the program's other messages are.
#pragma once

#include <QString>
#include <QStringList>

struct SendArguments
{
    // One SMS: the number as a user writes it, prefix and all.
    QString number;
    // The message; textFromInput when it is "-" or not given: it comes from standard input.
    QString text;
    bool textFromInput = false;
    // A bulk run over the rows of a .msms file instead of one number.
    QString file;
    // A one-off scheduled sending, "YYYY-MM-DD HH:MM".
    QString at;
    // The send options of the main window, for this run only.
    QString sender;
    bool senderGiven = false;
    bool reply = false;
    bool status = false;
    bool longSms = false;
    // The recipient's name, as the window's "Empfängername".
    QString name;
    bool dryRun = false;
    // One line of JSON per SMS on standard output instead of the gateway's words.
    bool json = false;
    // A list's run again: only the rows that did not go out last time; resendUnknown also those
    // that may have gone out.
    bool resume = false;
    bool resendUnknown = false;
    // Characters that can't go out replaced by plain letters instead of refusing the text.
    bool transliterate = false;
    bool balance = false;
    // Every SMS goes into the send record unless told otherwise.
    bool noRecord = false;
    // The send record's entries that hold sentText in number, name or text, instead of a send.
    bool sent = false;
    QString sentText;
    // Another store than the user's own.
    QString config;
    bool help = false;
    bool version = false;
    // Empty when the command line could be read; otherwise what is wrong with it.
    QString error;
};

// arguments without the program's own name.
SendArguments parseSendArguments(const QStringList& arguments);

// The text of --help.
QString sendUsage();
