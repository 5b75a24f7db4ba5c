#pragma once

#include <cstdint>

namespace VaultCore
{

class IFileList;
class IOperationEvents;

/// Value of `SetMethod` for a wipe; every other value is a plain deletion.
inline constexpr std::uint32_t DeletionMethodWipe = 2;

class IDeletionOptions
{
public:
    virtual void Release() = 0;
    virtual void SetMethod(std::uint32_t method) = 0;

protected:
    ~IDeletionOptions() = default;
};

/// Removes the files of a list on a thread of its own.
class IDeleter
{
public:
    virtual void Release() = 0;
    /// Returns at once. The arguments are not owned and have to outlive the work.
    virtual void Start(IFileList* files, IDeletionOptions* options, IOperationEvents* events) = 0;
    /// True once the last callback has returned. Safe on any thread.
    virtual bool IsFinished() = 0;

protected:
    ~IDeleter() = default;
};

} // namespace VaultCore
