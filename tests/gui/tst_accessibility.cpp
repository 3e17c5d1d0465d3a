// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen reader meets in the program's windows: every control it can reach has a name,
// and working a control through it does what a click does.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "WindowsByName.h"
#include "account/frmFirstTime.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "schedule/frmTimeControl.h"
#include "settings/cOptionen.h"
#include "settings/frmOptionen.h"
#include "toolkit/Accessibility.h"
#include "toolkit/LogView.h"
#include "toolkit/PasswordEcho.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMetaEnum>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace {
// The roles a user works with; their accessible name is all a screen reader can say of them.
bool isControl(QAccessibleInterface* node)
{
    static const QList<QAccessible::Role> controls { QAccessible::Button,       QAccessible::CheckBox,
                                                     QAccessible::RadioButton,  QAccessible::ComboBox,
                                                     QAccessible::EditableText, QAccessible::ButtonMenu,
                                                     QAccessible::SpinBox,      QAccessible::Slider,
                                                     QAccessible::PageTab,      QAccessible::Link };
    return controls.contains(node->role()) && !node->state().disabled;
}

// The window's tree depth first, without what the user cannot see.
void visit(QAccessibleInterface* node, const std::function<void(QAccessibleInterface*)>& each)
{
    if (!node || node->state().invisible)
        return;
    each(node);
    for (int i = 0; i < node->childCount(); ++i)
        visit(node->child(i), each);
}

// The control as a failure message names it: the nearest object name, its class and its role.
QString describe(QAccessibleInterface* node)
{
    QObject* o = node->object();
    const QString className = QString::fromLatin1(o->metaObject()->className());
    while (o->objectName().isEmpty() && o->parent())
        o = o->parent();
    return u"%1 (%2, %3)"_s.arg(o->objectName(), className,
                                QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(node->role())));
}

// The window's visible, enabled control that a screen reader announces by this name.
QAccessibleInterface* control(QWidget* window, const QString& name)
{
    QAccessibleInterface* found = nullptr;
    visit(QAccessible::queryAccessibleInterface(window), [&](QAccessibleInterface* node) {
        if (!found && isControl(node) && node->text(QAccessible::Name) == name)
            found = node;
    });
    return found;
}

// Works the named control as assistive technology does: toggles a switch, presses anything else.
bool act(QWidget* window, const QString& name)
{
    QAccessibleInterface* node = control(window, name);
    QAccessibleActionInterface* actions = node ? node->actionInterface() : nullptr;
    const QStringList offered = actions ? actions->actionNames() : QStringList();
    const QString toggle = QAccessibleActionInterface::toggleAction();
    const QString action = offered.contains(toggle) ? toggle : QAccessibleActionInterface::pressAction();
    if (!offered.contains(action))
        return false;
    actions->doAction(action);
    return true;
}
} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;
    std::unique_ptr<MessageBoxScript> m_boxes;

private slots:
    // No screen reader is attached here; switched on as one would, so widgets report their changes.
    void initTestCase()
    {
        Accessibility::install();
        QAccessible::setActive(true);
    }

    void init()
    {
        m_boxes = std::make_unique<MessageBoxScript>();
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
    }

    void cleanup()
    {
        m_harness.reset();
        m_boxes.reset();
    }

    void everyReachableControlHasAName_data()
    {
        // The window, then the buttons clicked one by one; the window is walked after each.
        QTest::addColumn<QString>("steps");
        QTest::newRow("main window") << "frmMain tbMultiSMS";
        QTest::newRow("MultiSMS") << "frmMultiSMS";
        QTest::newRow("MultiSMS log") << "frmMultiSMSLog";
        QTest::newRow("settings") << "frmOptionen tbKontodaten tbVersandoperationen tbQuellboteServer tbProxy "
                                     "tbAdressbuch tbSperrliste";
        QTest::newRow("scheduling") << "frmTimeControl cbRepetition obEndingDate obSeriesWorkDay obMonthly "
                                       "obSeriesWMonth obYearly obSeriesYearWMonth";
        QTest::newRow("first start") << "frmFirstTime cmdNext optNewOld1";
    }

    void everyReachableControlHasAName()
    {
        QFETCH(QString, steps);
        QStringList choices = steps.split(u' ');
        const QString window = choices.takeFirst();
        std::unique_ptr<QWidget> owned;
        QWidget* shown = openWindow(m_harness, window, owned);
        QVERIFY2(shown, qPrintable(window));
        shown->show();

        QStringList nameless;
        int controls = 0;
        const auto walk = [&] {
            visit(QAccessible::queryAccessibleInterface(shown), [&](QAccessibleInterface* node) {
                if (!isControl(node))
                    return;
                ++controls;
                if (node->text(QAccessible::Name).trimmed().isEmpty() && !nameless.contains(describe(node)))
                    nameless.append(describe(node));
            });
        };
        walk();
        for (const QString& choice : choices) {
            auto* button = in<QAbstractButton>(shown, choice.toLatin1().constData());
            QVERIFY2(button, qPrintable(choice));
            button->click();
            walk();
        }
        QVERIFY(controls > 0);
        // The editor inside an editable combo box counts too: it is what a screen reader is told
        // has the focus while the box has it.
        QVERIFY2(nameless.isEmpty(), qPrintable(u"nameless: "_s + nameless.join(u"; "_s)));
    }

    // The pane buttons of the settings say which pane is shown, and pressing one shows its pane.
    void settingsPaneButtonsSayWhichPaneIsShown()
    {
        frmOptionen dialog(m_harness.loadMain());
        dialog.show();
        const auto chosen = [&dialog] {
            QStringList names;
            visit(QAccessible::queryAccessibleInterface(&dialog), [&names](QAccessibleInterface* node) {
                if (node->role() == QAccessible::Button && node->state().checked)
                    names.append(node->text(QAccessible::Name));
            });
            return names;
        };
        QCOMPARE(chosen(), QStringList { u"Kontodaten"_s });
        QVERIFY(act(&dialog, u"Proxy-Einstellungen"_s));
        QTRY_COMPARE(chosen(), QStringList { u"Proxy-Einstellungen"_s });
        QVERIFY(in<QWidget>(&dialog, "boxProxyConfiguration")->isVisible());
    }

    // What a screen reader lists as the program's windows: each shown window a frame named by its
    // title, a hidden one not at all.
    void windowsAreFramesWhileShown()
    {
        m_harness.loadMain();
        QAccessibleInterface* application = QAccessible::queryAccessibleInterface(qApp);
        const auto windows = [application] {
            QStringList list;
            for (int i = 0; i < application->childCount(); ++i) {
                QAccessibleInterface* window = application->child(i);
                list.append(QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(window->role()))
                            + u' ' + window->text(QAccessible::Name));
            }
            return list.join(u'|');
        };
        QCOMPARE(windows(), u"Window Quellbote"_s);
        m_harness.child<QAbstractButton>("tbMultiSMS")->click();
        QCOMPARE(windows(), u"Window Quellbote|Window MultiSMS"_s);
        m_harness.child<QAbstractButton>("tbMultiSMS")->click();
        QCOMPARE(windows(), u"Window Quellbote"_s);
    }

    // A combo box that can't be edited says its own name, not its label's or its entry's, and
    // offers the chosen entry as its text, which Orca reads as its value.
    void comboBoxNamesItselfAndItsEntry()
    {
        m_harness.loadMain();
        auto* box = m_harness.child<QComboBox>("cmbVorwahl");
        QAccessibleInterface* node = QAccessible::queryAccessibleInterface(box);
        QVERIFY(node->textInterface());
        QCOMPARE(node->textInterface()->text(0, -1), QString());
        box->setCurrentIndex(1);
        QCOMPARE(node->text(QAccessible::Name), u"Vorwahl"_s);
        QCOMPARE(node->textInterface()->text(0, node->textInterface()->characterCount()), box->currentText());
        QVERIFY(!box->currentText().isEmpty());
        QVERIFY(node->relations(QAccessible::Label).isEmpty());
    }

    // Leaving "Rufnummer" without a number brings the focus back, and a screen reader hears why
    // with the field; a number lets the focus go and silences the warning.
    void numberThatKeepsTheFocusSaysWhy_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("description"); // empty: the focus moves on
        QTest::newRow("empty") << QString() << u"Bitte geben Sie eine Rufnummer ein."_s;
        QTest::newRow("a letter") << u"171x"_s << u"Die Rufnummer darf nur aus Ziffern bestehen."_s;
        QTest::newRow("a number") << u"1711234567"_s << QString();
    }

    void numberThatKeepsTheFocusSaysWhy()
    {
        QFETCH(QString, typed);
        QFETCH(QString, description);
        frmMain* main = m_harness.loadMain();
        main->show();
        QVERIFY(QTest::qWaitForWindowActive(main));
        auto* number = m_harness.child<QLineEdit>("txtNummer");
        number->setFocus();
        QTest::keyClicks(number, typed);
        QTest::keyClick(number, Qt::Key_Tab);
        QTRY_COMPARE(number->hasFocus(), !description.isEmpty());
        // Without the warning the tooltip describes the field.
        QCOMPARE(QAccessible::queryAccessibleInterface(number)->text(QAccessible::Description),
                 description.isEmpty() ? number->toolTip() : description);
        if (description.isEmpty())
            return;
        QTest::keyClicks(number, u"0171"_s);
        QCOMPARE(number->accessibleDescription(), typed.isEmpty() ? QString() : description);
    }

    void mainWindowControlsActLikeAClick_data()
    {
        // What the control did, as the observations below put it, separated by "|".
        QTest::addColumn<QString>("control");
        QTest::addColumn<bool>("senderNamed");
        QTest::addColumn<QString>("happened");
        QTest::newRow("send with empty fields")
            << "Senden" << false
            << "box: Bitte korrigieren Sie die rot markierten Felder.|marked: cmbVorwahl|marked: txtSMS";
        QTest::newRow("MultiSMS") << "MultiSMS" << false << "window: frmMultiSMS";
        QTest::newRow("settings") << "Einstellungen" << false << "modal: frmOptionen";
        QTest::newRow("scheduling") << "Terminversand" << false << "modal: frmTimeControl";
        QTest::newRow("new signature") << "Neue Signatur" << false << "modal: frmSignaturen";
        QTest::newRow("address book") << "Adressbuch" << false << "modal: frmAddressBookPicker";
        // The option panels switch the options and the price; replies are on to begin with.
        QTest::newRow("sender identity") << "Absenderkennung" << true << "price: 14|Absenderkennung: on|Antwort: off";
        QTest::newRow("sender identity without a name")
            << "Absenderkennung" << false
            << "box: Sie haben keine Absenderkennung eingegeben.|window: frmOptionen|price: 14|Absenderkennung: on"
               "|Antwort: off";
        QTest::newRow("replies") << "Antwort" << false << "price: 10|Antwort: off";
        QTest::newRow("hand-in mail") << "Einlieferung" << false << "Einlieferung: on";
    }

    void mainWindowControlsActLikeAClick()
    {
        QFETCH(QString, control);
        QFETCH(bool, senderNamed);
        QFETCH(QString, happened);
        Options().setAbsenderkennung(senderNamed ? u"Tarnholt"_s : QString());
        Options().setIsAntwortEnabled(true);
        frmMain* main = m_harness.loadMain();
        if (happened.startsWith(u"box: "_s))
            m_boxes->answer(MessageBox::Answer::Ok);
        // Each modal window that comes is noted and sent away again.
        QStringList modals;
        QTimer closer;
        connect(&closer, &QTimer::timeout, this, [&modals] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                modals.append(u"modal: "_s + dialog->objectName());
                dialog->reject();
            }
        });
        closer.start(20);
        const QWidgetList before = QApplication::topLevelWidgets();
        const auto observed = [&] {
            QStringList seen;
            for (const MessageBox::Box& box : m_boxes->shown())
                seen.append(u"box: "_s + box.text.section(u"\r\n"_s, 0, 0));
            seen += modals;
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->isVisible() && !before.contains(window))
                    seen.append(u"window: "_s + window->objectName());
            }
            for (QWidget* field : main->findChildren<QWidget*>()) {
                if (field->styleSheet().contains(u"rgb(255, 192, 192)"_s))
                    seen.append(u"marked: "_s + field->objectName());
            }
            seen.append(u"price: "_s + m_harness.child<QLineEdit>("txtKostenProSMS")->text());
            for (const auto& [panel, on] : { std::pair { "Absenderkennung", Options().isAbsenderkennung() },
                                             std::pair { "Antwort", Options().isAntwortEnabled() },
                                             std::pair { "Einlieferung", Options().isControlEmail() } })
                seen.append(QString::fromLatin1(panel) + (on ? u": on"_s : u": off"_s));
            return seen;
        };
        const QStringList initially = observed(); // an empty number is marked from the start
        QVERIFY(act(main, control));
        QTRY_VERIFY(observed() != initially);
        QStringList news = observed();
        for (const QString& old : initially)
            news.removeOne(old);
        QCOMPARE(news.join(u'|'), happened);
    }

    // While a password field has the keyboard, or while the program sets its text, its text
    // reaches a screen reader as the field shows it, inserted, removed or replaced; other fields
    // keep their letters. (Without a screen reader Qt sends no events here, so they are sent as
    // Qt would, to the handler that is installed.)
    void passwordIsNotEchoed()
    {
        static QStringList told;
        told.clear();
        const QAccessible::UpdateHandler screenReader = [](QAccessibleEvent* event) {
            if (event->type() == QAccessible::TextInserted)
                told << static_cast<QAccessibleTextInsertEvent*>(event)->textInserted();
            else if (event->type() == QAccessible::TextRemoved)
                told << u'-' + static_cast<QAccessibleTextRemoveEvent*>(event)->textRemoved();
            else if (event->type() == QAccessible::TextUpdated)
                told << u'=' + static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted();
        };
        QAccessible::installUpdateHandler(screenReader);
        const auto uninstall = qScopeGuard([] { QAccessible::installUpdateHandler(nullptr); });
        const auto send = [](QAccessibleEvent* event) {
            const QAccessible::UpdateHandler now = QAccessible::installUpdateHandler(nullptr);
            QAccessible::installUpdateHandler(now);
            now(event);
        };
        QWidget form;
        QLineEdit name(&form);
        QLineEdit password(&form);
        password.setEchoMode(QLineEdit::Password);
        password.move(0, 40);
        QLineEdit hidden(&form);
        hidden.setEchoMode(QLineEdit::NoEcho);
        hidden.move(0, 80);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        password.setFocus();
        QAccessibleTextInsertEvent typed(&password, 0, u"gé😀"_s);
        send(&typed);
        QAccessibleTextRemoveEvent erased(&password, 2, u"😀"_s);
        send(&erased);
        QAccessibleTextInsertEvent elsewhere(&name, 0, u"Ab"_s);
        send(&elsewhere);
        name.setFocus();
        QAccessibleTextInsertEvent afterwards(&name, 2, u"c"_s);
        send(&afterwards);
        QAccessibleTextUpdateEvent stored(&password, 0, QString(), u"geheim"_s);
        send(&stored);
        // The program's own setting of a stored password: the field sends while the text is set.
        QObject::connect(&password, &QLineEdit::textChanged, &password, [&](const QString& text) {
            QAccessibleTextUpdateEvent update(&password, 0, QString(), text);
            send(&update);
        });
        PasswordEcho::setText(&password, u"geheim"_s);
        hidden.setFocus();
        QAccessibleTextInsertEvent unseen(&hidden, 0, u"x"_s);
        send(&unseen);
        QCOMPARE(told, (QStringList { u"●●●●"_s, u"-●●"_s, u"Ab"_s, u"c"_s, u"=geheim"_s, u"=●●●●●●"_s, QString() }));
        name.setFocus();
        QVERIFY(QAccessible::installUpdateHandler(nullptr) == screenReader);
    }

    // A screen reader's flat review reads the log by where its lines are drawn: each line as
    // drawn (a long answer wraps) below the one before, also when the log is scrolled.
    void logLinesStandWhereTheyAreDrawn()
    {
        LogView log;
        log.resize(320, 200);
        QStringList answers;
        for (int i = 1; i <= 30; ++i)
            answers << u"25.11.2026 10:00:%1 - Die SMS an 0049171%1 wurde erfolgreich an das Gateway übermittelt."_s
                           .arg(i, 2, 10, QChar(u'0'));
        log.setPlainText(answers.join(u'\n'));
        log.show();
        QVERIFY(QTest::qWaitForWindowExposed(&log));
        log.verticalScrollBar()->setValue(5);
        QCoreApplication::processEvents();
        QAccessibleTextInterface* text = QAccessible::queryAccessibleInterface(&log)->textInterface();
        QVERIFY(text);
        const QRect shown(log.viewport()->mapToGlobal(QPoint(0, 0)), log.viewport()->size());
        int offset = text->offsetAtPoint(shown.topLeft() + QPoint(4, 4));
        QVERIFY(offset >= 0);
        int lines = 0;
        int wrapped = 0;
        int above = std::numeric_limits<int>::min();
        for (;;) {
            int start = 0;
            int end = 0;
            const QString line = text->textAtOffset(offset, QAccessible::LineBoundary, &start, &end);
            const QRect at = text->characterRect(start);
            // Up to the last line wholly in sight.
            if (!shown.contains(at))
                break;
            QVERIFY2(at.top() > above, qPrintable(line));
            const int hit = text->offsetAtPoint(at.center());
            QVERIFY2(hit >= start && hit < end, qPrintable(line));
            wrapped += line.endsWith(u'\n') ? 0 : 1;
            above = at.top();
            offset = end;
            ++lines;
        }
        QVERIFY(lines >= 4);
        QVERIFY(wrapped > 0);
    }

    void multiSmsKeysPressLikeAClick_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("editing"); // the first row is opened for editing
        QTest::addColumn<QString>("typed"); // name and number
        QTest::addColumn<int>("boxes");
        QTest::addColumn<QString>("rows");
        QTest::newRow("add") << "Hinzufügen" << false << "Carla 0049173" << 0 << "Anna Bernhard Carla";
        QTest::newRow("apply an edit") << "Übernehmen" << true << "Carla" << 0 << "Carla Bernhard";
        QTest::newRow("delete the selected row") << "Löschen" << false << "" << 0 << "Bernhard";
        QTest::newRow("new table") << "Neu" << false << "" << 1 << "";
    }

    void multiSmsKeysPressLikeAClick()
    {
        QFETCH(QString, key);
        QFETCH(bool, editing);
        QFETCH(QString, typed);
        QFETCH(int, boxes);
        QFETCH(QString, rows);
        m_harness.loadMain();
        m_harness.child<QAbstractButton>("tbMultiSMS")->click();
        frmMultiSMS* window = frmMultiSMS::loaded();
        RecipientTable& table = window->table();
        table.addRow(u"Anna"_s, u"0049171"_s, QString(), QString());
        table.addRow(u"Bernhard"_s, u"0049172"_s, QString(), QString());
        auto* lvData = in<QTableView>(window, "lvData");
        lvData->selectRow(0);
        if (editing)
            emit lvData->doubleClicked(table.index(0, 0));
        const QStringList fields = typed.split(u' ', Qt::SkipEmptyParts);
        if (fields.size() > 0)
            in<QLineEdit>(window, "txtName")->setText(fields[0]);
        if (fields.size() > 1)
            in<QLineEdit>(window, "txtNummer")->setText(fields[1]);
        // The missing number is told; "Neu" asks first.
        if (boxes)
            m_boxes->answer(MessageBox::Answer::Yes);
        const auto names = [&table] {
            QStringList list;
            for (const RecipientRow& row : table.rows())
                list.append(row.Name);
            return list.join(u' ');
        };
        // The toolbar shows and hides its buttons when it next lays itself out.
        QTRY_VERIFY(control(window, key));
        QVERIFY(act(window, key));
        // The key clicks once the request has been answered: a question it asks would otherwise
        // hold the screen reader's request until the question is answered.
        QCOMPARE(m_boxes->count(), 0);
        QTRY_COMPARE(m_boxes->count(), boxes);
        QTRY_COMPARE(names(), rows);
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
