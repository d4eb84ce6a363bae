#include "suite/registersuite.h"

#include "host/objecttable.h"
#include "host/suitecontext.h"
#include "suite/miscinf.h"
#include "suite/paybrowser.h"
#include "suite/report/repview.h"
#include "suite/wexabase.h"
#include "suite/wexamain.h"

void RegisterSuiteObjects(ObjectTable &table, const SuiteContext &context)
{
    const auto shelf = std::make_shared<ReportShelf>();
    table.add(QStringLiteral("WexaBase.ClsMain"),
              [context, shelf] { return std::make_unique<WexaBase>(context, shelf); });
    table.add(QStringLiteral("PrjWexaMainO.ClsMain"), [context] { return std::make_unique<WexaMain>(context); });
    table.add(QStringLiteral("PrjWexaRep.RepView"),
              [context, shelf] { return std::make_unique<RepView>(context, shelf); });
    table.add(QStringLiteral("InternetExplorer.Application"),
              [context] { return std::make_unique<PayBrowser>(BrowserSettings(context.settingsFile)); });
    table.add(QStringLiteral("WexaMiscInf.ClsMain"),
              [context, shelf] { return std::make_unique<MiscInf>(context, shelf); });
}
