#pragma once

#include <memory>

/// Ends an object of a closed module through its `Release`.
struct ReleaseDeleter
{
    template <class Object> void operator()(Object* object) const { object->Release(); }
};

/// Owns an object of a closed module.
template <class Object> using ReleasePtr = std::unique_ptr<Object, ReleaseDeleter>;
