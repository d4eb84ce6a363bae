#pragma once

#include "host/objecttable.h"
#include "platform/offer.h"

#include <QLibrary>
#include <QString>

class ClsMain;

/// The module as a host has it: its shared library, loaded at run time, and the one object made by its factory.
class FBT_OFFERED ModuleLibrary
{
public:
    ModuleLibrary() = default;
    ~ModuleLibrary();
    ModuleLibrary(const ModuleLibrary &) = delete;
    ModuleLibrary &operator=(const ModuleLibrary &) = delete;

    /// Loads the library and makes the module.
    /// @param path the library's file
    /// @param objects the suite's objects; must outlive the module
    /// @return null on failure; `why` is then one sentence
    ClsMain *load(const QString &path, const ObjectTable *objects, QString *why);

    /// Ends the module. Its code stays loaded, since objects that it made may still be on their way out.
    void destroy();

    /// Where the library lies, seen from the program's folder.
    static QString usualPath();

private:
    QLibrary m_library;
    ClsMain *m_module = nullptr;
};
