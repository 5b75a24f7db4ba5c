#include "fakes/fake_handles.h"

namespace Fakes
{

namespace
{

std::wstring textOf(std::uint32_t limit)
{
    return limit == Platform::WaitForever ? L"infinite" : std::to_wstring(limit);
}

} // namespace

Platform::Handle FakeHandles::add(std::wstring name, std::function<bool()> signalled)
{
    last_ += 4;
    const auto handle = reinterpret_cast<Platform::Handle>(last_);
    objects_[handle] = {std::move(name), std::move(signalled)};
    return handle;
}

const FakeHandles::Object* FakeHandles::find(Platform::Handle handle) const
{
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : &found->second;
}

std::wstring FakeHandles::nameOf(Platform::Handle handle) const
{
    if (!handle)
        return L"null";
    if (handle == Platform::InvalidHandle)
        return L"invalid";
    const Object* object = find(handle);
    return object ? object->name : L"closed";
}

std::vector<std::wstring> FakeHandles::open() const
{
    std::vector<std::wstring> names;
    for (const auto& [handle, object] : objects_)
        names.push_back(object.name);
    return names;
}

bool FakeHandles::remove(Platform::Handle handle)
{
    return objects_.erase(handle) > 0;
}

bool FakeHandles::close(Platform::Handle handle)
{
    log_.add(L"close " + nameOf(handle));
    return remove(handle);
}

std::uint32_t FakeHandles::wait(Platform::Handle handle, std::uint32_t limit, bool alertable)
{
    log_.add(L"wait " + nameOf(handle) + L' ' + textOf(limit) + (alertable ? L" alertable" : L""));
    const Object* object = find(handle);
    if (!object)
        return Platform::WaitFailed;
    const auto signalled = [object] { return object->signalled && object->signalled(); };
    return threads_.waitUntil(signalled, limit) ? Platform::WaitSignalled : Platform::WaitTimedOut;
}

std::uint32_t FakeHandles::waitOrMessage(Platform::Handle handle, std::uint32_t limit, std::uint32_t wakeMask)
{
    log_.add(L"waitOrMessage " + nameOf(handle) + L' ' + textOf(limit) + L' ' + std::to_wstring(wakeMask));
    const Object* object = find(handle);
    if (!object)
        return Platform::WaitFailed;
    const auto signalled = [object] { return object->signalled && object->signalled(); };
    const auto wakes = [&] { return signalled() || messages_.waiting > 0; };
    if (!threads_.waitUntil(wakes, limit))
        return Platform::WaitTimedOut;
    return signalled() ? Platform::WaitSignalled : Platform::WaitMessage;
}

} // namespace Fakes
