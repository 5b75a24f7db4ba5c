#include "windows/encryption_password/encryption_password_texts.h"

namespace JobRunner
{

namespace
{

bool holds(std::wstring_view text, std::wstring_view part)
{
    return text.find(part) != std::wstring_view::npos;
}

} // namespace

std::wstring algorithmName(int algorithm)
{
    const auto index = static_cast<std::size_t>(algorithm);
    return algorithm >= 0 && index < AlgorithmNames.size() ? AlgorithmNames[index] : L"";
}

std::wstring destinySentence(int destiny)
{
    switch (destiny)
    {
    case DestinyKeep:
        return L"Keep original files (do not delete).";
    case DestinyDelete:
        return L"Delete original files after encryption.";
    default:
        return L"Wipe original files after encryption.";
    }
}

std::wstring destinyText(int destiny)
{
    return destinySentence(destiny) + L" <a href=\"changedestiny\">Change</a>";
}

int nextDestiny(int destiny)
{
    return (destiny + 1) % 3;
}

std::wstring algorithmLink(int algorithm)
{
    const std::wstring name = algorithmName(algorithm);
    return L"<a href=\"algorithm_" + name + L"\">" + name + L"</a>";
}

std::wstring riddleCaption(const std::wstring& riddle)
{
    return riddle.empty() ? L"Set Riddle" : riddle;
}

std::wstring riddleLink(const std::wstring& riddle)
{
    return L"<a href=\"riddle\">" + riddleCaption(riddle) + L"</a>";
}

EncryptionLink linkOf(std::wstring_view href)
{
    if (href == L"changedestiny")
        return EncryptionLink::Destiny;
    if (holds(href, L"algorithm_"))
        return EncryptionLink::Algorithm;
    if (holds(href, L"riddle"))
        return EncryptionLink::Riddle;
    if (holds(href, L"sfxcomment"))
        return EncryptionLink::SfxComment;
    return EncryptionLink::None;
}

} // namespace JobRunner
