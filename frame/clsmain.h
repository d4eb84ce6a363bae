#pragma once

#include "context/modbase.h"
#include "platform/offer.h"

#include <QPointer>
#include <QString>

#include <memory>

class NoticeLine;
class frmmain;

/// The module's public class. A host hands over its objects by the `Set` calls as far as it has them, then calls
/// `LoadFBT`, and, when that returned true, `ShowMain`. All members are virtual: a host that loads the module by its
/// factory (moduleentry.h) needs nothing else of it. Nothing that an object of the host throws comes back out of them.
class FBT_OFFERED ClsMain
{
public:
    /// @param objects where class names of the suite are looked up; must outlive the module
    explicit ClsMain(const ObjectTable *objects);
    /// Closes the module's screens without a question; not for a handler of one of them.
    virtual ~ClsMain();
    ClsMain(const ClsMain &) = delete;
    ClsMain &operator=(const ClsMain &) = delete;

    /// The suite's main object; the host keeps owning it.
    virtual void SetWexaMainObj(MainObject *mainObject);
    /// The host's database object; kept only.
    virtual void SetDBObj(QObject *databaseObject);
    /// The host's main window; it must outlive the module.
    virtual void SetMdiForm(QMainWindow *window);
    /// The version text for captions.
    virtual void SetVerInf(const QString &text);

    /// Makes the module ready: its base object, reporter and connection.
    /// @param suiteFlag true: started from inside the suite, the module makes its own main object
    /// @return true when the module is ready. False after "Library [PrjWexaMainO.Dll] not found.", after
    /// "Incompatible version of "Wexa Reporting Component".", or when there is no base
    /// object or no connection, without which nothing can be shown.
    virtual bool LoadFBT(bool suiteFlag);

    /// Shows the main screen as a child of the host's window, without blocking.
    virtual void ShowMain();

private:
    bool makeMainObject(class ErrorTail &tail);
    bool makeReporter(class ErrorTail &tail);
    void takeConnection();
    void prepareReporter();

    std::unique_ptr<SuiteObject> m_base;
    std::unique_ptr<SuiteObject> m_reporter;
    std::unique_ptr<SuiteObject> m_ownMainObject;
    std::unique_ptr<NoticeLine> m_notices;
    QPointer<frmmain> m_main;
};
