// SPDX-License-Identifier: GPL-3.0-or-later
#include "PasswordEcho.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>

#include <algorithm>

namespace {
bool isPasswordField(const QObject* object)
{
    const auto* field = qobject_cast<const QLineEdit*>(object);
    return field
        && (field->echoMode() == QLineEdit::Password || field->echoMode() == QLineEdit::PasswordEchoOnEdit
            || field->echoMode() == QLineEdit::NoEcho);
}

QString bullets(const QString& typed)
{
    // One bullet a character as the field draws it; a character outside the BMP is one too.
    const auto lowHalves = std::count_if(typed.cbegin(), typed.cend(), [](QChar c) { return c.isLowSurrogate(); });
    return QString(typed.size() - lowHalves, QChar(0x25CF));
}

void maskedUpdate(QAccessibleEvent* event);

// Whether the events are masked now, and who had them before (none: the platform's bridge).
bool masking = false;
QAccessible::UpdateHandler next = nullptr;

// Hands an event on to where it went before: to the handler installed before this one, or to the
// platform's bridge, for which this handler steps aside for the one call.
void handOn(QAccessibleEvent* event)
{
    if (next) {
        next(event);
        return;
    }
    if (event->type() == QAccessible::TableModelChanged) {
        // Qt has applied the change to the table's interface before the handler was asked; sent
        // again as it is, it would be applied twice. A reset is the same however often it comes.
        if (QAccessibleInterface* table = event->accessibleInterface()) {
            QAccessibleTableModelChangeEvent reset(table, QAccessibleTableModelChangeEvent::ModelReset);
            QAccessible::installUpdateHandler(nullptr);
            QAccessible::updateAccessibility(&reset);
            QAccessible::installUpdateHandler(maskedUpdate);
            return;
        }
    }
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(maskedUpdate);
}

void maskedUpdate(QAccessibleEvent* event)
{
    QObject* object = event->object();
    if (object && isPasswordField(object)) {
        switch (event->type()) {
        case QAccessible::TextInserted: {
            const auto* inserted = static_cast<QAccessibleTextInsertEvent*>(event);
            QAccessibleTextInsertEvent masked(object, inserted->changePosition(), bullets(inserted->textInserted()));
            handOn(&masked);
            return;
        }
        case QAccessible::TextRemoved: {
            const auto* removed = static_cast<QAccessibleTextRemoveEvent*>(event);
            QAccessibleTextRemoveEvent masked(object, removed->changePosition(), bullets(removed->textRemoved()));
            handOn(&masked);
            return;
        }
        case QAccessible::TextUpdated: {
            const auto* updated = static_cast<QAccessibleTextUpdateEvent*>(event);
            QAccessibleTextUpdateEvent masked(object, updated->changePosition(), bullets(updated->textRemoved()),
                                              bullets(updated->textInserted()));
            handOn(&masked);
            return;
        }
        default:
            break;
        }
    }
    handOn(event);
}
} // namespace

namespace PasswordEcho {
void install()
{
    // Only while a password field has the keyboard, so that every other event reaches the
    // bridge as Qt sends it.
    QObject::connect(qApp, &QApplication::focusChanged, qApp, [](QWidget*, QWidget* now) {
        const bool mask = isPasswordField(now);
        if (mask && !masking)
            next = QAccessible::installUpdateHandler(maskedUpdate);
        else if (!mask && masking) {
            // A handler installed since stays.
            if (const auto current = QAccessible::installUpdateHandler(next); current != maskedUpdate)
                QAccessible::installUpdateHandler(current);
        }
        masking = mask;
    });
}
} // namespace PasswordEcho
