// SPDX-License-Identifier: GPL-3.0-or-later
#include "Accessibility.h"

#include "PasswordEcho.h"

#include <QAbstractItemView>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QWindow>

namespace {
// The application's children are the windows a user can reach: Qt lists every top-level window,
// also hidden ones and the web engine's render window "Offscreen", which is never shown.
class Application : public QAccessibleApplication
{
public:
    int childCount() const override { return int(windows().size()); }
    QAccessibleInterface* child(int index) const override
    {
        const QList<QObject*> list = windows();
        return index >= 0 && index < list.size() ? QAccessible::queryAccessibleInterface(list.at(index)) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child ? int(windows().indexOf(child->object())) : -1;
    }

private:
    static QList<QObject*> windows()
    {
        QList<QObject*> list;
        for (QWindow* window : QGuiApplication::topLevelWindows()) {
            if (!window->isVisible() || window->type() == Qt::Popup || window->type() == Qt::Desktop)
                continue;
            if (QAccessibleInterface* root = window->accessibleRoot(); root && root->object())
                list.append(root->object());
        }
        return list;
    }
};

// A combo box with its chosen entry as value. On Linux Qt gives a box that can't be edited the
// chosen entry as its name and offers no text and no selection, so Orca finds neither the box's
// own name (it reads the label instead, or the entry) nor the chosen entry. Here the name is the
// accessible name, and the chosen entry is the box's text, which Orca reads as its value. A box
// that can be edited has its text field as second child, which Orca reads instead; the interface
// is made before the box's owner may make it editable, so both kinds are served.
class ComboBox : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit ComboBox(QComboBox* box)
        : QAccessibleWidget(box, QAccessible::ComboBox)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return box()->isEditable() ? nullptr : static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return box()->currentText();
        return QAccessibleWidget::text(t);
    }

    // A name given to the box wins over the label beside it, as it does on other platforms.
    QList<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(QAccessible::Relation match) const override
    {
        auto list = QAccessibleWidget::relations(match);
        if (!box()->accessibleName().isEmpty())
            list.removeIf([](const auto& relation) { return relation.second & QAccessible::Label; });
        return list;
    }

    int childCount() const override { return box()->lineEdit() ? 2 : 1; }
    QAccessibleInterface* child(int index) const override
    {
        if (index == 0)
            return QAccessible::queryAccessibleInterface(box()->view());
        if (index == 1 && box()->lineEdit())
            return QAccessible::queryAccessibleInterface(box()->lineEdit());
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        if (!child)
            return -1;
        if (child->object() == box()->view())
            return 0;
        return box()->lineEdit() && child->object() == box()->lineEdit() ? 1 : -1;
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.expandable = true;
        s.expanded = box()->view()->isVisible();
        s.editable = box()->isEditable();
        return s;
    }

    QStringList actionNames() const override
    {
        return QStringList { showMenuAction(), pressAction() } + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override
    {
        if (action == showMenuAction() || action == pressAction()) {
            if (box()->view()->isVisible())
                box()->hidePopup();
            else
                box()->showPopup();
            return;
        }
        QAccessibleWidget::doAction(action);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    // The text: the chosen entry, read only.
    QString text(int startOffset, int endOffset) const override
    {
        return box()->currentText().mid(startOffset, endOffset - startOffset);
    }
    int characterCount() const override { return int(box()->currentText().size()); }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    void selection(int, int* startOffset, int* endOffset) const override { *startOffset = *endOffset = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override { }
    QString attributes(int offset, int* startOffset, int* endOffset) const override
    {
        *startOffset = *endOffset = offset;
        return {};
    }

private:
    QComboBox* box() const { return static_cast<QComboBox*>(widget()); }
};

// A tool button without a menu (the keys of a tool bar, the options bar's panels), pressed or
// toggled through assistive technology, clicks once the request has been answered, as Qt's push
// buttons do. Qt's own interface clicks while the request waits for its answer, so a key that
// opens a modal window (a question, a file dialog) left the screen reader without an answer until
// that window closed, and it gave up.
class ToolButton : public QAccessibleWidget
{
public:
    explicit ToolButton(QToolButton* button)
        : QAccessibleWidget(button, QAccessible::Button)
    {
    }

    // A switch (the options bar's panels) is a check box, as Qt has it.
    QAccessible::Role role() const override
    {
        return button()->isCheckable() ? QAccessible::CheckBox : QAccessible::Button;
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name && button()->accessibleName().isEmpty())
            return button()->text().remove(QLatin1Char('&'));
        return QAccessibleWidget::text(t);
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.pressed = button()->isDown();
        s.checkable = button()->isCheckable();
        s.checked = button()->isChecked();
        return s;
    }

    QStringList actionNames() const override
    {
        const QString action = button()->isCheckable() ? toggleAction() : pressAction();
        return QStringList { action } + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override
    {
        if ((action == pressAction() || action == toggleAction()) && button()->isEnabled()) {
            button()->animateClick();
            return;
        }
        QAccessibleWidget::doAction(action);
    }

private:
    QToolButton* button() const { return static_cast<QToolButton*>(widget()); }
};

QAccessibleInterface* factory(const QString& className, QObject* object)
{
    if (object == qApp)
        return new Application;
    if (!object || !object->isWidgetType())
        return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    // A window of its own made of a plain QWidget is a frame named by its title (the balloon of
    // CTooltip a tool tip), not a filler, which Orca passes over as it does any panel.
    if (className == u"QWidget" && widget->isWindow() && widget->windowType() != Qt::Popup)
        return new QAccessibleWidget(widget,
                                     widget->windowType() == Qt::ToolTip ? QAccessible::ToolTip : QAccessible::Window);
    if (className == u"QComboBox")
        return new ComboBox(static_cast<QComboBox*>(widget));
    if (className == u"QToolButton") {
        auto* button = static_cast<QToolButton*>(widget);
        const bool hasMenu = button->menu() || (button->defaultAction() && button->defaultAction()->menu());
        if (!hasMenu)
            return new ToolButton(button);
    }
    return nullptr;
}
} // namespace

namespace Accessibility {
void install()
{
    QAccessible::installFactory(factory);
    PasswordEcho::install();
}
} // namespace Accessibility
