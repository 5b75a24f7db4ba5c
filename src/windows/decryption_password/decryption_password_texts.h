#pragma once

#include <string>

// What the decryption password dialog shows, on every system.

namespace JobRunner
{

namespace DecryptionText
{
inline constexpr const wchar_t* PasswordErrorTitle = L"Your Password";
inline constexpr const wchar_t* KeyFileErrorTitle = L"Your Key File";
} // namespace DecryptionText

/// Header of a `DecryptionPasswordMode`. The name of the file, which may be empty, is shortened.
std::wstring decryptionHeader(int mode, const std::wstring& fileName);
/// The second line: what becomes of the originals.
std::wstring decryptionOrigin(int mode);
bool decryptionCanIgnore(int mode);
/// Title over an error: of the edit that the user sees.
const wchar_t* decryptionErrorTitle(bool passwordMode);

} // namespace JobRunner
