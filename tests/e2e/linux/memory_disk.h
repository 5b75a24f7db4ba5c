#pragma once

#include "scenarios/sample_folder.h"

namespace EndToEnd
{

/// A folder of its own on the disk that the system keeps in its memory; removed with everything inside at its end.
class MemoryDisk
{
public:
    MemoryDisk();
    ~MemoryDisk();
    MemoryDisk(const MemoryDisk&) = delete;
    MemoryDisk& operator=(const MemoryDisk&) = delete;

    /// False where there is no such disk.
    bool isThere() const { return !path_.empty(); }
    const Path& path() const { return path_; }

private:
    Path path_;
};

} // namespace EndToEnd
