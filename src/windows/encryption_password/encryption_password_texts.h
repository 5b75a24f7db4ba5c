#pragma once

#include <array>
#include <string>
#include <string_view>

// What the encryption password dialog shows and what its links mean, on every system. Pure functions.

namespace JobRunner
{

/// What becomes of the original files.
enum EncryptionDestiny : int
{
    DestinyKeep = 0,
    DestinyDelete = 1,
    DestinyWipe = 2,
};

namespace EncryptionText
{
inline constexpr const wchar_t* Header =
    L"Please enter password or provide key file to encrypt selected files on your computer.";
inline constexpr const wchar_t* RepeatCaption = L"Repeat:";
inline constexpr const wchar_t* AlgorithmCaption = L"Algorithm:";
inline constexpr const wchar_t* RiddleCaption = L"Riddle:";
inline constexpr const wchar_t* SfxCommentCaption = L"Sfx Comment:";
inline constexpr const wchar_t* SfxCommentLink = L"<a href=\"sfxcomment\">Change Sfx Description</a>";
inline constexpr const wchar_t* ErrorTitle = L"Correct your password";
inline constexpr const wchar_t* MoreButton = L"More >>";
inline constexpr const wchar_t* LessButton = L"<< Less";
} // namespace EncryptionText

/// The names in the order of the algorithms' numbers, which are the indices of the drop-down list too.
inline constexpr std::array AlgorithmNames{L"DESX",    L"BLOWFISH-448", L"3-DES",   L"AES-256",  L"RC2",    L"DIAMOND2",
                                           L"TEA-128", L"SAFER-128",    L"3-WAY",   L"GOST-256", L"SHARK",  L"CAST256E",
                                           L"SQUARE",  L"SKIPJACK80",   L"TWOFISH", L"MARS-448", L"SERPENT"};
/// "AES-256", at each opening.
inline constexpr int FirstAlgorithm = 3;

/// Empty for a number that has no name.
std::wstring algorithmName(int algorithm);
/// The sentence alone; the text of the wipe for every number but 0 and 1.
std::wstring destinySentence(int destiny);
/// The sentence with its link, as the dialog's text control takes it.
std::wstring destinyText(int destiny);
/// What a click on the destiny's link makes of it: 0 to 1 to 2 to 0.
int nextDestiny(int destiny);

std::wstring algorithmLink(int algorithm);
/// The caption of the riddle's link: the riddle, or an offer to set one.
std::wstring riddleCaption(const std::wstring& riddle);
/// The riddle goes into the link as it stands, unescaped.
std::wstring riddleLink(const std::wstring& riddle);

enum class EncryptionLink
{
    None,
    Destiny,
    Algorithm,
    Riddle,
    SfxComment,
};

/// What a click on a link with this `href` asks for.
EncryptionLink linkOf(std::wstring_view href);

} // namespace JobRunner
