#pragma once

#include <cstdint>
#include <string>

namespace Platform
{

inline constexpr std::uint32_t BoxOk = 0x00;
inline constexpr std::uint32_t BoxYesNo = 0x04;
inline constexpr std::uint32_t BoxIconQuestion = 0x20;
inline constexpr std::uint32_t BoxIconExclamation = 0x30;
inline constexpr std::uint32_t BoxIconInformation = 0x40;

inline constexpr int BoxAnswerOk = 1;
inline constexpr int BoxAnswerYes = 6;
inline constexpr int BoxAnswerNo = 7;

/// `MessageBoxW` without an owner. Any thread; blocks until the user has answered.
class MessageBoxes
{
public:
    virtual ~MessageBoxes() = default;
    virtual int show(const std::wstring& text, const std::wstring& caption, std::uint32_t flags) = 0;
};

} // namespace Platform
