#include "platform/testing_registry.h"
#include "platform/utf8.h"

// Keys and links, on each system.

namespace
{

using namespace Platform;

using Names = std::vector<std::wstring>;

constexpr std::uint32_t StatusBufferOverflow = 0x80000005;
constexpr std::uint32_t StatusInvalidHandle = 0xC0000008;
constexpr std::uint32_t StatusInvalidParameter = 0xC000000D;
constexpr std::uint32_t StatusAccessDenied = 0xC0000022;
constexpr std::uint32_t StatusBufferTooSmall = 0xC0000023;
constexpr std::uint32_t StatusCannotDelete = 0xC0000121;
constexpr std::uint32_t StatusKeyDeleted = 0xC000017C;

class RegistryKeys : public EachRegistry
{
protected:
    std::uint32_t query(Handle key, void* buffer, std::uint32_t length, std::uint32_t& needed)
    {
        return registry().queryKey(function("NtQueryKey"), key, 3, buffer, length, needed);
    }
    std::uint32_t query(Handle key)
    {
        std::uint32_t needed = 0;
        return query(key, nullptr, 0, needed);
    }
};

TEST_P(RegistryKeys, aMissingKeyIsNotFoundAndNotMadeByOpeningIt)
{
    EXPECT_EQ(errorOfOpening(base_, L"none"), ErrorFileNotFound);
    EXPECT_EQ(errorOfOpening(base_, L"none\\below"), ErrorFileNotFound);
    EXPECT_EQ(keysOf(base_), Names{});
}

TEST_P(RegistryKeys, aKeyIsMadeWithThoseAboveIt)
{
    create(base_, L"one\\two\\three");
    EXPECT_EQ(keysOf(base_), Names{L"one"});
    EXPECT_EQ(keysOf(open(base_, L"one")), Names{L"two"});
    EXPECT_EQ(keysOf(open(base_, L"one\\two")), Names{L"three"});
}

TEST_P(RegistryKeys, aKeyThatIsThereIsOpenedWithWhatItHolds)
{
    EXPECT_EQ(set(create(base_, L"one"), L"value", ValueBinary, {1}), 0u);
    EXPECT_EQ(get(create(base_, L"ONE"), L"value").data, (Bytes{1}));
    EXPECT_EQ(keysOf(base_), Names{L"one"});
}

TEST_P(RegistryKeys, pathsTakeSeparatorsInARowAndAtTheEndAsOneButNoneAtTheStart)
{
    create(base_, L"one\\two\\");
    EXPECT_EQ(errorOfOpening(base_, L"one\\\\two"), 0u);
    EXPECT_EQ(errorOfOpening(base_, L"one\\two\\"), 0u);
    EXPECT_EQ(errorOfOpening(base_, L"\\one"), ErrorBadPathname);
    EXPECT_EQ(errorOfCreating(base_, L"\\three"), ErrorBadPathname);
    EXPECT_EQ(keysOf(open(base_, L"one")), Names{L"two"});
}

TEST_P(RegistryKeys, aSlashIsALetter)
{
    create(base_, L"one/two");
    EXPECT_EQ(keysOf(base_), Names{L"one/two"});
}

TEST_P(RegistryKeys, aPathEndsAtItsFirstNullAndAnEmptyOneIsTheKeyItself)
{
    create(base_, std::wstring(L"one\0\\two", 8));
    EXPECT_EQ(keysOf(base_), Names{L"one"});
    EXPECT_EQ(keysOf(open(base_, std::wstring(L"\0one", 4))), Names{L"one"});
    EXPECT_EQ(keysOf(create(base_, L"")), Names{L"one"});
}

TEST_P(RegistryKeys, aNameHas255UnitsAtMost)
{
    const std::wstring longest(255, L'k');
    create(base_, longest);
    EXPECT_EQ(keysOf(base_), Names{longest});
    if (isWindows())
        return; // Wine makes a key of a longer name; Windows refuses it as below
    EXPECT_EQ(errorOfCreating(base_, longest + L'k'), ErrorInvalidParameter);
    EXPECT_EQ(errorOfCreating(base_, L"first\\" + longest + L'k'), ErrorInvalidParameter);
    EXPECT_EQ(keysOf(base_), Names{longest});
}

TEST_P(RegistryKeys, areEnumeratedByNameWhateverTheCaseOfTheLetters)
{
    for (const wchar_t* name : {L"beta", L"Delta", L"alpha", L"Charlie"})
        create(base_, name);
    EXPECT_EQ(keysOf(base_), (Names{L"alpha", L"beta", L"Charlie", L"Delta"}));
}

TEST_P(RegistryKeys, anEnumeratedNameNeedsRoomForItsTerminator)
{
    create(base_, L"four");
    std::wstring name;
    EXPECT_EQ(registry().enumerateKey(base_, 0, 4, name), ErrorMoreData);
    EXPECT_EQ(registry().enumerateKey(base_, 0, 5, name), 0u);
    EXPECT_EQ(name, L"four");
    EXPECT_EQ(registry().enumerateKey(base_, 1, 0, name), ErrorNoMoreItems);
    EXPECT_EQ(registry().enumerateKey(base_, 0xFFFFFFFF, 260, name), ErrorNoMoreItems);
}

TEST_P(RegistryKeys, roomForANameIsCountedInUnits)
{
    create(base_, L"\U0001F512"); // two of them
    std::wstring name;
    EXPECT_EQ(registry().enumerateKey(base_, 0, 2, name), ErrorMoreData);
    EXPECT_EQ(registry().enumerateKey(base_, 0, 3, name), 0u);
    EXPECT_EQ(name, L"\U0001F512");
}

TEST_P(RegistryKeys, aKeyWithKeysBelowItIsNotDeleted)
{
    create(base_, L"one\\two");
    EXPECT_EQ(registry().deleteSubKey(base_, L"one"), ErrorAccessDenied);
    EXPECT_EQ(registry().deleteSubKey(base_, L"one\\two"), 0u);
    EXPECT_EQ(registry().deleteSubKey(base_, L"one"), 0u);
    EXPECT_EQ(registry().deleteSubKey(base_, L"one"), ErrorFileNotFound);
    EXPECT_EQ(keysOf(base_), Names{});
}

TEST_P(RegistryKeys, anEmptyPathDeletesTheKeyItself)
{
    const Handle one = create(base_, L"one");
    EXPECT_EQ(registry().deleteSubKey(one, L""), 0u);
    EXPECT_EQ(keysOf(base_), Names{});
}

TEST_P(RegistryKeys, aHandleForReadingServesToCreateAndDeleteBelowIt)
{
    // The rights of the user count there, not those of the handle.
    const Handle reader = open(base_, L"");
    create(reader, L"one");
    EXPECT_EQ(keysOf(base_), Names{L"one"});
    EXPECT_EQ(registry().deleteSubKey(reader, L"one"), 0u);
    EXPECT_EQ(keysOf(base_), Names{});
}

TEST_P(RegistryKeys, aHandleOfADeletedKeyIsGoodForNothingButClosing)
{
    const Handle one = create(base_, L"one");
    EXPECT_EQ(set(one, L"value", ValueBinary, {1}), 0u);
    EXPECT_EQ(registry().deleteSubKey(base_, L"one"), 0u);
    const auto isDeleted = [&](Handle key)
    {
        std::wstring name;
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        EXPECT_EQ(get(key, L"value").error, ErrorKeyDeleted);
        EXPECT_EQ(set(key, L"value", ValueBinary, {2}), ErrorKeyDeleted);
        EXPECT_EQ(registry().deleteValue(key, L"value"), ErrorKeyDeleted);
        EXPECT_EQ(registry().enumerateKey(key, 0, 260, name), ErrorKeyDeleted);
        EXPECT_EQ(registry().enumerateValue(key, 0, 16384, name, type, nullptr, size), ErrorKeyDeleted);
        EXPECT_EQ(errorOfOpening(key, L""), ErrorKeyDeleted);
        EXPECT_EQ(errorOfOpening(key, L"two"), ErrorKeyDeleted);
        EXPECT_EQ(errorOfCreating(key, L"two"), ErrorKeyDeleted);
        EXPECT_EQ(registry().deleteSubKey(key, L"two"), ErrorKeyDeleted);
        EXPECT_EQ(query(key), StatusKeyDeleted);
    };
    isDeleted(one);
    create(base_, L"one"); // another key, whatever its name
    isDeleted(one);
    EXPECT_EQ(get(open(base_, L"one"), L"value").error, ErrorFileNotFound);
    EXPECT_EQ(close(one), 0u);
}

TEST_P(RegistryKeys, theRootsAreAlwaysOpenAndNeverClosed)
{
    EXPECT_EQ(registry().closeKey(CurrentUser), 0u);
    EXPECT_EQ(registry().closeKey(LocalMachine), 0u);
    EXPECT_EQ(errorOfOpening(CurrentUser, path_), 0u);
    EXPECT_EQ(errorOfOpening(CurrentUser, L""), 0u);
}

TEST_P(RegistryKeys, theMachineHasNoSuchKey)
{
    EXPECT_EQ(errorOfOpening(LocalMachine, path_), ErrorFileNotFound);
    EXPECT_EQ(registry().deleteSubKey(LocalMachine, path_), ErrorFileNotFound);
    if (isWindows())
        return; // it has other keys there
    std::wstring name;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(errorOfOpening(LocalMachine, L"Software"), ErrorFileNotFound);
    EXPECT_EQ(errorOfCreating(LocalMachine, L"Software"), ErrorAccessDenied);
    EXPECT_EQ(set(LocalMachine, L"value", ValueBinary, {1}), ErrorAccessDenied);
    EXPECT_EQ(get(LocalMachine, L"value").error, ErrorFileNotFound);
    EXPECT_EQ(registry().deleteValue(LocalMachine, L"value"), ErrorFileNotFound);
    EXPECT_EQ(registry().enumerateKey(LocalMachine, 0, 260, name), ErrorNoMoreItems);
    EXPECT_EQ(registry().enumerateValue(LocalMachine, 0, 260, name, type, nullptr, size), ErrorNoMoreItems);
}

TEST_P(RegistryKeys, bothViewsOfTheUserAreOne)
{
    Handle in64 = ClosedKey;
    EXPECT_EQ(registry().createKey(base_, L"one", 0, KeyAllAccess | KeyView64, in64), 0u);
    keep(in64);
    EXPECT_EQ(set(in64, L"value", ValueBinary, {1}), 0u);
    EXPECT_EQ(get(open(base_, L"one", 0, KeyRead | KeyView32), L"value").data, (Bytes{1}));
    EXPECT_EQ(get(open(base_, L"one", 0, KeyRead), L"value").data, (Bytes{1}));
}

TEST_P(RegistryKeys, theObjectOfAKeyIsDeletedThroughAHandleThatMay)
{
    const Handle one = create(base_, L"one");
    EXPECT_EQ(deleteObject(open(base_, L"one")), StatusAccessDenied);
    EXPECT_EQ(keysOf(base_), Names{L"one"});
    EXPECT_EQ(deleteObject(one), 0u);
    EXPECT_EQ(keysOf(base_), Names{});
    EXPECT_EQ(get(one, L"value").error, ErrorKeyDeleted);
}

TEST_P(RegistryKeys, theObjectOfAKeyWithKeysBelowItIsNotDeleted)
{
    create(base_, L"one\\two");
    const std::uint32_t status = deleteObject(create(base_, L"one"));
    EXPECT_EQ(status, isWindows() && status == StatusAccessDenied ? StatusAccessDenied : StatusCannotDelete); // Wine
    EXPECT_EQ(keysOf(base_), Names{L"one"});
}

TEST_P(RegistryKeys, whatIsNoHandleHasNoObject)
{
    for (const Handle none : {Handle{0}, CurrentUser})
    {
        EXPECT_EQ(deleteObject(none), StatusInvalidHandle);
        EXPECT_EQ(query(none), StatusInvalidHandle);
    }
}

TEST_P(RegistryKeys, theFullNameComesBehindItsLengthAndTakesAsMuchRoomAsIsTold)
{
    std::uint32_t needed = 0;
    EXPECT_EQ(query(base_, nullptr, 0, needed), StatusBufferTooSmall);
    Bytes buffer(needed + 1, 9);
    EXPECT_EQ(query(base_, buffer.data(), 3, needed), StatusBufferTooSmall);
    EXPECT_EQ(query(base_, buffer.data(), needed - 2, needed), StatusBufferOverflow);
    EXPECT_EQ(buffer[needed - 2], 9);
    EXPECT_EQ(query(base_, buffer.data(), needed, needed), 0u);
    EXPECT_EQ(buffer[needed], 9);
    EXPECT_EQ(buffer[0] + 256u * buffer[1], needed - 4);
    const std::wstring name = fromUtf16(std::span(buffer).subspan(4, needed - 4));
    EXPECT_TRUE(name.ends_with(L'\\' + path_)) << toUtf8(name);
    EXPECT_EQ(name.substr(0, 10), L"\\REGISTRY\\");
    EXPECT_EQ(registry().queryKey(function("NtQueryKey"), base_, 99, nullptr, 0, needed), StatusInvalidParameter);
}

TEST_P(RegistryKeys, theFullNameIsToldWhateverTheHandleMay)
{
    constexpr std::uint32_t SetValue = 0x0002;
    EXPECT_EQ(query(open(base_, L"", 0, SetValue)), StatusBufferTooSmall);
}

INSTANTIATE_EACH_SYSTEM(RegistryKeys);

} // namespace
