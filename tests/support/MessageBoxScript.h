// SPDX-License-Identifier: GPL-3.0-or-later
// Answers the program's message boxes from a queue and records every box shown. A box that
// comes with no answer queued fails the running test and is answered with Cancel (or Ok). A
// queued step can instead let the real box come up and act on it as a user does.
#pragma once

#include "ModalWindows.h"
#include "toolkit/MessageBox.h"

#include <QList>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <functional>

class MessageBoxScript
{
public:
    MessageBoxScript() { install(); }
    ~MessageBoxScript() { MessageBox::setHandler({}); }
    MessageBoxScript(const MessageBoxScript&) = delete;
    MessageBoxScript& operator=(const MessageBoxScript&) = delete;

    // Queues the answer to the next box.
    void answer(MessageBox::Answer answer) { m_steps.append({ answer, {} }); }

    // The next box comes up for real, as the program shows it, and act gets it once it is up. The
    // program gets whatever the box answers; that answer is kept in realAnswers().
    void actOnRealBox(std::function<void(QMessageBox*)> act) { m_steps.append({ {}, std::move(act) }); }

    // What a user does to a real box without choosing a button.
    static void pressEsc(QMessageBox* box)
    {
        QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key_Escape);
    }
    static void closeByItsCloseBox(QMessageBox* box) { box->close(); }

    const QList<MessageBox::Box>& shown() const { return m_shown; }
    int count() const { return int(m_shown.size()); }
    MessageBox::Box last() const { return m_shown.isEmpty() ? MessageBox::Box {} : m_shown.last(); }
    int pending() const { return int(m_steps.size()); }
    const QList<MessageBox::Answer>& realAnswers() const { return m_realAnswers; }
    void clear() { m_shown.clear(); }

private:
    struct Step
    {
        MessageBox::Answer answer;
        std::function<void(QMessageBox*)> actOnRealBox;
    };

    void install()
    {
        MessageBox::setHandler([this](const MessageBox::Box& box) { return next(box); });
    }

    MessageBox::Answer next(const MessageBox::Box& box)
    {
        m_shown.append(box);
        if (m_steps.isEmpty()) {
            const QByteArray what = "unexpected message box: " + box.title.toUtf8() + " / " + box.text.toUtf8();
            QTest::qFail(what.constData(), __FILE__, __LINE__);
            return box.buttons == MessageBox::Buttons::Ok ? MessageBox::Answer::Ok : MessageBox::Answer::Cancel;
        }
        const Step step = m_steps.takeFirst();
        if (!step.actOnRealBox)
            return step.answer;
        // The script steps aside for this one box: MessageBox shows its own dialog.
        MessageBox::setHandler({});
        onNextModal([act = step.actOnRealBox](QWidget* modal) {
            auto* real = qobject_cast<QMessageBox*>(modal);
            if (!real) {
                QTest::qFail("the modal window is no message box", __FILE__, __LINE__);
                modal->close();
                return;
            }
            act(real);
            // A box that stays up would hold the test until its time-out.
            QTimer::singleShot(5000, real, [real] {
                QTest::qFail("the message box stayed up", __FILE__, __LINE__);
                real->done(0);
            });
        });
        const MessageBox::Answer answer = MessageBox::show(box.parent, box.text, box.buttons, box.icon, box.title);
        install();
        m_realAnswers.append(answer);
        return answer;
    }

    QList<Step> m_steps;
    QList<MessageBox::Box> m_shown;
    QList<MessageBox::Answer> m_realAnswers;
};
