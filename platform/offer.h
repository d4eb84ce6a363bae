#pragma once

/// Marks what a room offers to the others: a class or function that another room (or a test of it) uses. All else stays
/// within its room's library, so that two things of one name in two rooms cannot meet.
#ifdef Q_MOC_RUN
#define FBT_OFFERED
#else
#define FBT_OFFERED __attribute__((visibility("default")))
#endif
