#include "systemutilities/registry/registry_key.h"

#include "platform/handles.h"
#include "platform/platform.h"
#include "platform/utf16.h"
#include "systemutilities/win32_exception.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <span>

namespace Halden::SystemUtilities::Registry
{

namespace
{

constexpr char ReadFailed[] = "RegGetValue failed.";
constexpr char WriteFailed[] = "RegSetKeyValue failed.";
constexpr char DeleteFailed[] = "DeleteValue failed.";
constexpr char EnumerateFailed[] = "RegEnumValue failed.";
constexpr std::uint32_t NameCapacity = 16383; // with the terminator

Platform::Registry& registry()
{
    return Platform::platform().registry;
}

std::uint32_t sizeOf(const Bytes& data)
{
    return static_cast<std::uint32_t>(data.size());
}

template <class Number> Bytes bytesOf(Number value)
{
    const auto bytes = std::bit_cast<std::array<std::uint8_t, sizeof(Number)>>(value);
    return {bytes.begin(), bytes.end()};
}

void appendTerminated(Bytes& data, const std::wstring& text)
{
    const Bytes units = Platform::toUtf16(text);
    data.insert(data.end(), units.begin(), units.end());
    data.insert(data.end(), 2, 0);
}

Bytes terminated(const std::wstring& text)
{
    Bytes data;
    appendTerminated(data, text);
    return data;
}

/// Splits the data of a multiple text. Kept: a text that no null ends is left out, and since a null always ends a text,
/// a list without any text, which is one null, is read as one empty text.
std::vector<std::wstring> splitTexts(std::span<const std::uint8_t> data)
{
    const auto isNull = [&data](std::size_t unit) { return data[unit] == 0 && data[unit + 1] == 0; };
    std::vector<std::wstring> texts;
    std::size_t start = 0;
    for (std::size_t unit = 0; unit + 1 < data.size(); unit += 2)
    {
        if (!isNull(unit))
            continue;
        texts.push_back(Platform::fromUtf16(data.subspan(start, unit - start)));
        start = unit + 2;
        if (start + 1 < data.size() && isNull(start))
            break;
    }
    return texts;
}

} // namespace

template <class Number>
Number RegistryKey::readNumber(const std::wstring& name, std::uint32_t type, Number defaultValue)
{
    if (!openForReading(false))
        return defaultValue;
    Number value = 0;
    std::uint32_t size = sizeof(value);
    const std::uint32_t result = registry().queryValue(handle_, name, type, &value, size);
    if (result == Platform::ErrorFileNotFound)
        return defaultValue;
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(ReadFailed, result);
    return value; // intended: whatever the type that came back
}

std::uint32_t RegistryKey::GetDword(const std::wstring& name, std::uint32_t defaultValue)
{
    return readNumber(name, Platform::ValueDword, defaultValue);
}

std::uint64_t RegistryKey::GetQword(const std::wstring& name, std::uint64_t defaultValue)
{
    return readNumber(name, Platform::ValueQword, defaultValue);
}

bool RegistryKey::GetRawValue(const std::wstring& name, std::uint32_t& type, Bytes& data)
{
    if (!openForReading(false))
        return false;
    Bytes read;
    std::uint32_t found = 0;
    std::uint32_t size = 0;
    std::uint32_t result = registry().queryValue(handle_, name, found, nullptr, size);
    if (result == Platform::ErrorSuccess)
    {
        read.resize(size);
        result = registry().queryValue(handle_, name, found, read.data(), size);
    }
    if (result == Platform::ErrorFileNotFound)
        return false;
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(ReadFailed, result);
    read.resize(std::min<std::size_t>(size, read.size())); // it may have become shorter in between
    type = found;
    data = std::move(read);
    return true;
}

std::wstring RegistryKey::GetString(const std::wstring& name, const std::wstring& defaultValue)
{
    std::uint32_t type = 0;
    Bytes data;
    const bool found = GetRawValue(name, type, data);
    if (!found || (type != Platform::ValueText && type != Platform::ValueExpandText))
        return defaultValue;
    const std::wstring text = Platform::fromUtf16(data);
    return text.substr(0, text.find(L'\0'));
}

std::vector<std::wstring> RegistryKey::GetMultiString(const std::wstring& name,
                                                      const std::vector<std::wstring>& defaultValue)
{
    std::uint32_t type = 0;
    Bytes data;
    if (!GetRawValue(name, type, data) || type != Platform::ValueMultiText)
        return defaultValue;
    return splitTexts(data);
}

Bytes RegistryKey::GetBinary(const std::wstring& name)
{
    std::uint32_t type = 0;
    Bytes data;
    if (!GetRawValue(name, type, data))
        return {};
    return data;
}

void RegistryKey::SetRawValue(const std::wstring& name, std::uint32_t type, const Bytes& data)
{
    openForWriting(type == Platform::ValueLink);
    const std::uint32_t result = registry().setValue(handle_, name, type, data.data(), sizeOf(data));
    if (result != Platform::ErrorSuccess)
        throw Win32Exception(WriteFailed, result);
}

void RegistryKey::SetString(const std::wstring& name, const std::wstring& value)
{
    SetRawValue(name, Platform::ValueText, terminated(value));
}

void RegistryKey::SetExpandString(const std::wstring& name, const std::wstring& value)
{
    SetRawValue(name, Platform::ValueExpandText, terminated(value));
}

void RegistryKey::SetMultiString(const std::wstring& name, const std::vector<std::wstring>& value)
{
    Bytes data;
    for (const std::wstring& text : value)
        appendTerminated(data, text);
    data.insert(data.end(), 2, 0);
    SetRawValue(name, Platform::ValueMultiText, data);
}

void RegistryKey::SetDword(const std::wstring& name, std::uint32_t value, bool bigEndian)
{
    // Intended: only the type tells the two apart, so that `GetDword` gives back what was written.
    SetRawValue(name, bigEndian ? Platform::ValueDwordBigEndian : Platform::ValueDword, bytesOf(value));
}

void RegistryKey::SetQword(const std::wstring& name, std::uint64_t value)
{
    SetRawValue(name, Platform::ValueQword, bytesOf(value));
}

void RegistryKey::SetBinary(const std::wstring& name, const Bytes& value)
{
    SetRawValue(name, Platform::ValueBinary, value);
}

void RegistryKey::DeleteValue(const std::wstring& name, bool openLink)
{
    openForWriting(openLink);
    const std::uint32_t result = registry().deleteValue(handle_, name);
    if (result != Platform::ErrorSuccess && result != Platform::ErrorFileNotFound)
        throw Win32Exception(DeleteFailed, result);
}

std::vector<RegistryValue> RegistryKey::GetValues(bool openLink)
{
    std::vector<RegistryValue> values;
    if (!openForReading(openLink))
        return values;
    for (std::uint32_t index = 0;; ++index)
    {
        RegistryValue value;
        std::uint32_t size = 0;
        const auto enumerate = [&](void* data)
        { return registry().enumerateValue(handle_, index, NameCapacity, value.name, value.type, data, size); };
        const std::uint32_t result = enumerate(nullptr);
        if (result == Platform::ErrorNoMoreItems)
            return values;
        if (result == Platform::ErrorAccessDenied)
            continue;
        if (result != Platform::ErrorSuccess)
            throw Win32Exception(EnumerateFailed, result);
        value.data.resize(size);
        if (size != 0)
            if (const std::uint32_t second = enumerate(value.data.data()); second != Platform::ErrorSuccess)
                throw Win32Exception(EnumerateFailed, second);
        value.data.resize(std::min<std::size_t>(size, value.data.size()));
        values.push_back(std::move(value));
    }
}

} // namespace Halden::SystemUtilities::Registry
