#include "platform/testing_registry.h"

// Values, on each system.

namespace
{

using namespace Platform;

class RegistryValues : public EachRegistry
{
};

TEST_P(RegistryValues, aValueOfAnyTypeComesBackAsItWasSet)
{
    const std::vector<std::pair<std::uint32_t, Bytes>> values = {
        {ValueText, toUtf16(std::wstring(L"a text\0", 7))},
        {ValueText, {}},
        {ValueText, toUtf16(std::wstring(L"a\0b\0", 4))},
        {ValueText, {0x41, 0x00, 0x00, 0x00, 0x42}}, // of an odd length
        {ValueText, {0x3D, 0xD8, 0x00, 0x00}},       // half a character
        {ValueExpandText, toUtf16(std::wstring(L"%PATH%\0", 7))},
        {ValueBinary, {0, 1, 2, 0xFF, 0}},
        {ValueBinary, {}},
        {ValueDword, {1, 2, 3, 4}},
        {ValueDword, {1, 2, 3}},
        {ValueDword, {1, 2, 3, 4, 5}},
        {ValueDwordBigEndian, {1, 2, 3, 4}},
        {ValueMultiText, toUtf16(std::wstring(L"one\0two\0\0", 9))},
        {ValueQword, {1, 2, 3, 4, 5, 6, 7, 8}},
        {ValueQword, {1}},
        {ValueLink, toUtf16(L"no link at all")}, // outside of a link it is a value like any other
        {0, {7}},
        {0xFFFFFFFF, {7, 8}},
    };
    for (std::size_t index = 0; index < values.size(); ++index)
    {
        const std::wstring name = L"value " + std::to_wstring(index);
        EXPECT_EQ(set(base_, name, values[index].first, values[index].second), 0u) << index;
        EXPECT_EQ(get(base_, name), (Value{0, values[index].first, values[index].second})) << index;
    }
}

TEST_P(RegistryValues, aLargeValueComesBackWhole)
{
    Bytes data(100000);
    for (std::size_t index = 0; index < data.size(); ++index)
        data[index] = static_cast<std::uint8_t>(index * 7);
    EXPECT_EQ(set(base_, L"large", ValueBinary, data), 0u);
    EXPECT_EQ(get(base_, L"large"), (Value{0, ValueBinary, data}));
}

TEST_P(RegistryValues, aValueIsReplacedWithItsType)
{
    EXPECT_EQ(set(base_, L"value", ValueDword, {1, 2, 3, 4}), 0u);
    EXPECT_EQ(set(base_, L"value", ValueBinary, {9}), 0u);
    EXPECT_EQ(get(base_, L"value"), (Value{0, ValueBinary, {9}}));
    EXPECT_EQ(valuesOf(base_), (std::vector<std::wstring>{L"value"}));
}

TEST_P(RegistryValues, theCaseOfLettersInANameMeansNothingAndStaysAsItWasFirstWritten)
{
    EXPECT_EQ(set(base_, L"Name \u00C4\u0416\u03A9", ValueBinary, {1}), 0u);
    EXPECT_EQ(set(base_, L"nAME \u00E4\u0436\u03C9", ValueBinary, {2}), 0u);
    EXPECT_EQ(get(base_, L"NAME \u00C4\u0436\u03C9").data, (Bytes{2}));
    EXPECT_EQ(valuesOf(base_), (std::vector<std::wstring>{L"Name \u00C4\u0416\u03A9"}));
    EXPECT_EQ(registry().deleteValue(base_, L"name \u00E4\u0416\u03A9"), 0u);
    EXPECT_EQ(valuesOf(base_), (std::vector<std::wstring>{}));
}

TEST_P(RegistryValues, aNameEndsAtItsFirstNull)
{
    EXPECT_EQ(set(base_, std::wstring(L"name\0more", 9), ValueBinary, {1}), 0u);
    EXPECT_EQ(get(base_, L"name").data, (Bytes{1}));
    EXPECT_EQ(get(base_, std::wstring(L"name\0other", 10)).data, (Bytes{1}));
    EXPECT_EQ(registry().deleteValue(base_, std::wstring(L"name\0", 5)), 0u);
    EXPECT_EQ(get(base_, L"name").error, ErrorFileNotFound);
}

TEST_P(RegistryValues, aNameMayBeEmptyOrHoldAnyCharacter)
{
    const std::vector<std::wstring> names = {
        L"", L" ", L"\\", L"a\\b", L"\"%\"", L"line\nbreak\r", L"\u00E9", L"%d", L"\U0001F512", L"\u2028\u0085"};
    for (std::size_t index = 0; index < names.size(); ++index)
        EXPECT_EQ(set(base_, names[index], ValueBinary, {static_cast<std::uint8_t>(index)}), 0u) << index;
    for (std::size_t index = 0; index < names.size(); ++index)
        EXPECT_EQ(get(base_, names[index]).data, Bytes{static_cast<std::uint8_t>(index)}) << index;
    EXPECT_EQ(valuesOf(base_).size(), names.size());
}

TEST_P(RegistryValues, aNameHas16383UnitsAtMost)
{
    const std::wstring longest(16383, L'n');
    EXPECT_EQ(set(base_, longest, ValueBinary, {1}), 0u);
    EXPECT_EQ(get(base_, longest).data, (Bytes{1}));
    EXPECT_EQ(set(base_, longest + L'n', ValueBinary, {1}), ErrorInvalidParameter);
    EXPECT_EQ(get(base_, longest + L'n').error, ErrorFileNotFound);
    EXPECT_EQ(registry().deleteValue(base_, longest + L'n'), ErrorFileNotFound);
    EXPECT_EQ(valuesOf(base_), (std::vector<std::wstring>{longest}));
}

TEST_P(RegistryValues, aMissingValueIsNotFound)
{
    std::uint32_t type = 77;
    std::uint32_t size = 4;
    Bytes data{1, 2, 3, 4};
    EXPECT_EQ(registry().queryValue(base_, L"none", type, data.data(), size), ErrorFileNotFound);
    EXPECT_EQ(data, (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(registry().deleteValue(base_, L"none"), ErrorFileNotFound);
}

TEST_P(RegistryValues, withoutABufferTypeAndSizeAreTold)
{
    EXPECT_EQ(set(base_, L"value", ValueBinary, {1, 2, 3}), 0u);
    for (const std::uint32_t given : {0u, 1u, 100u})
    {
        std::uint32_t type = 77;
        std::uint32_t size = given;
        EXPECT_EQ(registry().queryValue(base_, L"value", type, nullptr, size), 0u);
        EXPECT_EQ(type, ValueBinary);
        EXPECT_EQ(size, 3u);
    }
}

TEST_P(RegistryValues, tooLittleRoomIsMoreDataAndTheSizeIsTold)
{
    EXPECT_EQ(set(base_, L"value", ValueBinary, {1, 2, 3}), 0u);
    for (const std::uint32_t room : {0u, 1u, 2u})
    {
        Bytes data(3, 9);
        std::uint32_t type = 77;
        std::uint32_t size = room;
        EXPECT_EQ(registry().queryValue(base_, L"value", type, data.data(), size), ErrorMoreData);
        EXPECT_EQ(type, ValueBinary);
        EXPECT_EQ(size, 3u);
        EXPECT_EQ(data[2], 9);
    }
}

TEST_P(RegistryValues, moreRoomThanNeededStaysUntouched)
{
    EXPECT_EQ(set(base_, L"value", ValueBinary, {1, 2, 3}), 0u);
    Bytes data(5, 9);
    std::uint32_t type = 0;
    std::uint32_t size = 5;
    EXPECT_EQ(registry().queryValue(base_, L"value", type, data.data(), size), 0u);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(data, (Bytes{1, 2, 3, 9, 9}));
}

TEST_P(RegistryValues, areEnumeratedWithNameTypeAndData)
{
    EXPECT_EQ(set(base_, L"zebra", ValueDword, {1, 2, 3, 4}), 0u);
    EXPECT_EQ(set(base_, L"ant", ValueBinary, {5}), 0u);
    std::vector<std::wstring> names;
    for (std::uint32_t index = 0; index < 2; ++index)
    {
        std::wstring name;
        std::uint32_t type = 0;
        std::uint32_t size = 4;
        Bytes data(4);
        EXPECT_EQ(registry().enumerateValue(base_, index, 6, name, type, data.data(), size), 0u);
        data.resize(size);
        EXPECT_EQ((Value{0, type, data}), get(base_, name));
        names.push_back(name);
    }
    std::sort(names.begin(), names.end()); // Wine has them by name, Windows and we as they were made
    EXPECT_EQ(names, (std::vector<std::wstring>{L"ant", L"zebra"}));
}

TEST_P(RegistryValues, anEnumerationEndsBehindTheLast)
{
    EXPECT_EQ(set(base_, L"one", ValueBinary, {1}), 0u);
    std::wstring name = L"as before";
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(registry().enumerateValue(base_, 1, 16384, name, type, nullptr, size), ErrorNoMoreItems);
    EXPECT_EQ(registry().enumerateValue(base_, 0xFFFFFFFF, 16384, name, type, nullptr, size), ErrorNoMoreItems);
    EXPECT_EQ(name, L"as before");
}

TEST_P(RegistryValues, anEnumeratedNameNeedsRoomForItsTerminator)
{
    EXPECT_EQ(set(base_, L"four", ValueBinary, {1, 2}), 0u);
    std::wstring name;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(registry().enumerateValue(base_, 0, 4, name, type, nullptr, size), ErrorMoreData);
    EXPECT_EQ(registry().enumerateValue(base_, 0, 5, name, type, nullptr, size), 0u);
    EXPECT_EQ(name, L"four");
    EXPECT_EQ(size, 2u);
}

TEST_P(RegistryValues, enumeratedDataNeedsRoomToo)
{
    EXPECT_EQ(set(base_, L"name", ValueBinary, {1, 2}), 0u);
    std::wstring name;
    std::uint32_t type = 0;
    std::uint32_t size = 1;
    Bytes data(1, 9);
    EXPECT_EQ(registry().enumerateValue(base_, 0, 16384, name, type, data.data(), size), ErrorMoreData);
    EXPECT_EQ(type, ValueBinary);
    EXPECT_EQ(size, 2u);
}

TEST_P(RegistryValues, aKeyOpenForReadingIsNotWrittenTo)
{
    EXPECT_EQ(set(base_, L"value", ValueBinary, {1}), 0u);
    const Handle reader = open(base_, L"");
    EXPECT_EQ(get(reader, L"value").data, (Bytes{1}));
    EXPECT_EQ(set(reader, L"value", ValueBinary, {2}), ErrorAccessDenied);
    EXPECT_EQ(registry().deleteValue(reader, L"value"), ErrorAccessDenied);
    EXPECT_EQ(get(reader, L"value").data, (Bytes{1}));
}

TEST_P(RegistryValues, aKeyOpenForWritingAloneIsNotRead)
{
    constexpr std::uint32_t SetValue = 0x0002;
    const Handle writer = open(base_, L"", 0, SetValue);
    EXPECT_EQ(set(writer, L"value", ValueBinary, {1}), 0u);
    EXPECT_EQ(get(writer, L"value").error, ErrorAccessDenied);
    std::wstring name;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(registry().enumerateValue(writer, 0, 16384, name, type, nullptr, size), ErrorAccessDenied);
    EXPECT_EQ(registry().enumerateKey(writer, 0, 260, name), ErrorAccessDenied);
}

TEST_P(RegistryValues, allHandlesOfAKeySeeTheSame)
{
    const Handle second = open(Platform::CurrentUser, path_);
    EXPECT_EQ(get(second, L"value").error, ErrorFileNotFound);
    EXPECT_EQ(set(base_, L"value", ValueBinary, {1}), 0u);
    EXPECT_EQ(get(second, L"value").data, (Bytes{1}));
    EXPECT_EQ(registry().deleteValue(base_, L"value"), 0u);
    EXPECT_EQ(get(second, L"value").error, ErrorFileNotFound);
}

TEST_P(RegistryValues, whatIsNoHandleIsRefused)
{
    std::vector<Handle> handles = {0};
    if (!isWindows()) // where -1 is the process, and a closed number may be something else by now
        handles.insert(handles.end(), {ClosedKey, open(base_, L"")});
    EXPECT_EQ(close(handles.back()), isWindows() ? ErrorInvalidHandle : 0u);
    for (const Handle none : handles)
    {
        std::wstring name;
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        EXPECT_EQ(registry().queryValue(none, L"", type, nullptr, size), ErrorInvalidHandle);
        EXPECT_EQ(set(none, L"", ValueBinary, {1}), ErrorInvalidHandle);
        EXPECT_EQ(registry().deleteValue(none, L""), ErrorInvalidHandle);
        EXPECT_EQ(registry().enumerateKey(none, 0, 260, name), ErrorInvalidHandle);
        EXPECT_EQ(registry().enumerateValue(none, 0, 260, name, type, nullptr, size), ErrorInvalidHandle);
        EXPECT_EQ(registry().closeKey(none), ErrorInvalidHandle);
        EXPECT_EQ(errorOfOpening(none, L"x"), ErrorInvalidHandle);
        EXPECT_EQ(errorOfCreating(none, L"x"), ErrorInvalidHandle);
        EXPECT_EQ(registry().deleteSubKey(none, L"x"), ErrorInvalidHandle);
    }
}

INSTANTIATE_EACH_SYSTEM(RegistryValues);

} // namespace
