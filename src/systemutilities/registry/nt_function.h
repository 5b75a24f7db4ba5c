#pragma once

#include <memory>

namespace Halden::SystemUtilities::Registry
{

/// A function of ntdll.dll, which stays loaded for as long as the object lives. The constructor throws a
/// `Win32Exception` with the last error: "Can't load ntdll.dll.", or `notFound` when the function is missing.
class NtFunction
{
public:
    NtFunction(const char* name, const char* notFound);

    void* address() const { return address_; }

private:
    struct Unload
    {
        void operator()(void* module) const;
    };

    std::unique_ptr<void, Unload> library_;
    void* address_;
};

} // namespace Halden::SystemUtilities::Registry
