#pragma once

#include "host/suitecontext.h"
#include "platform/offer.h"

class ObjectTable;

/// Registers the suite's own objects: the base object, the main object, the report viewer and the miscellaneous
/// information.
FBT_OFFERED void RegisterSuiteObjects(ObjectTable &table, const SuiteContext &context);
