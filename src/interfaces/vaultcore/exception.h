#pragma once

#include <string>
#include <utility>

namespace VaultCore
{

/// The engine's failure of a call, with a text for the user.
class Exception
{
public:
    explicit Exception(std::wstring text) : text_(std::move(text)) {}
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    virtual ~Exception() = default;
    /// The text, owned by the exception.
    virtual const wchar_t* GetText() const { return text_.c_str(); }

private:
    std::wstring text_;
};

} // namespace VaultCore
