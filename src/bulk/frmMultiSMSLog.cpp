// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmMultiSMSLog.h"

#include "sending/GatewayAnswer.h"
#include "toolkit/Clock.h"
#include "toolkit/DefaultInstance.h"
#include "toolkit/LogView.h"
#include "toolkit/mAni2.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextDocumentLayout>
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
    txtLog = new LogView(this);
    txtLog->setObjectName(QStringLiteral("txtLog"));
    txtLog->setAccessibleName(QStringLiteral("Nachrichten vom Gateway"));
    txtLog->setReadOnly(true);
    // Read with the arrow keys, line by line, as a screen reader reads a text: a caret of its own.
    txtLog->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    Label1->setBuddy(txtLog);
    layout->addWidget(txtLog, 1);

    cmdClose = new QPushButton(QStringLiteral("Abbrechen"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdResend = new QPushButton(QStringLiteral("Nicht versendete erneut senden"), this);
    cmdResend->setObjectName(QStringLiteral("cmdResend"));
    cmdResend->hide();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdResend);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    layout->addLayout(buttons);
    connect(cmdClose, &QPushButton::clicked, this, &frmMultiSMSLog::cmdClose_Click);
    connect(cmdResend, &QPushButton::clicked, this, &frmMultiSMSLog::cmdResend_Click);

    m_show = new QTimer(this);
    m_show->setSingleShot(true);
    m_show->setInterval(50);
    connect(m_show, &QTimer::timeout, this, &frmMultiSMSLog::showNow);

    // Room for a dozen log lines of the desktop's font, whatever its size.
    const QFontMetrics metrics = fontMetrics();
    resize(qMax(520, metrics.averageCharWidth() * 80), qMax(380, metrics.lineSpacing() * 24));
    // Played from the load on; a later run finds it stopped, and so it stays.
    mAni2::startAnimation(ani, LogClip);
}

frmMultiSMSLog::~frmMultiSMSLog() = default;

void frmMultiSMSLog::cmdClose_Click()
{
    if (cmdClose->text() == QStringLiteral("Abbrechen")) {
        abortRequested = true;
        if (m_sending)
            m_sending->abortRun();
        appendNote(QStringLiteral("!!!! Abbruch durch User"));
    } else {
        hide();
    }
}

void frmMultiSMSLog::cmdResend_Click()
{
    emit resendRequested(m_notSentRows, m_unknownRows);
}

void frmMultiSMSLog::closeEvent(QCloseEvent* event)
{
    // The frame's close box does what the button does: during a run it stops the run and the
    // window stays to show its end; afterwards it hides the window, which is never unloaded.
    event->ignore();
    cmdClose_Click();
}

void frmMultiSMSLog::observe(SendingSession* sending)
{
    if (m_sending == sending)
        return;
    if (m_sending)
        m_sending->disconnect(this);
    m_sending = sending;
    connect(sending, &SendingSession::runStarted, this, &frmMultiSMSLog::runStarted);
    connect(sending, &SendingSession::rowPassed, this, &frmMultiSMSLog::rowPassed);
    connect(sending, &SendingSession::delivered, this, &frmMultiSMSLog::delivered);
    connect(sending, &SendingSession::finished, this, &frmMultiSMSLog::smsFinished);
    connect(sending, &SendingSession::runStopped, this, &frmMultiSMSLog::runStopped);
    connect(sending, &SendingSession::runFinished, this, &frmMultiSMSLog::runFinished);
}

void frmMultiSMSLog::runStarted(int run, int rows)
{
    m_run = run;
    show();
    raise();
    clearLog(rows);
    abortRequested = false;
    pBar->setMinimum(0);
    pBar->setValue(0);
    pBar->setMaximum(rows + 3);
}

void frmMultiSMSLog::rowPassed(int run, int position, int row, bool stopped)
{
    if (run != m_run)
        return;
    if (stopped)
        m_notSentRows.append(row);
    // The position starts at 1 and is raised after each row, so the bar stands one ahead.
    setProgress(position + 1, stopped ? QStringLiteral("Wird abgebrochen bitte warten ...") : progressText(position));
}

QString frmMultiSMSLog::progressText(int position) const
{
    // A row whose request never left isn't counted as sent, nor one on the stop list.
    return QStringLiteral("Es wurden bereits %1 von %2 SMS versendet.")
        .arg(position - m_lostOnTheWay - m_stopListed)
        .arg(m_rows);
}

void frmMultiSMSLog::delivered(const SendingSession::Delivery& delivery)
{
    if (delivery.answered) {
        logAnswer(delivery.answer);
        return;
    }
    if (delivery.state == SendOutcome::State::Sent)
        return; // a job file written: there is no answer to log
    const QString stamp = stampNow();
    if (delivery.state == SendOutcome::State::Unknown) {
        m_pendingEntries.append(
            GatewayAnswer::unknownLogEntry(delivery.number, delivery.name, delivery.failure, stamp));
    } else {
        m_pendingEntries.append(
            GatewayAnswer::failureLogEntry(delivery.number, delivery.name, delivery.failure, stamp));
    }
    scheduleShow();
}

void frmMultiSMSLog::smsFinished(const SendingSession::Outcome& outcome)
{
    // An answer to an earlier run is logged, but counts in that run only.
    if (outcome.run != m_run || outcome.run == 0)
        return;
    if (outcome.stopListed) {
        // Kept back on purpose: counted apart, and not offered to be sent again.
        ++m_stopListed;
        m_pendingEntries.append(GatewayAnswer::stopListLogEntry(outcome.number, outcome.name, stampNow()));
        scheduleShow();
    } else if (outcome.state == SendOutcome::State::Sent) {
        ++m_sent;
    } else if (outcome.state == SendOutcome::State::Unknown) {
        m_unknownRows.append(outcome.row);
    } else {
        if (outcome.state == SendOutcome::State::Unreached)
            ++m_lostOnTheWay;
        m_notSentRows.append(outcome.row);
    }
    if (m_finished) {
        // The last rows' answers come after the end; the closing figures follow them.
        m_pendingText = closingText();
        m_textPending = true;
        cmdResend->setVisible(!m_notSentRows.isEmpty() || !m_unknownRows.isEmpty());
        txtLog->setAccessibleDescription(m_pendingText);
        cmdClose->setAccessibleDescription(m_pendingText);
        scheduleShow();
    }
}

void frmMultiSMSLog::runStopped(int run, const QString& note)
{
    if (run == m_run)
        appendNote(note);
}

void frmMultiSMSLog::runFinished(int run)
{
    if (run != m_run)
        return;
    showNow();
    pBar->setValue(pBar->maximum());
    cmdClose->setText(QStringLiteral("Schliessen"));
    finishRun();
    mAni2::stopAnimation(ani);
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

QString frmMultiSMSLog::closingText() const
{
    const int notSent = int(m_notSentRows.size());
    const int unknown = int(m_unknownRows.size());
    if (notSent == 0 && unknown == 0 && m_stopListed == 0)
        return QStringLiteral("Vorgang abgeschlossen");
    QString text = QStringLiteral("Vorgang abgeschlossen – %1 von %2 SMS versendet").arg(m_sent).arg(m_rows);
    if (notSent > 0)
        text += QStringLiteral(", %1 nicht versendet").arg(notSent);
    if (m_stopListed > 0)
        text += QStringLiteral(", %1 gesperrt (Sperrliste)").arg(m_stopListed);
    if (unknown > 0)
        text += QStringLiteral(", %1 ohne Antwort (möglicherweise versendet)").arg(unknown);
    return text + u'.';
}

void frmMultiSMSLog::finishRun()
{
    m_finished = true;
    showNow();
    lblSend->setText(closingText());
    cmdResend->setVisible(!m_notSentRows.isEmpty() || !m_unknownRows.isEmpty());
    announceEnd();
}

void frmMultiSMSLog::announceEnd()
{
    // A screen reader speaks what takes the focus, with its description: the run's end goes with the
    // log and with the button that now closes the window, and the focus goes to the button. A
    // window not yet active gives the log the focus when it becomes so.
    txtLog->setAccessibleDescription(lblSend->text());
    cmdClose->setAccessibleDescription(lblSend->text());
    if (isActiveWindow())
        cmdClose->setFocus(Qt::OtherFocusReason);
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
    m_rows = rows;
    m_sent = 0;
    m_lostOnTheWay = 0;
    m_stopListed = 0;
    m_notSentRows.clear();
    m_unknownRows.clear();
    cmdResend->hide();
    txtLog->setAccessibleDescription(QString());
    cmdClose->setAccessibleDescription(QString());
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
