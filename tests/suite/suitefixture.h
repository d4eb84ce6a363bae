#pragma once

#include "controls/msgbox.h"
#include "controls/screen.h"
#include "db/updater.h"
#include "suite/wexabase.h"
#include "tests/support/testmodule.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

/// The suite's real base object on a schema with the module's tables, with the client "A1" and the year 2008 in hand.
/// Questions are answered from a queue; reports are kept, not shown.
class SuiteFixture
{
public:
    explicit SuiteFixture(TestServer &server)
        : module(server)
        , shelf(std::make_shared<ReportShelf>())
        , base(contextOf(module), shelf)
        , answers(&answerer)
    {
        CREATETABLES(Cnn);
        base.code = QStringLiteral("A1");
        base.TYear = 2008;
        base.Cap = QStringLiteral(" of FIRST for the Assessment Year 2008-2009");
        shelf->observer = [] {};
    }

    static SuiteContext contextOf(TestModule &module)
    {
        SuiteContext context;
        context.cnn = &module.connection;
        context.appPath = module.base.AppPath;
        context.settingsFile = module.base.AppPath + QStringLiteral("/settings.ini");
        context.version = QStringLiteral("2.10.1");
        context.statusName = [](int status) { return QStringLiteral("Status %1").arg(status); };
        context.returnFigures = [](const QString &, int year) { return ReturnFigures{year + 0.5, 12, -250.0}; };
        return context;
    }

    void client(const QString &code, const QString &name)
    {
        Cnn->Execute(Sql("Insert into FBT_Info (Code_no,Name,PAN,ClStatus,City) Values ('", code, "','", name,
                         "','AAACA1234A',16,'PUNE')"));
    }

    /// Runs `steps` as soon as a modal screen is up, and unloads the screen behind them if it is still there.
    static void within(const std::function<void(Screen *screen)> &steps)
    {
        QTimer::singleShot(0, [steps] {
            steps(modalScreen());
            if (QApplication::activeModalWidget() != nullptr)
                modalScreen()->Unload();
        });
    }

    static Screen *modalScreen()
    {
        const QWidget *frame = QApplication::activeModalWidget();
        auto *screen = frame != nullptr ? frame->findChild<Screen *>() : nullptr;
        if (screen == nullptr)
            qFatal("no modal screen is up");
        return screen;
    }

    template<class T>
    static T *find(QWidget *screen, const char *name)
    {
        T *found = screen->findChild<T *>(QLatin1String(name));
        if (found == nullptr)
            qFatal("no control %s", name);
        return found;
    }

    TestModule module;
    std::shared_ptr<ReportShelf> shelf;
    WexaBase base;
    ScriptedAnswerer answerer;
    AnswererScope answers;
};
