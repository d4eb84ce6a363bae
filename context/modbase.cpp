#include "context/modbase.h"

MainObject *MainObj = nullptr;
QObject *DBObj = nullptr;
QMainWindow *MdiForm = nullptr;
QString VerText;
bool SuiteMode = false;
Connection *Cnn = nullptr;
BaseObject *Base = nullptr;
ReportObject *Reporter = nullptr;
QString ErrText;
bool DbUpdated = false;
bool PasswordPassed = false;
QString AdminPassword;
QString ClientName;
const ObjectTable *SuiteObjects = nullptr;

std::unique_ptr<SuiteObject> CreateObject(const QString &className)
{
    return SuiteObjects == nullptr ? nullptr : SuiteObjects->create(className);
}

void ResetModule()
{
    MainObj = nullptr;
    DBObj = nullptr;
    MdiForm = nullptr;
    Cnn = nullptr;
    Base = nullptr;
    Reporter = nullptr;
    SuiteObjects = nullptr;
    SuiteMode = DbUpdated = PasswordPassed = false;
    for (QString *text : {&VerText, &ErrText, &AdminPassword, &ClientName})
        text->clear();
}
