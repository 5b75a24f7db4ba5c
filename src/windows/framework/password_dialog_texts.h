#pragma once

#include <array>

// Texts of both password dialogs.

namespace JobRunner
{

inline constexpr const wchar_t* PasswordDialogCaption = L"Enter Password";
inline constexpr const wchar_t* OriginCaption = L"Origin:";

/// One choice of the input choice, with the two texts that the control takes.
struct InputChoiceItem
{
    const wchar_t* text;
    const wchar_t* secondText;
};

inline constexpr std::array<InputChoiceItem, 2> InputChoices{{{L"Password", L"Password"}, {L"Key file", L"Key File"}}};

} // namespace JobRunner
