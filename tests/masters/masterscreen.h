#pragma once

#include "calc/modfbtcalc.h"
#include "controls/grid.h"
#include "controls/gridheader.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "db/updater.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTest>

/// The delivered law in a database of its own, which each test finds as it was delivered.
class LawDatabase
{
public:
    explicit LawDatabase(TestServer &testServer)
        : module(testServer)
    {
        UpdateDatabase(Cnn);
        employer(module.connection, "OTHER")
            .natures({1, 6, 7})
            .expense(2007, 1, 1, 18, 1000)
            .expense(2007, 2, 6, 65, 2300)
            .expense(2008, 3, 7, 57, 4100)
            .expense(2008, 4, 6, 80, 5050);
        m_tables = module.rows("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()");
        Cnn->Execute("Create Database Kept");
        for (const QString &table : m_tables)
            Cnn->Execute("Create Table Kept." + table + " As Select * from " + table);
    }

    void restore()
    {
        Cnn->Execute("Start Transaction");
        for (const QString &table : m_tables) {
            Cnn->Execute("Delete from " + table);
            Cnn->Execute("Insert into " + table + " Select * from Kept." + table);
        }
        Cnn->Execute("Commit");
        QFile::remove(module.base.AppPath + "/FBTLogger.log");
    }

    TestModule module;

private:
    QStringList m_tables;
};

/// A master screen on the delivered law, worked as a user does. Beside it stands an employer whom no master change made
/// here concerns, and whose computation must stay what it was.
template<class T>
class MasterScreen
{
public:
    explicit MasterScreen(LawDatabase &law)
        : module(law.module)
        , m_scope(&user)
    {
        law.restore();
        m_before = otherFigures();
    }
    ~MasterScreen()
    {
        module.connection.setObserver({});
        delete screen;
    }
    MasterScreen(const MasterScreen &) = delete;
    MasterScreen &operator=(const MasterScreen &) = delete;

    /// Opens the screen, which a test prepares its rows for first.
    void open()
    {
        screen = new T;
        screen->openChild(nullptr);
        screen->setDeleteOnUnload(false);
        QVERIFY(QTest::qWaitForWindowActive(screen->window()));
        module.connection.setObserver([this](const QString &statement) { statements << statement; });
    }

    template<class W>
    W *find(const QString &name) const
    {
        return screen->template findChild<W *>(name);
    }
    Grid *grid(const QString &name) const { return find<Grid>(name); }
    QString text(const QString &field) const { return find<QLineEdit>(field)->text(); }
    bool enabled(const QString &name) const { return find<QWidget>(name)->isEnabled(); }
    QString focus() const { return screen->currentField() ? screen->currentField()->objectName() : QString(); }

    void click(const QString &button) { QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton); }
    void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    /// Replaces the text of a field by keystrokes.
    void type(const QString &field, const QString &text)
    {
        auto *edit = find<QLineEdit>(field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    /// Replaces the text of a cell by keystrokes; the editor is still open when the text was refused.
    void typeCell(const QString &name, int row, int col, const QString &text)
    {
        if (!grid(name)->isEditing())
            grid(name)->setFocus();
        grid(name)->setCell(row, col);
        QVERIFY(grid(name)->isEditing() || grid(name)->EditCell());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QTest::keyClicks(QApplication::focusWidget(), text);
        key(Qt::Key_Return);
    }
    void choose(const QString &combo, const QString &text) { find<QComboBox>(combo)->setCurrentText(text); }

    /// The questions and messages so far, and forgets them.
    QStringList said()
    {
        const QStringList texts = user.texts();
        user.clear();
        return texts;
    }
    void compute(const QString &code, int year)
    {
        module.base.code = code;
        module.base.TYear = year;
        FBTRate = FBTRates{};
        CALCFBT();
    }
    bool otherUnchanged() { return otherFigures() == m_before; }

    TestModule &module;
    ScriptedAnswerer user;
    QStringList statements;
    T *screen = nullptr;

private:
    QStringList otherFigures()
    {
        QStringList figures;
        for (const int year : {2007, 2008}) {
            compute("OTHER", year);
            figures << NumberText(FBTTotalValue);
            for (const double value : FBTValue)
                figures << NumberText(value);
        }
        return figures;
    }

    AnswererScope m_scope;
    QStringList m_before;
};
