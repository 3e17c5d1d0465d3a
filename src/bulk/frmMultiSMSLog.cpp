// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMultiSMSLog.h"

#include "sending/GatewayAnswer.h"
#include "toolkit/Clock.h"
#include "toolkit/DefaultInstance.h"
#include "toolkit/mAni2.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr int LogClip = 101;

} // namespace

frmMultiSMSLog* frmMultiSMSLog::instance()
{
    if (!defaultInstance<frmMultiSMSLog>())
        defaultInstance<frmMultiSMSLog>() = new frmMultiSMSLog; // deleted with the main window
    return defaultInstance<frmMultiSMSLog>();
}

frmMultiSMSLog* frmMultiSMSLog::loaded()
{
    return defaultInstance<frmMultiSMSLog>();
}

frmMultiSMSLog::frmMultiSMSLog()
    : QWidget(nullptr)
{
    setObjectName(QStringLiteral("frmMultiSMSLog"));
    setWindowTitle(QStringLiteral("Ihre Nachrichten werden verschickt"));
    setWindowIcon(QIcon(QStringLiteral(":/pictures/multisms.svg")));
    auto* layout = new QVBoxLayout(this);

    auto* top = new QHBoxLayout;
    ani = new QLabel(this);
    ani->setObjectName(QStringLiteral("ani"));
    ani->setFixedSize(48, 48);
    top->addWidget(ani);
    lblSend = new QLabel(this);
    lblSend->setObjectName(QStringLiteral("lblSend"));
    top->addWidget(lblSend, 1);
    layout->addLayout(top);

    pBar = new QProgressBar(this);
    pBar->setObjectName(QStringLiteral("pBar"));
    pBar->setAccessibleName(QStringLiteral("Fortschritt"));
    pBar->setTextVisible(false);
    layout->addWidget(pBar);

    auto* Label1 = new QLabel(QStringLiteral("Nachrichten vom Gateway"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    layout->addWidget(Label1);
    txtLog = new QPlainTextEdit(this);
    txtLog->setObjectName(QStringLiteral("txtLog"));
    txtLog->setAccessibleName(QStringLiteral("Nachrichten vom Gateway"));
    txtLog->setReadOnly(true);
    Label1->setBuddy(txtLog);
    layout->addWidget(txtLog, 1);

    cmdClose = new QPushButton(QStringLiteral("Abbrechen"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    layout->addLayout(buttons);
    connect(cmdClose, &QPushButton::clicked, this, &frmMultiSMSLog::cmdClose_Click);

    m_show = new QTimer(this);
    m_show->setSingleShot(true);
    m_show->setInterval(50);
    connect(m_show, &QTimer::timeout, this, &frmMultiSMSLog::showNow);

    resize(520, 380);
    // Played from the load on; a later run finds it stopped, and so it stays.
    mAni2::startAnimation(ani, LogClip);
}

frmMultiSMSLog::~frmMultiSMSLog() = default;

void frmMultiSMSLog::cmdClose_Click()
{
    if (cmdClose->text() == QStringLiteral("Abbrechen")) {
        abortRequested = true;
        appendNote(QStringLiteral("!!!! Abbruch durch User"));
    } else {
        hide();
    }
}

void frmMultiSMSLog::closeEvent(QCloseEvent* event)
{
    // The frame's close box does what the button does: during a run it stops the run and the
    // window stays to show its end; afterwards it hides the window, which is never unloaded.
    event->ignore();
    cmdClose_Click();
}

QString frmMultiSMSLog::stampNow()
{
    if (Clock::isPinned())
        return GatewayAnswer::logStamp(Clock::now());
    const qint64 second = QDateTime::currentMSecsSinceEpoch() / 1000;
    if (second != m_stampSecond) {
        m_stampSecond = second;
        m_stamp = GatewayAnswer::logStamp(QDateTime::fromMSecsSinceEpoch(second * 1000));
    }
    return m_stamp;
}

void frmMultiSMSLog::logAnswer(const QString& answer)
{
    m_pendingEntries.append(GatewayAnswer::logEntry(answer, stampNow()));
    scheduleShow();
}

void frmMultiSMSLog::logFailure(int row, const QString& number, const QString& name, const QString& reason)
{
    m_pendingEntries.append(GatewayAnswer::failureLogEntry(number, name, reason, stampNow()));
    if (row >= 0)
        m_failedRows.insert(row);
    if (m_finished) {
        // The last row's answer comes after the end; the closing figures follow it.
        m_pendingText = closingText();
        m_textPending = true;
    }
    scheduleShow();
}

QString frmMultiSMSLog::closingText() const
{
    if (m_failedRows.isEmpty())
        return QStringLiteral("Vorgang abgeschlossen");
    return QStringLiteral("Vorgang abgeschlossen – %1 von %2 SMS wurden nicht versendet.")
        .arg(m_failedRows.size())
        .arg(m_rows);
}

void frmMultiSMSLog::finishRun()
{
    m_finished = true;
    showNow();
    lblSend->setText(closingText());
}

void frmMultiSMSLog::setProgress(int value, const QString& text)
{
    m_pendingValue = value;
    m_pendingText = text;
    m_textPending = true;
    scheduleShow();
}

void frmMultiSMSLog::scheduleShow()
{
    if (!m_show->isActive())
        m_show->start();
}

void frmMultiSMSLog::showNow()
{
    m_show->stop();
    if (!m_pendingEntries.isEmpty()) {
        // Newest on top.
        qsizetype size = 0;
        for (const QString& entry : std::as_const(m_pendingEntries))
            size += entry.size();
        QString text;
        text.reserve(size);
        for (auto entry = m_pendingEntries.crbegin(); entry != m_pendingEntries.crend(); ++entry)
            text += *entry;
        m_pendingEntries.clear();
        QTextCursor cursor(txtLog->document());
        cursor.movePosition(QTextCursor::Start);
        cursor.insertText(text);
        layOutTop();
    }
    if (m_textPending) {
        lblSend->setText(m_pendingText);
        m_textPending = false;
    }
    // Last: the bar repaints the window at once, and so draws the log and the label with it in
    // one pass.
    if (m_pendingValue >= 0) {
        pBar->setValue(m_pendingValue);
        m_pendingValue = -1;
    }
}

void frmMultiSMSLog::layOutTop()
{
    // The new lines stand on top, where the log is read. Left to the paint, their layout would
    // find the wrapped ones taller than counted and have the scroll bar, and so the window, drawn
    // a second time; laid out here, one pass draws them.
    auto* layout = qobject_cast<QPlainTextDocumentLayout*>(txtLog->document()->documentLayout());
    if (!layout || txtLog->verticalScrollBar()->value() != 0)
        return;
    const int visibleLines = txtLog->viewport()->height() / qMax(1, txtLog->fontMetrics().lineSpacing()) + 1;
    int lines = 0;
    for (QTextBlock block = txtLog->document()->firstBlock(); block.isValid() && lines < visibleLines;
         block = block.next()) {
        layout->ensureBlockLayout(block);
        lines += qMax(1, block.lineCount());
    }
}

void frmMultiSMSLog::clearLog(int rows)
{
    m_failedRows.clear();
    m_rows = rows;
    m_finished = false;
    m_pendingEntries.clear();
    m_pendingValue = -1;
    m_textPending = false;
    txtLog->clear();
}

void frmMultiSMSLog::appendNote(const QString& note)
{
    QTextCursor cursor(txtLog->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("\r\n") + note);
}
