#pragma once

#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"
#include "tests/support/screenuser.h"

constexpr int localConveyance = 57; // 20 percent, 5 for natures 2 to 4
constexpr int festival = 102;       // 50 percent for all in 2008

Q_GLOBAL_STATIC(LawDatabase, database)

/// The delivered law, and client A1 without rows at the beginning of each test, before whom the user sits.
class EntryDesk : public ScreenUser
{
public:
    /// @param natures of the client, a private company
    EntryDesk(int year, std::initializer_list<int> natures)
        : module(database->module)
        , client(employer(module.connection, "A1").natures(natures))
    {
        for (const char *table : {"FBT_Detail", "FBT_SalDet", "FBT_AddInfo", "FBT_BankDet"})
            Cnn->Execute(Sql("Delete from ", table));
        module.base.calls.clear();
        TakeClientYear("A1", year);
        Base->Cap = " of Employer";
    }
    ~EntryDesk() { Cnn->setObserver({}); }
    EntryDesk(const EntryDesk &) = delete;
    EntryDesk &operator=(const EntryDesk &) = delete;

    /// The client's rows of `FBT_Detail`: quarter, nature, number, item, amount.
    QStringList details()
    {
        return module.rows("Select Quarter,NatId,SrNo,ExpId,Amt from FBT_Detail Where Code_No='A1' "
                           "Order by Quarter,SrNo,NatId");
    }
    /// The client's salaries: quarter, nature, amount.
    QStringList salaries() { return module.rows("Select Quarter,NatId,Amt from FBT_SalDet Where Code_No='A1'"); }
    /// The eight figures.
    QStringList figures()
    {
        QStringList texts;
        for (int i = 0; i < 8; ++i)
            texts << text(QStringLiteral("txtcalcn_%1").arg(i));
        return texts;
    }

    TestModule &module;
    Employer client;
};
