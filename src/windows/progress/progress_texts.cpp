#include "windows/progress/progress_texts.h"

#include "windows/progress/i_progress_window_view.h"

#include <charconv>

namespace JobRunner
{

namespace
{

constexpr const wchar_t* NotAvailable = L"n/a";

/// At least two digits, as "%.2d".
std::wstring twoDigits(int number)
{
    std::wstring text = std::to_wstring(number);
    const std::size_t firstDigit = number < 0 ? 1 : 0;
    if (text.size() == firstDigit + 1)
        text.insert(firstDigit, 1, L'0');
    return text;
}

std::wstring fixedText(double number, int decimals)
{
    char buffer[400]; // the longest double has 309 digits before the point
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, decimals);
    return {buffer, result.ptr};
}

/// The low 32 bits, as "%d" takes them from a 64-bit number.
std::wstring shortNumber(std::uint64_t number)
{
    return std::to_wstring(static_cast<std::int32_t>(static_cast<std::uint32_t>(number)));
}

} // namespace

std::wstring timeText(int seconds)
{
    if (seconds == UnknownTime)
        return NotAvailable;
    return twoDigits(seconds / 3600) + L':' + twoDigits(seconds / 60 % 60) + L':' + twoDigits(seconds % 60);
}

std::wstring speedText(std::uint64_t bytesPerSecond)
{
    return shortNumber(bytesPerSecond >> 10) + L" Kb/sec";
}

std::wstring bytesText(std::uint64_t bytes)
{
    if (bytes == UnknownBytes)
        return NotAvailable;
    return shortNumber(bytes >> 20) + L" MB";
}

std::wstring fileProgressText(const std::wstring& name, double percent, bool wiping)
{
    return name + L" (" + fixedText(percent, 2) + L"%)" + (wiping ? L" - Wiping" : L"");
}

std::wstring totalProgressText(double percent)
{
    if (percent == UnknownPercent)
        return L"Total: n/a";
    return L"Total: " + fixedText(percent, 1) + L'%';
}

std::wstring operationTitle(int operation)
{
    switch (operation)
    {
    case OperationEncrypt:
        return L"Encryption";
    case OperationDecrypt:
        return L"Decryption";
    case OperationDelete:
        return L"Deletion";
    case OperationWipe:
        return L"Quick Wipe";
    default:
        return {};
    }
}

std::wstring progressTitle(int operation, std::optional<int> percent)
{
    std::wstring title = operationTitle(operation);
    if (!percent)
        return title;
    return title + L" (" + std::to_wstring(*percent) + L"%)";
}

} // namespace JobRunner
