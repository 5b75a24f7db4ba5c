#include "vaultcore/package/package_names.h"

#include "platform/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace VaultCore
{
namespace
{

/// Names that mean a device, in whatever folder and with whatever extension.
constexpr std::array<std::wstring_view, 6> Devices{L"con", L"prn", L"aux", L"nul", L"conin$", L"conout$"};
constexpr std::wstring_view Raised = L"\u00B9\u00B2\u00B3";

/// Those that turn the direction of writing would let "exe.txt" show as "txt.exe".
bool isControl(wchar_t letter)
{
    return letter < L' ' || (letter >= L'\x7F' && letter < L'\xA0') || (letter >= L'\u202A' && letter <= L'\u202E') ||
           (letter >= L'\u2066' && letter <= L'\u2069');
}

bool isForbidden(wchar_t letter)
{
    return isControl(letter) || std::wstring_view(L"<>:\"/\\|?*").find(letter) != std::wstring_view::npos;
}

bool isHigh(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLow(wchar_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Half of a character alone: it stands for a byte that is no valid UTF-8.
bool isLone(std::wstring_view text, std::size_t index)
{
    constexpr bool Pairs = sizeof(wchar_t) == 2;
    if (isHigh(text[index]))
        return !Pairs || index + 1 == text.size() || !isLow(text[index + 1]);
    return isLow(text[index]) && (!Pairs || index == 0 || !isHigh(text[index - 1]));
}

bool hasLone(std::wstring_view text)
{
    for (std::size_t index = 0; index < text.size(); ++index)
    {
        if (isLone(text, index))
            return true;
    }
    return false;
}

std::size_t unitsOf(std::wstring_view text)
{
    const auto beyond = std::count_if(text.begin(), text.end(),
                                      [](wchar_t unit) { return (static_cast<std::uint32_t>(unit) >> 16) != 0; });
    return text.size() + static_cast<std::size_t>(beyond);
}

/// "com" and "lpt" with a digit; the raised ones count as well.
bool isPort(std::wstring_view name)
{
    if (name.size() != 4 || (!name.starts_with(L"com") && !name.starts_with(L"lpt")))
        return false;
    return (name[3] >= L'0' && name[3] <= L'9') || Raised.find(name[3]) != std::wstring_view::npos;
}

bool isDevice(std::wstring_view part)
{
    std::wstring name = foldedName(part.substr(0, part.find(L'.')));
    while (name.ends_with(L' '))
        name.pop_back();
    return isPort(name) || std::find(Devices.begin(), Devices.end(), name) != Devices.end();
}

bool endsBadly(std::wstring_view part)
{
    return part.ends_with(L'.') || part.ends_with(L' ');
}

std::optional<std::wstring> faultOfPart(std::wstring_view part)
{
    if (part.empty())
        return L"a part of it is empty";
    if (part == L"." || part == L"..")
        return L"it leads out of its folder";
    if (unitsOf(part) > LongestNamePart)
        return L"a part of it is too long";
    if (std::any_of(part.begin(), part.end(), isForbidden))
        return L"it holds a character that no file's name has";
    if (endsBadly(part))
        return L"a part of it ends in a dot or a space";
    if (isDevice(part))
        return L"it means a device";
    return std::nullopt;
}

struct FoldRange
{
    wchar_t first;
    wchar_t last;
    int distance;
    /// 2 where capital and small letters take turns.
    int step;
};

constexpr std::array<FoldRange, 29> FoldRanges{{
    {L'A', L'Z', 32, 1},     {0x00C0, 0x00D6, 32, 1}, {0x00D8, 0x00DE, 32, 1}, {0x0100, 0x012E, 1, 2},
    {0x0132, 0x0136, 1, 2},  {0x0139, 0x0147, 1, 2},  {0x014A, 0x0176, 1, 2},  {0x0178, 0x0178, -121, 1},
    {0x0179, 0x017D, 1, 2},  {0x01CD, 0x01DB, 1, 2},  {0x01DE, 0x01EE, 1, 2},  {0x01F8, 0x021E, 1, 2},
    {0x0222, 0x0232, 1, 2},  {0x0386, 0x0386, 38, 1}, {0x0388, 0x038A, 37, 1}, {0x038C, 0x038C, 64, 1},
    {0x038E, 0x038F, 63, 1}, {0x0391, 0x03A1, 32, 1}, {0x03A3, 0x03AB, 32, 1}, {0x0400, 0x040F, 80, 1},
    {0x0410, 0x042F, 32, 1}, {0x0460, 0x0480, 1, 2},  {0x048A, 0x04BE, 1, 2},  {0x04C1, 0x04CD, 1, 2},
    {0x04D0, 0x052E, 1, 2},  {0x0531, 0x0556, 48, 1}, {0x1E00, 0x1E94, 1, 2},  {0x1EA0, 0x1EFE, 1, 2},
    {0xFF21, 0xFF3A, 32, 1},
}};

/// Takes the first part of a name off; nothing is left behind the last one.
std::wstring_view takePart(std::optional<std::wstring_view>& left)
{
    const std::size_t end = left->find(L'/');
    const std::wstring_view part = left->substr(0, end);
    left = end == std::wstring_view::npos ? std::nullopt : std::optional(left->substr(end + 1));
    return part;
}

wchar_t folded(wchar_t letter)
{
    for (const FoldRange& range : FoldRanges)
    {
        if (letter >= range.first && letter <= range.last)
            return (letter - range.first) % range.step == 0 ? static_cast<wchar_t>(letter + range.distance) : letter;
    }
    return letter;
}

} // namespace

std::optional<std::wstring> faultOfName(const std::string& name)
{
    if (name.empty())
        return L"it is empty";
    if (name.size() > LongestPackageName)
        return L"it is too long";
    const std::wstring text = Platform::fromUtf8(name);
    if (hasLone(text))
        return L"it is no valid text";
    std::wstring_view left = text;
    for (;;)
    {
        const std::size_t end = left.find(L'/');
        if (auto fault = faultOfPart(left.substr(0, end)))
            return fault;
        if (end == std::wstring_view::npos)
            return std::nullopt;
        left.remove_prefix(end + 1);
    }
}

std::wstring packageNamePart(const std::wstring& name)
{
    std::wstring part = name;
    for (std::size_t index = 0; index < name.size(); ++index)
    {
        if (isForbidden(name[index]) || isLone(name, index))
            part[index] = L'_';
    }
    if (part.empty())
        return L"_";
    if (endsBadly(part))
        part.back() = L'_';
    return isDevice(part) ? L'_' + part : part;
}

std::wstring foldedName(std::wstring_view name)
{
    std::wstring result(name);
    std::transform(result.begin(), result.end(), result.begin(), folded);
    return result;
}

bool PackageNames::hasFile(std::wstring_view name) const
{
    const Entry* const entry = find(name);
    return entry != nullptr && entry->isFile;
}

bool PackageNames::hasFolder(std::wstring_view name) const
{
    const Entry* const entry = find(name);
    return entry != nullptr && !entry->isFile;
}

bool PackageNames::addFile(std::wstring_view name)
{
    if (!canAdd(name))
        return false;
    add(name, true);
    return true;
}

void PackageNames::addFolder(std::wstring_view name)
{
    add(name, false);
}

const PackageNames::Entry* PackageNames::find(std::wstring_view name) const
{
    const Entry* entry = nullptr;
    for (std::optional<std::wstring_view> left = name; left;)
    {
        const auto found = entries_.find({entry == nullptr ? Root : entry->number, foldedName(takePart(left))});
        if (found == entries_.end())
            return nullptr;
        entry = &found->second;
    }
    return entry;
}

/// Nothing of the name may be there yet, and no file on the way to it.
bool PackageNames::canAdd(std::wstring_view name) const
{
    std::size_t folder = Root;
    for (std::optional<std::wstring_view> left = name; left;)
    {
        const auto found = entries_.find({folder, foldedName(takePart(left))});
        if (found == entries_.end())
            return true;
        if (found->second.isFile)
            return false;
        folder = found->second.number;
    }
    return false;
}

void PackageNames::add(std::wstring_view name, bool isFile)
{
    std::size_t folder = Root;
    for (std::optional<std::wstring_view> left = name; left;)
    {
        Key key(folder, foldedName(takePart(left)));
        const Entry fresh{entries_.size() + 1, isFile && !left};
        folder = entries_.emplace(std::move(key), fresh).first->second.number;
    }
}

} // namespace VaultCore
