#pragma once

#include "interfaces/zelplatform/factory.h"
#include "zelplatform/sfx_comment.h"

namespace ZelPlatform
{

/// A factory whose stores and documents keep the user's default comment in `userComment`; owned by the caller.
IFactory* createModuleFactory(SfxComment userComment);

} // namespace ZelPlatform
