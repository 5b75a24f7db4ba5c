#pragma once

#include <windows.h>

#include <string>

namespace StatisticsModule
{

/// Whom the class is registered for.
enum class Users
{
    This, ///< the user who asks; a program that runs with raised rights does not see it
    All   ///< everybody on this machine, for which rights are needed
};

/// Makes the DLL at `file` the one that has the class of the factory, on any thread.
HRESULT registerClass(Users users, const std::wstring& file);
/// Succeeds as well when the class is not registered.
HRESULT unregisterClass(Users users);
/// Full path of the module that this code is in; empty on failure.
std::wstring ownFile();

} // namespace StatisticsModule
