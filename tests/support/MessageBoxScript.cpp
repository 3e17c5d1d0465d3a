// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBoxScript.h"

#include <QTest>

MessageBoxScript::MessageBoxScript()
{
    MessageBox::setHandler([this](const MessageBox::Box& box) {
        m_shown.append(box);
        if (m_answers.isEmpty()) {
            const QByteArray what = "unexpected message box: " + box.title.toUtf8() + " / " + box.text.toUtf8();
            QTest::qFail(what.constData(), __FILE__, __LINE__);
            return box.buttons == MessageBox::Buttons::Ok ? MessageBox::Answer::Ok : MessageBox::Answer::Cancel;
        }
        const Scripted next = m_answers.takeFirst();
        if (next.during)
            next.during(box);
        return next.answer;
    });
}

MessageBoxScript::~MessageBoxScript()
{
    MessageBox::setHandler({});
}

void MessageBoxScript::answer(MessageBox::Answer answer)
{
    m_answers.append({ answer, {} });
}

void MessageBoxScript::answer(MessageBox::Answer answer, std::function<void(const MessageBox::Box&)> during)
{
    m_answers.append({ answer, std::move(during) });
}
