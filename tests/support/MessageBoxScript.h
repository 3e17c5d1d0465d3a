// SPDX-License-Identifier: GPL-3.0-or-later
// Answers the program's message boxes from a queue and records every box shown. A box that
// comes with no answer queued fails the running test and is answered with Cancel (or Ok).
#pragma once

#include "toolkit/MessageBox.h"

#include <QList>
#include <QTest>

class MessageBoxScript
{
public:
    MessageBoxScript()
    {
        MessageBox::setHandler([this](const MessageBox::Box& box) {
            m_shown.append(box);
            if (!m_answers.isEmpty())
                return m_answers.takeFirst();
            const QByteArray what = "unexpected message box: " + box.title.toUtf8() + " / " + box.text.toUtf8();
            QTest::qFail(what.constData(), __FILE__, __LINE__);
            return box.buttons == MessageBox::Buttons::Ok ? MessageBox::Answer::Ok : MessageBox::Answer::Cancel;
        });
    }
    ~MessageBoxScript() { MessageBox::setHandler({}); }
    MessageBoxScript(const MessageBoxScript&) = delete;
    MessageBoxScript& operator=(const MessageBoxScript&) = delete;

    // Queues the answer to the next box.
    void answer(MessageBox::Answer answer) { m_answers.append(answer); }

    const QList<MessageBox::Box>& shown() const { return m_shown; }
    int count() const { return int(m_shown.size()); }
    MessageBox::Box last() const { return m_shown.isEmpty() ? MessageBox::Box {} : m_shown.last(); }
    int pending() const { return int(m_answers.size()); }
    void clear() { m_shown.clear(); }

private:
    QList<MessageBox::Answer> m_answers;
    QList<MessageBox::Box> m_shown;
};
