#pragma once

#include <cstdint>

namespace JobRunner
{

/// Progress of what becomes of a source file after its job.
class IFileDestinyEvents
{
public:
    /// Not 0 to go on, 0 to stop.
    virtual int OnDestinyProgress(std::uint64_t done, std::uint64_t total) = 0;

protected:
    ~IFileDestinyEvents() = default;
};

} // namespace JobRunner
