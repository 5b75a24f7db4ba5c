#pragma once

#include <cstdint>
#include <string>

namespace JobRunner
{

class IDpvKeyValidation;

/// The way of commands and engine callbacks to a dialog. Every operation may be called on any thread; it runs on
/// the first thread and the caller sleeps until the answer is there. Nobody deletes an `IGuiEvents`.
class IGuiEvents
{
public:
    /// True when the user confirmed. Then exactly one of password and key file is written.
    virtual bool showEncryptionPasswordWindow(std::wstring& password, std::wstring& keyFile, std::uint32_t& algorithm,
                                              std::uint32_t& destiny, std::wstring& riddle) = 0;
    /// 0 confirmed, 1 ignore, 2 cancel. `validator` may be null.
    virtual int showDecryptionPasswordWindow(const wchar_t* fileName, const wchar_t* passwordToFillIn,
                                             const wchar_t* keyFileToFillIn, std::uint32_t mode,
                                             IDpvKeyValidation* validator, std::wstring& password,
                                             std::wstring& keyFile) = 0;
    /// 0 try again, 1 skip, 2 abort. A null text counts as empty.
    virtual int showFileErrorWindow(const wchar_t* title, const wchar_t* header, const wchar_t* source,
                                    const wchar_t* target, const wchar_t* message) = 0;
    /// Ends the message loop of the first thread. Returns when the hidden window is gone.
    virtual void closeMessageWindow() = 0;

protected:
    ~IGuiEvents() = default;
};

} // namespace JobRunner
