#pragma once

#include "host/suitecontext.h"
#include "launcher/database.h"
#include "launcher/mainwindow.h"
#include "launcher/modulelibrary.h"
#include "launcher/options.h"
#include "launcher/settings.h"
#include "platform/offer.h"

#include <functional>
#include <memory>

class MainObject;

/// Brings rows into an open database. On failure false, and the text is one sentence.
using DatabaseFiller = std::function<bool(Connection &, QString *)>;

/// Where a run of the program finds and keeps its things.
struct ProgramPlaces
{
    QString appPath;                             ///< application folder
    QString dataFolder;                          ///< of the private database
    QString settingsFile = UserSettingsFile();   ///< of the user
    QString delivered = DeliveredFolder();       ///< folder with the delivered `Data` and `HTMLHelp`
    QString module = ModuleLibrary::usualPath(); ///< file of the module's shared library
};

/// The program under its own launcher: application folder, database, the suite's objects, the main window and the
/// module, started and ended in the right order.
class FBT_OFFERED Program
{
public:
    Program(ProgramPlaces places, LauncherSettings settings);
    ~Program();
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    /// Brings everything up to the loaded module. On failure `why` is one sentence.
    /// @param fill called with the open database before the module is there, if there is anything to fill in
    bool start(QString *why, const DatabaseFiller &fill = {});

    /// Shows the main window and in it the module's main screen, which brings the database up to date.
    /// To be called from within the event loop, since the user may end the program before this returns.
    void show();

    /// Ends the module, the main object and the database, in this order.
    void stop();

    [[nodiscard]] MainWindow *window() const { return m_window.get(); }
    [[nodiscard]] Connection &connection() { return m_database.connection(); }

private:
    [[nodiscard]] SuiteContext context();
    bool makeMainObject(QString *why);
    bool loadModule(QString *why);

    ProgramPlaces m_places;
    ObjectTable m_objects;
    LauncherDatabase m_database;
    std::unique_ptr<SuiteObject> m_mainObject;
    std::unique_ptr<MainWindow> m_window;
    ModuleLibrary m_library;
    ClsMain *m_module = nullptr;
};
