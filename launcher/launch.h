#pragma once

#include "launcher/options.h"
#include "platform/offer.h"

/// Runs what the command line asks for. A failure is one sentence on standard error.
/// @return the program's exit code: 0, or 1 after a failure
FBT_OFFERED int Launch(const LaunchOptions &options);

/// Says one sentence on standard error, and in a message box when there is someone to see it.
/// @return 1, the exit code of a failure
FBT_OFFERED int Refuse(const QString &sentence);
