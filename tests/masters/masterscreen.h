#pragma once

#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "tests/support/caserow.h"
#include "tests/support/employer.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QFile>

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

/// A user of a master screen on the delivered law. Beside it stands an employer whom no master change made here
/// concerns, and whose computation must stay what it was.
template<class T>
class MasterScreen : public ScreenUser
{
public:
    explicit MasterScreen(LawDatabase &law)
        : module(law.module)
    {
        law.restore();
        m_before = otherFigures();
    }

    /// Opens the screen, which a test prepares its rows for first.
    void open() { ScreenUser::open<T>(); }
    QStringList rows(const QString &query) { return module.rows(query); }
    void compute(const QString &code, int year)
    {
        module.base.code = code;
        module.base.TYear = year;
        FBTRate = FBTRates{};
        CALCFBT();
    }
    bool otherUnchanged() { return otherFigures() == m_before; }

    TestModule &module;

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

    QStringList m_before;
};

/// A table that is not there while this lives.
class WithoutTable
{
public:
    explicit WithoutTable(const QString &table)
        : m_table(table)
    {
        Cnn->Execute("Rename Table " + table + " to Away");
    }
    ~WithoutTable() { Cnn->Execute("Rename Table Away to " + m_table); }
    WithoutTable(const WithoutTable &) = delete;
    WithoutTable &operator=(const WithoutTable &) = delete;

private:
    QString m_table;
};
