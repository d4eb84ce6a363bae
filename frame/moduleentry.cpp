#include "frame/moduleentry.h"

#include "frame/clsmain.h"

ClsMain *CreateFbtModule(const ObjectTable *objects)
{
    return new ClsMain(objects);
}

void DestroyFbtModule(ClsMain *module)
{
    delete module;
}
