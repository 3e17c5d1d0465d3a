// SPDX-License-Identifier: GPL-3.0-or-later
#include "BulkRun.h"

#include "RecipientTable.h"
#include "frmMultiSMSLog.h"
#include "sending/RecipientText.h"
#include "toolkit/mAni2.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

namespace {
bool& running()
{
    static bool flag = false;
    return flag;
}

int& current()
{
    static int row = -1;
    return row;
}
} // namespace

bool BulkRun::isRunning()
{
    return running();
}

int BulkRun::currentRow()
{
    return current();
}

void BulkRun::run(const RecipientTable* table, frmMultiSMSLog* log, const Host& host)
{
    if (running())
        return;
    running() = true;
    QPointer<const RecipientTable> rows(table);
    QPointer<frmMultiSMSLog> window(log);

    const int count = rows ? rows->rowCount() : 0;
    if (!log->isVisible() && host.placeWindow)
        host.placeWindow(log);
    log->show();
    log->raise();
    log->clearLog(count);
    log->abortRequested = false;
    log->pBar->setMinimum(0);
    log->pBar->setValue(0);
    log->pBar->setMaximum(count + 3);

    int position = 1;
    QString progressText;
    QElapsedTimer sinceYield;
    sinceYield.start();
    for (int row = 0; row < count; ++row) {
        if (!host.alive() || !window)
            break;
        if (window->abortRequested || !rows || row >= rows->rowCount()) {
            progressText = QStringLiteral("Wird abgebrochen bitte warten ...");
        } else {
            const RecipientRow r = rows->rows().at(row);
            const std::optional<RecipientText::RowMessage> message
                = RecipientText::rowMessage(host.messageText(), r.Name, r.Nummer, r.Freitext1, r.Freitext2);
            if (!message) {
                window->appendNote(RecipientText::missingNumberNote(row + 1, r.Name));
                break;
            }
            current() = row;
            host.sendMessage(message->number, message->text, message->name);
            if (!host.alive() || !window)
                break;
            // A row whose request brought no answer isn't counted as sent.
            progressText = QStringLiteral("Es wurden bereits %1 von %2 SMS versendet.")
                               .arg(position - window->failedRows())
                               .arg(count);
        }
        ++position;
        window->setProgress(position, progressText);
        // Where no request waits (the server folder), the windows still get their turn here, often
        // enough to stay live, seldom enough not to slow the run.
        if (sinceYield.elapsed() >= 15) {
            QCoreApplication::processEvents();
            sinceYield.restart();
        }
    }

    if (window) {
        window->showNow();
        window->pBar->setValue(window->pBar->maximum());
        window->cmdClose->setText(QStringLiteral("Schliessen"));
        window->finishRun();
        mAni2::stopAnimation(window->ani);
    }
    running() = false;
    current() = -1;
    if (host.alive())
        host.refreshCredits();
}
