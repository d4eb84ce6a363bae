#pragma once

#include "db/updater.h"
#include "tests/support/testmodule.h"

/// A server with the module's state on a database that has the delivered law.
class LawDatabase
{
public:
    LawDatabase()
        : module(server)
    {
        UpdateDatabase(Cnn);
    }

    TestServer server;
    TestModule module;
};
