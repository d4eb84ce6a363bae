#pragma once

#include "db/schema.h"
#include "records/clientcode.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QComboBox>

/// A base object that changes and deletes codes for good.
class ClientBase : public NotingBase
{
public:
    void LoadStateList(QComboBox *combo) const override
    {
        combo->addItems({QStringLiteral("DELHI"), QStringLiteral("MAHARASHTRA"), QStringLiteral("MANIPUR")});
    }
    void ChangeCode(const QString &oldCode, const QString &newCode) override
    {
        NotingBase::ChangeCode(oldCode, newCode);
        ChangeClientCode(CnnObj, oldCode, newCode);
    }
    void DeleteClient(const QString &clientCode) override
    {
        NotingBase::DeleteClient(clientCode);
        DeleteClientRows(CnnObj, clientCode);
    }
};

/// The module with the tables of the client master, natures 1 to 3, and a base object that works on the clients.
class ClientModule : public TestModule
{
public:
    explicit ClientModule(TestServer &server)
        : TestModule(server)
    {
        for (const TableShape &table : ModuleTables())
            execute(CreateStatement(table));
        for (const char *nature : {"(1,'HOTEL')", "(2,'CONSTRUCTION')", "(3,'OTHERS')"})
            execute(Sql("Insert into FBT_Nature Values ", nature));
        clients.AppPath = base.AppPath;
        clients.CnnObj = &connection;
        Base = &clients;
    }

    ClientBase clients;

    void execute(const QString &statement)
    {
        if (!connection.Execute(statement))
            qFatal("Not carried out: %s", qPrintable(statement));
    }
};
