// SPDX-License-Identifier: GPL-3.0-or-later
// The page a WebView shows, as the user meets it: wait until the engine has drawn it, then click a
// link with the mouse, where the link stands on the page. The click goes through the engine and
// the page's own scripts, as a user's does.
#pragma once

#include <QString>

class WebView;

namespace PageLinks {
// Waits until the page of view has loaded and holds a link whose text is linkText; false when it
// doesn't come within timeoutMs.
bool waitForLink(WebView* view, const QString& linkText, int timeoutMs = 30000);
// A left click in the middle of the first link whose text is linkText.
bool click(WebView* view, const QString& linkText);
// The text of the page as it reads, once it holds expected (up to timeoutMs); empty otherwise.
QString waitForText(WebView* view, const QString& expected, int timeoutMs = 30000);
} // namespace PageLinks
