// SPDX-License-Identifier: GPL-3.0-or-later
#include "PasswordEcho.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QString>

namespace {
bool isPasswordField(const QObject* object)
{
    const auto* field = qobject_cast<const QLineEdit*>(object);
    return field && field->echoMode() != QLineEdit::Normal;
}

// What the field shows for the text: a mark for each character (each UTF-16 unit, as the field
// draws it and as positions in the events count), nothing where it shows nothing.
QString shown(const QObject* field, const QString& text)
{
    if (static_cast<const QLineEdit*>(field)->echoMode() == QLineEdit::NoEcho)
        return {};
    return QString(text.size(), QChar(0x25CF));
}

void maskedUpdate(QAccessibleEvent* event);

// Who had the events before this handler (none: the platform's bridge); never this handler.
QAccessible::UpdateHandler next = nullptr;
// Why the events are masked now: the focus, and each text being set.
int holders = 0;
bool focusHeld = false;

QAccessible::UpdateHandler installed()
{
    const QAccessible::UpdateHandler handler = QAccessible::installUpdateHandler(nullptr);
    QAccessible::installUpdateHandler(handler);
    return handler;
}

void hold()
{
    if (holders++ == 0 && installed() != maskedUpdate)
        next = QAccessible::installUpdateHandler(maskedUpdate);
}

void release()
{
    // A handler installed since stays where it is.
    if (--holders == 0 && installed() == maskedUpdate)
        QAccessible::installUpdateHandler(next);
}

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
        // again as it is, it would be applied twice. A reset is the same however often it comes
        // (a screen reader then asks the table's cells afresh).
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
            QAccessibleTextInsertEvent masked(object, inserted->changePosition(),
                                              shown(object, inserted->textInserted()));
            handOn(&masked);
            return;
        }
        case QAccessible::TextRemoved: {
            const auto* removed = static_cast<QAccessibleTextRemoveEvent*>(event);
            QAccessibleTextRemoveEvent masked(object, removed->changePosition(), shown(object, removed->textRemoved()));
            handOn(&masked);
            return;
        }
        case QAccessible::TextUpdated: {
            const auto* updated = static_cast<QAccessibleTextUpdateEvent*>(event);
            QAccessibleTextUpdateEvent masked(object, updated->changePosition(), shown(object, updated->textRemoved()),
                                              shown(object, updated->textInserted()));
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
        const bool password = isPasswordField(now);
        if (password && !focusHeld)
            hold();
        else if (!password && focusHeld)
            release();
        focusHeld = password;
    });
}

void setText(QLineEdit* field, const QString& text)
{
    hold();
    field->setText(text);
    release();
}
} // namespace PasswordEcho
