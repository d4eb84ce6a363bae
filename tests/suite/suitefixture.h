#pragma once

#include "db/updater.h"
#include "suite/wexabase.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QCheckBox>

/// The suite's real base object on a schema with the module's tables, with the client "A1" and the year 2008 in hand.
/// Reports are kept, not shown.
class SuiteFixture
{
public:
    explicit SuiteFixture(TestServer &server)
        : module(server)
        , shelf(std::make_shared<ReportShelf>())
        , base(contextOf(module), shelf)
    {
        CREATETABLES(Cnn);
        base.code = "A1";
        base.TYear = 2008;
        base.Cap = " of FIRST for the Assessment Year 2008-2009";
        shelf->observer = [] {};
    }

    static SuiteContext contextOf(TestModule &module)
    {
        SuiteContext context;
        context.cnn = &module.connection;
        context.appPath = module.base.AppPath;
        context.settingsFile = module.base.AppPath + "/settings.ini";
        context.version = "2.10.1";
        return context;
    }

    void client(const QString &code, const QString &name)
    {
        Cnn->Execute(Sql("Insert into FBT_Info (Code_no,Name,PAN,ClStatus,City) Values ('", code, "','", name,
                         "','AAACA1234A',16,'PUNE')"));
    }

    /// Opens one of the suite's screens in front of the user.
    template<class S>
    S *open()
    {
        auto *made = new S(base);
        user.sitAt(made);
        return made;
    }
    QCheckBox *check(const char *name) { return user.find<QCheckBox>(name); }
    QStringList rows(const QString &query) { return module.rows(query); }

    TestModule module;
    std::shared_ptr<ReportShelf> shelf;
    WexaBase base;
    ScreenUser user;
};
