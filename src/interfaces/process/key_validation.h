#pragma once

#include <string>

namespace JobRunner
{

/// A further demand on a key file, made where the user picks it. Runs on the dialog's thread.
class IDpvKeyValidation
{
public:
    /// True when the key file may be used; false with a message for the user when not.
    virtual bool ValidateKeyFile(const wchar_t* path, std::wstring& message) = 0;

protected:
    ~IDpvKeyValidation() = default;
};

} // namespace JobRunner
