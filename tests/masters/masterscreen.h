#pragma once

#include "db/updater.h"
#include "tests/support/caserow.h"
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

/// A user of a master screen on the delivered law.
template<class T>
class MasterScreen : public ScreenUser
{
public:
    explicit MasterScreen(LawDatabase &law)
        : module(law.module)
    {
        law.restore();
    }

    /// Opens the screen, which a test prepares its rows for first.
    void open() { ScreenUser::open<T>(); }
    QStringList rows(const QString &query) { return module.rows(query); }

    TestModule &module;
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
