#pragma once

#include "platform/handles.h"

#include <map>
#include <memory>
#include <mutex>

namespace Platform
{

/// What a handle stands for. Its operations may be called on any thread.
class SystemObject
{
public:
    virtual ~SystemObject() = default;
    /// Can be read from once the object is signalled; -1 for an object that is never signalled.
    virtual int descriptor() const { return -1; }
    /// A wait has seen the object signalled.
    virtual void onSignalled() {}
};

/// The handles of this process. A number is never used again, so that a closed handle means nothing else. Any thread.
class HandleTable
{
public:
    Handle add(std::shared_ptr<SystemObject> object);
    /// Null for what is no handle. The object lives as long as somebody uses it, also when its handle is closed.
    std::shared_ptr<SystemObject> find(Handle handle);
    /// The same for a handle of one kind of object.
    template <class Object> std::shared_ptr<Object> find(Handle handle)
    {
        return std::dynamic_pointer_cast<Object>(find(handle));
    }
    /// False when it was no handle.
    bool remove(Handle handle);

private:
    std::mutex lock_;
    std::map<Handle, std::shared_ptr<SystemObject>> objects_;
    std::uintptr_t last_ = 0;
};

HandleTable& handleTable();

} // namespace Platform
