#pragma once

/// The table that stands in the database while an update of it is under way. Where a program finds it at its start, the
/// update before was cut off: it is run again, whatever version is stored. It holds no rows. A backup takes it along, so
/// that what is restored is completed too.
constexpr const char *updateMark = "TmpUpdFBT";
