#include "systemutilities/registry/testing_scripted_registry.h"

#include "platform/utf16.h"

namespace Halden::SystemUtilities::Registry
{

namespace
{

using Calls = std::vector<std::wstring>;

class KernelPathOfAKey : public ScriptedKey
{
protected:
    /// The record of a name: its length, and then itself.
    static Bytes record(const std::wstring& name)
    {
        Bytes data = Platform::toUtf16(name);
        const auto length = static_cast<std::uint8_t>(data.size());
        data.insert(data.begin(), {length, 0, 0, 0});
        return data;
    }
    void tellSize(std::uint32_t size) { registry_.tell(L"NtQueryKey", {0xC0000023, 0, {}, {}, size}); }
};

TEST_F(KernelPathOfAKey, isAskedForTwiceWithRoomForATerminator)
{
    tellSize(18);
    registry_.tell(L"NtQueryKey", {0, 0, record(L"\\A\\B\\CD")});
    EXPECT_EQ(key_->GetNtPath(), L"\\A\\B\\CD");
    EXPECT_EQ(calls(), (Calls{L"open 7 Key 0 20119", L"load ntdll.dll", L"find NtQueryKey", L"NtQueryKey 101 3 size 0",
                              L"NtQueryKey 101 3 into 20", L"unload"}));
}

TEST_F(KernelPathOfAKey, hasAnEvenRoom)
{
    tellSize(17);
    registry_.tell(L"NtQueryKey", {0, 0, record(L"\\A")});
    EXPECT_EQ(key_->GetNtPath(), L"\\A");
    EXPECT_EQ(calls().at(4), L"NtQueryKey 101 3 into 18");
}

TEST_F(KernelPathOfAKey, endsWhereTheSecondAnswerSays)
{
    tellSize(18);
    Bytes longer = record(L"\\ABCDEF");
    registry_.tell(L"NtQueryKey", {0, 0, longer, {}, 10});
    EXPECT_EQ(key_->GetNtPath(), L"\\AB");
    tellSize(18);
    registry_.tell(L"NtQueryKey", {0, 0, record(std::wstring(L"\\A\0BCDE", 7))});
    EXPECT_EQ(key_->GetNtPath(), L"\\A");
    tellSize(6);
    registry_.tell(L"NtQueryKey", {0, 0, {8, 0, 0, 0, 'x', 0, 'y', 0}, {}, 1000});
    EXPECT_EQ(key_->GetNtPath(), L"xy");
}

TEST_F(KernelPathOfAKey, isEmptyWhenTheRecordHoldsNoName)
{
    tellSize(4);
    registry_.tell(L"NtQueryKey", {0, 0, {0, 0, 0, 0}});
    EXPECT_EQ(key_->GetNtPath(), L"");
    tellSize(2);
    registry_.tell(L"NtQueryKey", {0, 0, {0, 0}});
    EXPECT_EQ(key_->GetNtPath(), L"");
}

TEST_F(KernelPathOfAKey, failsWhenThereIsNoKey)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(errorOf("Can't open key to get full NT path", [&] { key_->GetNtPath(); }), 2u);
    EXPECT_EQ(calls(), Calls{L"open 7 Key 0 20119"});
}

TEST_F(KernelPathOfAKey, failsForAnyFirstStatusButThatTheRoomIsTooSmall)
{
    for (const std::uint32_t status : {0u, 0x80000005u, 0xC0000022u, 0xC0000008u})
    {
        registry_.tell(L"NtQueryKey", status);
        EXPECT_EQ(errorOf("NtQueryKey failed to get buffer size. NTStatusCode: ", [&] { key_->GetNtPath(); }), status);
        EXPECT_EQ(calls().back(), L"unload");
    }
}

TEST_F(KernelPathOfAKey, failsForAnySecondStatusButSuccess)
{
    for (const std::uint32_t status : {1u, 0x80000005u, 0xC0000022u, 0xC0000023u})
    {
        tellSize(10);
        registry_.tell(L"NtQueryKey", status);
        EXPECT_EQ(errorOf("NtQueryKey failed. NTStatusCode: ", [&] { key_->GetNtPath(); }), status);
        EXPECT_EQ(calls().back(), L"unload");
    }
}

TEST_F(KernelPathOfAKey, failsWithTheLastErrorWithoutTheFunction)
{
    ntdll_.finds = false;
    EXPECT_EQ(errorOf("Can't get address of NtQueryKey.", [&] { key_->GetNtPath(); }), 127u);
    EXPECT_EQ(calls().back(), L"unload");
    ntdll_.loads = false;
    EXPECT_EQ(errorOf("Can't load ntdll.dll.", [&] { key_->GetNtPath(); }), 126u);
    EXPECT_EQ(calls().back(), L"load ntdll.dll");
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
