#pragma once

#include "launcher/settings.h"
#include "platform/offer.h"

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct LaunchOptions
{
    enum class Action { Window, Demo, Sample, Check, Version, Help };

    Action action = Action::Window;
    QString appPath;    ///< application folder
    QString dataFolder; ///< folder of the private database
    QString samples;    ///< folder with the data files of the sample employers
    int year = 0;       ///< of Check: the first calendar year of an assessment year
    QString csv;        ///< of Check: file for the table, empty for none
};

/// Whether the program is to run without a window, judged before there is an application object.
FBT_OFFERED bool RunsWithoutWindow(const QStringList &arguments);

/// Reads the arguments, the program's name first. On a mistake false, and `why` is one sentence.
FBT_OFFERED bool ReadOptions(const QStringList &arguments, LaunchOptions *options, QString *why);

/// The text of `--help`.
FBT_OFFERED QString HelpText();

/// Where the delivered files lie (`Data`, `HTMLHelp`, `samples`), seen from the program's folder.
FBT_OFFERED QString DeliveredFolder();
