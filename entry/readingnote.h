#pragma once

#include "controls/screen.h"

/// Has a screen say that something it shows could not be read, or no longer say it.
/// @param what in the plural and small letters, such as "salaries"
inline void NoteReading(Screen *screen, const QString &what, bool failed)
{
    if (failed)
        screen->readingFailed(what);
    else
        screen->readingWell(what);
}
