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
        const QStringList names{"first", "second", "combo", "check", "button", "grid", "memo", "last"};
        for (QWidget *control : QWidgetList{first, second, combo, check, button, grid, memo, last}) {
            control->setObjectName(names[column->count()]);
            column->addWidget(control);
        }
        combo->setEditable(true);
        combo->addItems({"One", "Two"});
        grid->setCols(2);
        grid->AddItem({"a", "b"});
        grid->setRow(1);
        grid->setEditable([](int, int) { return true; });
        connect(this, &Screen::entered, this, [this](QWidget *field) { diary << "in " + field->objectName(); });
        connect(this, &Screen::left, this, [this](QWidget *field) { diary << "out " + field->objectName(); });
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
};

void pasteByMenu(QWidget *into, const QString &text)
{
    QApplication::clipboard()->setText(text);
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(into, &asked);
    QWidget *menu = QApplication::activePopupWidget();
    for (QAction *entry : menu->actions()) {
        if (entry->text().startsWith("&Paste"))
            entry->trigger();
    }
    menu->close();
}

void drop(QWidget *into, const QString &text)
{
    QMimeData dropped;
    dropped.setText(text);
    QDragEnterEvent enter({2, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QApplication::sendEvent(into, &enter);
    QDropEvent event({2, 5}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QApplication::sendEvent(into, &event);
}

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
        using Row = std::tuple<QWidget *, QWidget *>;
        const std::vector<Row> rows{{m_form->first, m_form->second}, {m_form->second, m_form->combo},
                                    {m_form->check, m_form->button}, {m_form->grid, m_form->grid},
                                    {m_form->memo, m_form->memo},    {m_form->last, m_form->first}};
        for (const auto &[from, next] : rows) {
            from->setFocus();
            QTest::keyClick(from, Qt::Key_Return);
            QVERIFY2(next->hasFocus(), qPrintable(from->objectName()));
        }
        m_form->button->setFocus();
        m_form->taken();
        QTest::keyClick(m_form->button, Qt::Key_Return);
        QCOMPARE(m_form->taken(), QStringList({"key 13", "click"}));
        m_form->second->setProperty("ownEnter", true);
        m_form->second->setFocus();
        QTest::keyClick(m_form->second, Qt::Key_Return);
        QVERIFY(m_form->second->hasFocus());
    }

    /// What is typed, pasted, undone or dropped comes in capitals, and the rest of the text stays as it was.
    void typedTexts()
    {
        QLineEdit *line = m_form->first;
        const auto paste = [](QWidget *into, const QString &text) {
            QApplication::clipboard()->setText(text);
            QTest::keySequence(into, QKeySequence::Paste);
        };
        using Row = std::tuple<const char *, QString, int, std::function<void()>, QString>;
        const std::vector<Row> rows{
            {"typed in the middle", "xy", 1, [&] { QTest::keyClicks(line, "aB1"); }, "xAB1y"},
            {"pasted in the middle", "Acme Ltd", 3, [&] { paste(line, "yz"); }, "AcmYZe Ltd"},
            {"pasted from the menu", "Acme Ltd", 3, [&] { pasteByMenu(line, "yz"); }, "AcmYZe Ltd"},
            {"dropped", "Acme", 3, [&] { drop(line, "q"); }, "QAcme"},
            {"undone: what was loaded comes back", "Acme Ltd", 8,
             [&] {
                 QTest::keyClick(line, Qt::Key_Backspace);
                 QTest::keyClick(line, Qt::Key_Backspace);
                 QTest::keySequence(line, QKeySequence::Undo);
             },
             "Acme Ltd"},
        };
        for (const auto &[name, loaded, caret, act, text] : rows) {
            line->setText(loaded);
            line->setCursorPosition(caret);
            const QSignalSpy seen(line, &QLineEdit::textChanged);
            act();
            QVERIFY2(line->text() == text, name);
            for (const QVariantList &told : seen) // who follows the field never sees the small letters
                QVERIFY2(told.first().toString() != "qAcme" && !told.first().toString().contains("yz"), name);
        }

        m_form->grid->setFocus();
        QVERIFY(m_form->grid->EditCell());
        auto *cell = m_form->grid->viewport()->findChild<QLineEdit *>();
        QTest::keyClicks(cell, "aB");
        paste(cell, "cD");
        QCOMPARE(cell->text(), QString("ABCD"));
        QTest::keyClick(cell, Qt::Key_Escape);
        m_form->combo->setCompleter(nullptr);
        for (const bool keepCase : {false, true}) {
            m_form->combo->setProperty("keepCase", keepCase);
            m_form->combo->setFocus();
            m_form->combo->clearEditText();
            QTest::keyClicks(m_form->combo, "aB");
            paste(m_form->combo, "cD");
            QCOMPARE(m_form->combo->currentText(), QString(keepCase ? "aBcD" : "ABCD"));
        }
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
        for (auto *control : m_form->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
            control->setEnabled(false);
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
            m_script.answer(Reply::Ok);
            MsgBox(m_form, "Please Enter Numeric Value.");
            return false;
        });
        m_form->first->setText("abc");
        QTest::keyClick(m_form->first, Qt::Key_Return);
        QCOMPARE(m_form->first->selectedText(), QString("abc"));
        m_form->second->setFocus();
        QVERIFY(m_form->first->hasFocus());
        QTest::mouseClick(m_form->button, Qt::LeftButton);
        QVERIFY(m_form->first->hasFocus() && m_form->currentField() == m_form->first);
        QVERIFY(asked == 3 && !m_form->taken().contains("click"));

        m_form->setLeaveCheck(m_form->first, [] { return true; });
        QTest::mouseClick(m_form->button, Qt::LeftButton);
        QCOMPARE(m_form->taken(), QStringList({"out first", "in button", "click"}));
    }

    void leaveCheckSkips()
    {
        int asked = 0;
        m_form->setLeaveCheck(m_form->first, [&] { return ++asked, false; });
        m_form->button->setProperty("causesCheck", false);
        m_form->onEscape = [this] { return m_form->second->setFocus(), true; };
        const std::vector<std::pair<const char *, std::function<void()>>> waysOut{
            {"Escape", [this] { QTest::keyClick(m_form->first, Qt::Key_Escape); }},
            {"a button without check", [this] { m_form->button->setFocus(); }},
            {"disabled", [this] { m_form->first->setEnabled(false); }},
            {"hidden", [this] { m_form->first->hide(); }},
            {"unloaded", [this] { m_form->Unload(); }}};
        for (const auto &[name, leave] : waysOut) {
            m_form->first->setEnabled(true);
            m_form->first->show();
            m_form->first->setFocus();
            leave();
            QVERIFY2(!m_form->first->hasFocus() && asked == 0, name);
        }
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
        QTest::keyClicks(m_form->first, "a");
        QTest::keyClick(m_form->first, Qt::Key_Tab);
        QCOMPARE(m_form->taken(), QStringList({"out first", "in first", "out first", "in second"}));
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
        const auto shownThenSized = [this](QSize size) {
            Form modal("frmsized", m_form);
            QSize shown;
            modal.onActivate = [&] {
                shown = modal.window()->size();
                modal.window()->resize(size);
                modal.Unload();
            };
            modal.showModal();
            return shown;
        };
        shownThenSized({510, 420});
        QCOMPARE(shownThenSized({9000, 9000}), QSize(510, 420));
        const QSize display = m_host->screen()->availableGeometry().size();
        const QSize shown = shownThenSized({510, 420});
        QCOMPARE(shown.boundedTo(display), shown);
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

    /// Nobody is asked; a screen that its questions keep is left once more.
    void endOfTheSession()
    {
        m_form->askOnUnload = true;
        Form modal("frmtwo", m_form);
        modal.onActivate = [&] { QTimer::singleShot(0, &modal, [&] { Screen::endSession(), modal.Unload(); }); };
        modal.showModal();
        QVERIFY(modal.taken().contains("unload") && m_form->taken().contains("unload"));
        m_form->askOnUnload = false;
    }

    /// A popup that is open goes when a window comes up. Its window is no owner for one that is to stay.
    void comesUpBesideAnOpenPopup()
    {
        m_form->combo->showPopup();
        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        const QPointer<Form> shown(new Form("frmtwo", popup));
        shown->openChild(popup);
        const Form *still = shown.data();
        QVERIFY(still != nullptr && still->isVisible() && !popup->isVisible());
    }

    /// Nor is that of a screen that was unloaded just now.
    void comesUpAfterAnotherWindow()
    {
        auto *before = new Form("frmbefore");
        before->openChild(nullptr);
        const QPointer<QWidget> going = before->window();
        QVERIFY(before->Unload());
        Form modal("frmmodal", going);
        bool stays = false;
        QTimer::singleShot(0, m_form, [&] {
            stays = !going && modal.isVisible();
            modal.Unload();
        });
        modal.showModal();
        QVERIFY(stays);
    }

    /// A host that knows nothing of the screens over it is closed: they are asked first, the newest before the others.
    void hostThatIsClosedAsksFirst()
    {
        QVERIFY(m_form->Unload());
        QMainWindow plain;
        plain.show();
        const QPointer<Form> below = new Form("frmbelow", &plain);
        const QPointer<Screen> above = new Screen("frmabove", &plain);
        below->openChild(&plain);
        above->openChild(&plain);
        below->askOnUnload = true;
        m_script.answer(Reply::No);
        QVERIFY(!plain.close() && plain.isVisible() && below->isVisible() && !above->isLoaded());
        m_script.answer(Reply::Yes);
        QVERIFY(plain.close() && !plain.isVisible());
        QTRY_VERIFY(!below && !above);
    }

    void isMadeOnce()
    {
        QMainWindow plain; // without a stack each screen has a window
        for (QWidget *host : {m_host.get(), &plain}) {
            if (host == &plain) {
                QVERIFY(m_form->Unload());
                (new Form("frmone", host))->openChild(host);
            }
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
