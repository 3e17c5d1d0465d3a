// SPDX-License-Identifier: GPL-3.0-or-later
// The service's web pages, in German, as the client shows them in its embedded browsers.
#pragma once

#include "Accounts.h"

#include <QString>

namespace Pages {
// Every page in one frame: title, optional background colour (RRGGBB) and body.
QString page(const QString& title, const QString& body, const QString& backcolor = QString());
QString loginError();
QString phonebook(const Account& account);
QString groups(const Account& account);
QString shop(const Account& account, const QString& query, const QString& notice, const QString& backcolor);
QString jobs(const Account& account, const QString& query, const QString& notice, const QString& backcolor);
QString terms();
QString news();
QString help();
QString home();
QString notFound(const QString& path);
// The HTML page that a broken server answers with instead of the expected text.
QString garbage();
QString escaped(const QString& text);
} // namespace Pages
