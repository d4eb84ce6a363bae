#pragma once

#include "platform/offer.h"

class ClsMain;
class ObjectTable;

/// The plain factory of the module's shared library. A host resolves the two names, makes the module with the table of
/// the suite's objects, and destroys it before its main window and its connection.
extern "C" {
FBT_OFFERED ClsMain *CreateFbtModule(const ObjectTable *objects);
FBT_OFFERED void DestroyFbtModule(ClsMain *module);
}

/// What QLibrary::resolve gives for the two names.
using CreateFbtModuleFunction = ClsMain *(*)(const ObjectTable *);
using DestroyFbtModuleFunction = void (*)(ClsMain *);
