#include "windows/framework/view_factory.h"

namespace JobRunner
{

namespace
{
IViewFactory* replaced = nullptr;
void* loadedControlModule = nullptr;
} // namespace

IViewFactory& viewFactory()
{
    return replaced ? *replaced : nativeViews();
}

void setViewFactory(IViewFactory* factory)
{
    replaced = factory;
}

void setControlModule(void* module)
{
    loadedControlModule = module;
}

void* controlModule()
{
    return loadedControlModule;
}

} // namespace JobRunner
