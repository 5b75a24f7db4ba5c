#pragma once

#include <cstddef>
#include <functional>

namespace VaultCore
{

/// Calls `work` with 0, 1, ... up to `count`, on a few threads at a time, the caller's among them; each number once, in
/// rising order of their beginnings. Returns when all calls have returned. The first exception ends it early and is
/// thrown on. Where no further thread can be had, the caller does it all.
void inParallel(std::size_t count, const std::function<void(std::size_t)>& work);

} // namespace VaultCore
