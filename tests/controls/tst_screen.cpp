#include "controls/screen.h"

#include "controls/grid.h"
#include "controls/matchlist.h"
#include "controls/screenstack.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

namespace {

/// A screen that keeps a diary of what is asked of it.
class Form : public Screen
{
public:
    explicit Form(const QString &name, QWidget *parent = nullptr)
        : Screen(name, parent)
    {
        auto *column = new QVBoxLayout(this);
        const QList<QWidget *> controls{first, second, combo, check, button, grid, memo, last};
        for (QWidget *control : controls)
            column->addWidget(control);
        combo->setEditable(true);
        combo->addItems({"One", "Two"});
        grid->setCols(2);
        grid->AddItem({"a", "b"});
        grid->setRow(1);
        grid->setEditable([](int, int) { return true; });
        connect(this, &Screen::entered, this, [this](QWidget *field) { diary.append("in " + nameOf(field)); });
        connect(this, &Screen::left, this, [this](QWidget *field) { diary.append("out " + nameOf(field)); });
        connect(button, &QPushButton::clicked, this, [this] { diary.append("click"); });
    }

    explicit Form(QWidget *parent)
        : Form("frmone", parent)
    {
    }

    void FORM_LOAD() override { diary.append("load"); }
    void FORM_ACTIVATE() override
    {
        diary.append("activate");
        if (onActivate)
            onActivate();
    }
    bool FORM_UNLOAD() override
    {
        diary.append("unload");
        return !askOnUnload || askExit(Icon::Exclamation);
    }
    bool FORM_KEYPRESS(int key) override
    {
        diary.append(QString("key %1").arg(key));
        return key == 27 && onEscape ? onEscape() : false;
    }

    QStringList taken() { return std::exchange(diary, {}); }

    QLineEdit *first = new QLineEdit(this);
    QLineEdit *second = new QLineEdit(this);
    QComboBox *combo = new QComboBox(this);
    QCheckBox *check = new QCheckBox("check", this);
    QPushButton *button = new QPushButton("button", this);
    Grid *grid = new Grid(this);
    QPlainTextEdit *memo = new QPlainTextEdit(this);
    QLineEdit *last = new QLineEdit(this);
    QStringList diary;
    std::function<void()> onActivate;
    std::function<bool()> onEscape;
    bool askOnUnload = false;

private:
    [[nodiscard]] QString nameOf(const QWidget *field) const
    {
        const QHash<const QWidget *, QString> names{{first, "first"}, {second, "second"}, {combo, "combo"},
                                                    {check, "check"}, {button, "button"}, {grid, "grid"},
                                                    {memo, "memo"},   {last, "last"}};
        return names.value(field, "?");
    }
};

} // namespace

/// What all screens share, driven by keys and the mouse in a host window.
class TestScreen : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QMainWindow> m_host;
    ScreenStack *m_stack = nullptr;
    Form *m_form = nullptr;
    ScriptedAnswerer m_script;
    Answerer *m_before = nullptr;

private slots:
    void init()
    {
        m_before = SetAnswerer(&m_script);
        m_host = std::make_unique<QMainWindow>();
        m_stack = new ScreenStack(m_host.get());
        m_host->setCentralWidget(m_stack);
        m_host->resize(800, 600);
        m_host->show();
        QVERIFY(QTest::qWaitForWindowActive(m_host.get()));
        m_form = new Form("frmone", m_host.get());
        m_form->openChild(m_host.get());
        QTRY_VERIFY(m_form->first->hasFocus());
        m_form->taken();
    }

    void cleanup()
    {
        m_host.reset();
        QCOMPARE(m_script.unexpected(), QStringList());
        m_script.clear();
        SetAnswerer(m_before);
        Screen::setGeometryStore(nullptr);
    }

    void enterMovesOn()
    {
        QTest::keyClick(m_form->first, Qt::Key_Return);
        QVERIFY(m_form->second->hasFocus());
        QTest::keyClick(m_form->second, Qt::Key_Enter);
        QVERIFY(m_form->combo->hasFocus());
        QTest::keyClick(m_form->combo, Qt::Key_Return);
        QTest::keyClick(m_form->check, Qt::Key_Return);
        QVERIFY(m_form->button->hasFocus());
        m_form->taken();
        QTest::keyClick(m_form->button, Qt::Key_Return);
        QCOMPARE(m_form->taken(), QStringList({"key 13", "click"}));
        m_form->grid->setFocus();
        QTest::keyClick(m_form->grid, Qt::Key_Return);
        QVERIFY(m_form->grid->hasFocus());
        m_form->memo->setFocus();
        QTest::keyClick(m_form->memo, Qt::Key_Return);
        QVERIFY(m_form->memo->hasFocus());
        QCOMPARE(m_form->memo->toPlainText(), QString("\n"));
        m_form->last->setFocus();
        QTest::keyClick(m_form->last, Qt::Key_Return);
        QVERIFY(m_form->first->hasFocus());

        m_form->second->setProperty("ownEnter", true);
        m_form->second->setFocus();
        const QSignalSpy own(m_form->second, &QLineEdit::returnPressed);
        QTest::keyClick(m_form->second, Qt::Key_Return);
        QVERIFY(m_form->second->hasFocus());
        QCOMPARE(own.size(), 1);
    }

    void capitals_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<bool>("keepCase");
        QTest::addColumn<QString>("text");
        QTest::newRow("field") << "first" << false << "AB1Z";
        QTest::newRow("field that keeps case") << "first" << true << "aB1z";
        QTest::newRow("combo") << "combo" << false << "AB1Z";
        QTest::newRow("combo that keeps case") << "combo" << true << "aB1z";
        QTest::newRow("cell") << "cell" << false << "AB1Z";
    }

    void capitals()
    {
        QFETCH(QString, control);
        QFETCH(bool, keepCase);
        m_form->combo->setCompleter(nullptr);
        if (control == "cell")
            QVERIFY((m_form->grid->setFocus(), m_form->grid->EditCell()));
        const QHash<QString, QWidget *> controls{{"first", m_form->first},
                                                 {"combo", m_form->combo},
                                                 {"cell", m_form->grid->viewport()->findChild<QLineEdit *>()}};
        QWidget *widget = controls.value(control);
        widget->setProperty("keepCase", keepCase);
        widget->setFocus();
        const auto typed = [&] {
            if (widget == m_form->combo)
                return m_form->combo->currentText();
            return qobject_cast<QLineEdit *>(widget)->text();
        };
        m_form->combo->clearEditText();
        QTest::keyClicks(widget, "aB1z");
        QTEST(typed(), "text");

        QApplication::clipboard()->setText("aB1z");
        QTest::keyClick(widget, Qt::Key_V, Qt::ControlModifier);
        QFETCH(QString, text);
        QCOMPARE(typed(), text + text);
    }

    void typedTextKeepsHistoryAndCaret()
    {
        QLineEdit *field = m_form->first;
        field->setText("Acme Ltd");
        QTest::keyClick(field, Qt::Key_End);
        QTest::keyClick(field, Qt::Key_Backspace);
        QTest::keyClick(field, Qt::Key_Backspace);
        QTest::keySequence(field, QKeySequence::Undo);
        QCOMPARE(field->text(), QString("Acme Ltd")); // what was loaded comes back as it was

        QApplication::clipboard()->setText("yz");
        field->setCursorPosition(3);
        const QSignalSpy seen(field, &QLineEdit::textChanged);
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(field, &asked);
        QWidget *menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        for (QAction *entry : menu->actions()) {
            if (entry->text().startsWith("&Paste"))
                entry->trigger();
        }
        menu->close();
        QMimeData dropped;
        dropped.setText("q");
        QDragEnterEvent enter({2, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QApplication::sendEvent(field, &enter);
        QDropEvent drop({2, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QApplication::sendEvent(field, &drop);
        QCOMPARE(field->text(), QString("QAcmYZe Ltd"));
        // Who follows the field never sees the small letters.
        QCOMPARE(seen.size(), 2);
        QCOMPARE(seen.first().first().toString(), QString("AcmYZe Ltd"));
    }

    void focusByKeySelectsText()
    {
        m_form->second->setText("ABC");
        QTest::keyClick(m_form->first, Qt::Key_Tab);
        QCOMPARE(m_form->second->selectedText(), QString("ABC"));
        m_form->first->setText("DEF");
        m_form->first->setFocus();
        QCOMPARE(m_form->first->selectedText(), QString("DEF"));
        QTest::mouseClick(m_form->second, Qt::LeftButton, {}, {5, 5});
        QVERIFY(m_form->second->selectedText().isEmpty());
    }

    void escapeReachesTheScreenFromAnywhere()
    {
        const QList<QWidget *> controls{m_form->first,  m_form->combo, m_form->check,
                                        m_form->button, m_form->grid,  m_form->memo};
        for (QWidget *control : controls) {
            control->setFocus();
            m_form->taken();
            QTest::keyClick(control, Qt::Key_Escape);
            QCOMPARE(m_form->taken(), QStringList("key 27"));
        }
        for (QObject *child : m_form->children()) {
            if (auto *control = qobject_cast<QWidget *>(child))
                control->setEnabled(false);
        }
        m_form->taken();
        QTest::keyClick(m_host.get(), Qt::Key_Escape);
        QCOMPARE(m_form->taken(), QStringList("key 27"));
    }

    void innerThingsCloseFirst()
    {
        m_form->grid->setFocus();
        QVERIFY(m_form->grid->EditCell());
        m_form->taken();
        QTest::keyClick(m_form->grid->viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);
        QVERIFY(!m_form->grid->isEditing());
        QCOMPARE(m_form->taken(), QStringList());

        auto *list = new MatchList(m_form);
        list->setItems({{"1", "A"}});
        m_form->first->setFocus();
        list->showUnder(m_form->first);
        m_form->taken();
        QTest::keyClick(m_form->first, Qt::Key_Escape);
        QVERIFY(list->isHidden());
        QCOMPARE(m_form->taken(), QStringList());
        QTest::keyClick(m_form->first, Qt::Key_Escape);
        QCOMPARE(m_form->taken(), QStringList("key 27"));
    }

    void leaveCheckKeepsFocus()
    {
        int asked = 0;
        m_form->setLeaveCheck(m_form->first, [&] {
            ++asked;
            MsgBox(m_form, "Please Enter Numeric Value.");
            return false;
        });
        m_form->first->setText("abc");
        for (int i = 0; i < 3; ++i)
            m_script.answer(Reply::Ok);
        QTest::keyClick(m_form->first, Qt::Key_Return);
        QVERIFY(m_form->first->hasFocus());
        QCOMPARE(m_form->first->selectedText(), QString("abc"));
        m_form->second->setFocus();
        QVERIFY(m_form->first->hasFocus());
        QTest::mouseClick(m_form->button, Qt::LeftButton);
        QVERIFY(m_form->first->hasFocus());
        QCOMPARE(asked, 3);
        QVERIFY(!m_form->taken().contains("click"));
        QCOMPARE(m_form->currentField(), m_form->first);

        m_form->setLeaveCheck(m_form->first, [] { return true; });
        QTest::mouseClick(m_form->button, Qt::LeftButton);
        QCOMPARE(m_form->taken(), QStringList({"out first", "in button", "click"}));
    }

    void leaveCheckSkips()
    {
        int asked = 0;
        m_form->setLeaveCheck(m_form->first, [&] { return ++asked, false; });
        m_form->onEscape = [this] {
            m_form->second->setFocus();
            return true;
        };
        QTest::keyClick(m_form->first, Qt::Key_Escape);
        QVERIFY(m_form->second->hasFocus());

        m_form->first->setFocus();
        m_form->button->setProperty("causesCheck", false);
        m_form->button->setFocus();
        QVERIFY(m_form->button->hasFocus());

        m_form->first->setFocus();
        m_form->first->setEnabled(false);
        QVERIFY(!m_form->first->hasFocus());
        m_form->first->setEnabled(true);
        m_form->first->setFocus();
        m_form->first->hide();
        QCOMPARE(asked, 0);

        m_form->first->show();
        m_form->first->setFocus();
        QVERIFY(m_form->Unload());
        QCOMPARE(asked, 0);
    }

    void messageIsNotLeaving()
    {
        SetAnswerer(nullptr);
        m_form->taken();
        QTimer::singleShot(0, this, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
        MsgBox(m_form, "Hello");
        m_host->activateWindow(); // which a desktop does by itself
        QTRY_VERIFY(m_form->first->hasFocus());
        m_form->combo->setFocus();
        m_form->combo->showPopup();
        m_form->combo->hidePopup();
        QTRY_VERIFY(m_form->combo->hasFocus());
        QCOMPARE(m_form->taken(), QStringList({"out first", "in combo"}));
        SetAnswerer(&m_script);
    }

    void lostFocusHandlerMayGoBack()
    {
        connect(m_form, &Screen::left, m_form, [this](const QWidget *field) {
            if (field == m_form->first && m_form->first->text().isEmpty())
                m_form->first->setFocus();
        });
        QTest::keyClick(m_form->first, Qt::Key_Tab);
        QVERIFY(m_form->first->hasFocus());
        QCOMPARE(m_form->taken(), QStringList({"out first", "in first"}));
        QTest::keyClicks(m_form->first, "a");
        QTest::keyClick(m_form->first, Qt::Key_Tab);
        QCOMPARE(m_form->taken(), QStringList({"out first", "in second"}));
    }

    void stackedScreens()
    {
        m_form->second->setFocus();
        m_form->setWindowTitle("One");
        auto *two = new Form("frmtwo", m_form);
        two->openChild(m_host.get());
        QCOMPARE(two->taken(), QStringList({"load", "in first", "activate"}));
        QCOMPARE(m_stack->top(), two);
        QVERIFY(!m_form->isVisible());
        m_form->taken();
        QTest::keyClick(two->first, Qt::Key_Escape);
        QVERIFY(m_form->taken().isEmpty());

        const QSignalSpy gone(two, &QObject::destroyed);
        const QSignalSpy unloaded(two, &Screen::unloaded);
        QVERIFY(two->Unload());
        QCOMPARE(unloaded.size(), 1);
        QCOMPARE(m_stack->screens(), QList<Screen *>{m_form});
        QVERIFY(m_form->second->hasFocus());
        QVERIFY(m_form->taken().contains("activate"));
        QTRY_COMPARE(gone.size(), 1);
    }

    void unloadingIsAsked()
    {
        m_form->askOnUnload = true;
        m_script.answer(Reply::No);
        QVERIFY(!m_form->Unload());
        QVERIFY(m_form->isVisible());
        QCOMPARE(m_script.records().constLast().box.text, QString("Do you want to exit ?"));
        QCOMPARE(m_script.records().constLast().box.icon, Icon::Exclamation);
        m_script.answer(Reply::No);
        QVERIFY(!m_stack->closeAll());
        m_script.answer(Reply::Yes);
        QVERIFY(m_stack->closeAll());
        QVERIFY(m_stack->screens().isEmpty());
    }

    void modalScreens()
    {
        Form modal("frmmodal", m_form);
        Form nested("frmnested", &modal);
        QStringList steps;
        QTimer::singleShot(0, this, [&] {
            steps.append(m_form->isEnabled() && QApplication::activeModalWidget() == modal.window() ? "modal"
                                                                                                    : "not modal");
            QTimer::singleShot(0, this, [&] {
                QTRY_VERIFY(nested.first->hasFocus());
                steps.append("nested");
                nested.onEscape = [&] { return nested.Unload(); };
                QTest::keyClick(nested.first, Qt::Key_Escape);
            });
            nested.showModal();
            steps.append("back in modal");
            modal.window()->close();
        });
        m_form->taken();
        modal.showModal();
        QCOMPARE(steps, QStringList({"modal", "nested", "back in modal"}));
        QVERIFY(!modal.isLoaded());
        QCOMPARE(modal.taken().filter("load"), QStringList({"load", "unload"}));
        QCOMPARE(m_form->taken(), QStringList("activate"));
        QCOMPARE(modal.parentWidget(), m_form);
        QVERIFY(modal.isHidden());
    }

    /// A key that clicks a button a moment later can close a screen that has opened another one meanwhile.
    void staysWhileAModalScreenIsUp()
    {
        Form modal("frmtwo", m_form);
        bool refused = false;
        QTimer::singleShot(0, m_form, [&] {
            refused = !m_form->Unload() && !m_stack->closeAll();
            modal.Unload();
        });
        modal.showModal();
        QVERIFY(refused && m_form->isLoaded());
        QVERIFY(m_form->Unload());
    }

    void unloadWhileActivating()
    {
        Form modal("frmmodal", m_form);
        modal.onActivate = [&] { modal.Unload(); };
        modal.showModal();
        QVERIFY(!modal.isLoaded());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void sizeIsKeptAndFitsTheDisplay()
    {
        const QTemporaryDir folder;
        QSettings store(folder.filePath("sizes.ini"), QSettings::IniFormat);
        Screen::setGeometryStore(&store);
        const auto shownWith = [this](QSize size) {
            Form modal("frmsized", m_form);
            QSize shown;
            modal.onActivate = [&] {
                shown = modal.window()->size();
                if (size.isValid())
                    modal.window()->resize(size);
                modal.Unload();
            };
            modal.showModal();
            return shown;
        };
        shownWith({510, 420});
        QCOMPARE(shownWith({9000, 9000}), QSize(510, 420));
        const QSize display = m_host->screen()->availableGeometry().size();
        const QSize shown = shownWith({});
        QVERIFY(shown.width() <= display.width() && shown.height() <= display.height());
    }

    void ownWindowWithoutStack()
    {
        auto *alone = new Form("frmalone");
        alone->openChild(nullptr);
        QVERIFY(QTest::qWaitForWindowActive(alone->window()));
        const QPointer<QWidget> window = alone->window();
        alone->askOnUnload = true;
        m_script.answer(Reply::No);
        QVERIFY(!window->close());
        m_script.answer(Reply::Yes);
        window->close();
        QTRY_VERIFY(!window);
    }

    void isMadeOnce()
    {
        QMainWindow plain; // without a stack each screen has a window
        for (QWidget *host : {m_host.get(), &plain}) {
            if (host == &plain)
                QVERIFY(m_form->Unload());
            if (host == &plain)
                (new Form("frmone", host))->openChild(host);
            const QPointer<Form> form = Screen::opened<Form>();
            (new Screen("frmother", host))->openChild(host);
            Screen::openOnce<Form>(host);
            QCOMPARE(Screen::opened<Form>(), form.data());
            QTRY_VERIFY(form->isActiveWindow() && form->first->hasFocus());
        }
    }

    void saysWhatCouldNotBeRead()
    {
        m_form->setWindowTitle("Due Dates");
        m_form->readingFailed("salaries");
        m_form->readingFailed("natures");
        m_form->setWindowTitle("Due Dates of Acme"); // the caption can be set after the reading
        QCOMPARE(m_form->windowTitle(), QString("Due Dates of Acme - could not be read"));
        const auto *strip = m_form->findChild<QLabel *>("unreadStrip");
        QVERIFY(strip->isVisible() && strip->text().contains("salaries, natures"));
        m_form->readingWell("natures");
        QVERIFY(!m_form->couldRead() && !m_form->couldRead("salaries") && m_form->couldRead("natures"));
        m_form->readingWell();
        QVERIFY(m_form->couldRead() && strip->isHidden());
        QCOMPARE(m_form->windowTitle(), QString("Due Dates of Acme"));
    }
};

QTEST_MAIN(TestScreen)
#include "tst_screen.moc"
