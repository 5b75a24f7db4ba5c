#include "zelplatform/files.h"
#include "zelplatform/module_factory.h"

// ZELPLATFORM_EXPORT, how this system marks an export, comes from the build.

extern "C"
{

    /// Reading job files takes nothing of the crypto engine, so its folder is looked at and not kept.
    ZELPLATFORM_EXPORT bool initialize(const wchar_t* engineFolder)
    {
        return engineFolder != nullptr;
    }

    ZELPLATFORM_EXPORT ZelPlatform::IFactory* createFactory()
    {
        return ZelPlatform::createModuleFactory(ZelPlatform::SfxComment(ZelPlatform::userCommentFile()));
    }

    /// Every object frees what it holds when it is released; nothing else is left to free.
    ZELPLATFORM_EXPORT void uninitialize() {}

} // extern "C"
