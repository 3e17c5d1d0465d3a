// SPDX-License-Identifier: GPL-3.0-or-later
// Answers the program's message boxes from a queue and records every box shown. A box that
// comes with no answer queued fails the running test and is answered with Cancel (or Ok).
#pragma once

#include "toolkit/MessageBox.h"

#include <QList>

#include <functional>

class MessageBoxScript
{
public:
    MessageBoxScript();
    ~MessageBoxScript();
    MessageBoxScript(const MessageBoxScript&) = delete;
    MessageBoxScript& operator=(const MessageBoxScript&) = delete;

    // Queues the answer to the next box.
    void answer(MessageBox::Answer answer);
    // Queues an action run while the next box is up (for a box that starts more work), then the answer.
    void answer(MessageBox::Answer answer, std::function<void(const MessageBox::Box&)> during);

    const QList<MessageBox::Box>& shown() const { return m_shown; }
    int count() const { return int(m_shown.size()); }
    MessageBox::Box last() const { return m_shown.isEmpty() ? MessageBox::Box {} : m_shown.last(); }
    int pending() const { return int(m_answers.size()); }
    void clear() { m_shown.clear(); }

private:
    struct Scripted
    {
        MessageBox::Answer answer;
        std::function<void(const MessageBox::Box&)> during;
    };
    QList<Scripted> m_answers;
    QList<MessageBox::Box> m_shown;
};
