#include "windows/decryption_password/decryption_password_texts.h"

#include "systemutilities/shell_utilities.h"
#include "windows/decryption_password/i_decryption_password_view.h"

namespace JobRunner
{

namespace
{
constexpr unsigned ShownNameLength = 40;
}

std::wstring decryptionHeader(int mode, const std::wstring& fileName)
{
    if (mode == DecryptionOpensDocument)
        return L"Please enter password to open the document in the associated application.";
    if (fileName.empty())
        return L"Please enter password or provide key file to decrypt selected files on your computer.";
    return L"Provide Key for " + Halden::SystemUtilities::compactPath(fileName, ShownNameLength);
}

std::wstring decryptionOrigin(int mode)
{
    switch (mode)
    {
    case DecryptionDeletesOriginals:
        return L"Delete original files after decryption.";
    case DecryptionOpensDocument:
        return L"Decrypt, Open, Encrypt again (automatically).";
    default:
        return L"Keep original files (do not delete).";
    }
}

bool decryptionCanIgnore(int mode)
{
    return mode != DecryptionOpensDocument;
}

const wchar_t* decryptionErrorTitle(bool passwordMode)
{
    return passwordMode ? DecryptionText::PasswordErrorTitle : DecryptionText::KeyFileErrorTitle;
}

} // namespace JobRunner
