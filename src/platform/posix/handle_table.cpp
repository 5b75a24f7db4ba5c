#include "platform/posix/handle_table.h"

namespace Platform
{

Handle HandleTable::add(std::shared_ptr<SystemObject> object)
{
    const std::lock_guard guard(lock_);
    last_ += 4; // as the handles of Windows are numbered
    const auto handle = reinterpret_cast<Handle>(last_);
    objects_.emplace(handle, std::move(object));
    return handle;
}

std::shared_ptr<SystemObject> HandleTable::find(Handle handle)
{
    const std::lock_guard guard(lock_);
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : found->second;
}

bool HandleTable::remove(Handle handle)
{
    std::shared_ptr<SystemObject> removed; // ends behind the lock
    const std::lock_guard guard(lock_);
    const auto found = objects_.find(handle);
    if (found == objects_.end())
        return false;
    removed = std::move(found->second);
    objects_.erase(found);
    return true;
}

HandleTable& handleTable()
{
    // Never destroyed: threads that run on while the process ends may still close what they have.
    static HandleTable& table = *new HandleTable;
    return table;
}

} // namespace Platform
