#pragma once

#include "tests/support/caserow.h"
#include "tests/support/lawdatabase.h"
#include "tests/support/screenuser.h"

/// The delivered law, which each test finds as it was delivered.
class KeptLaw : public LawDatabase
{
public:
    KeptLaw()
        : m_tables(RowsOf(*Cnn, "Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"))
    {
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
        module.clearLog();
    }

private:
    QStringList m_tables;
};

Q_GLOBAL_STATIC(KeptLaw, law)

/// A user of a master screen on the delivered law.
template<class T>
class MasterScreen : public ScreenUser
{
public:
    MasterScreen()
        : module(law->module)
    {
        law->restore();
    }

    /// Opens the screen, which a test prepares its rows for first.
    void open() { ScreenUser::open<T>(); }
    QStringList rows(const QString &query) { return module.rows(query); }

    TestModule &module;
};
