#include "statistics/win32/registration.h"

#include "statistics/win32/com_testing.h"
#include "statistics_testing/recorded_statistics.h"

#include <algorithm>
#include <thread>

namespace StatisticsModule
{
namespace
{

using StatisticsTesting::Component;
using StatisticsTesting::InstalledComponent;

constexpr const wchar_t* ClassKey = L"Software\\Classes\\CLSID\\{1122E1A6-3AFE-4DBC-97EF-39F8E0691A52}";
constexpr DWORD EveryContext = 23;

/// A text of the class in the registry; empty when there is none.
std::wstring registered(HKEY root, const wchar_t* key, const wchar_t* name)
{
    wchar_t text[1024] = {};
    DWORD size = sizeof(text);
    const std::wstring whole = std::wstring(ClassKey) + key;
    RegGetValueW(root, whole.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

bool isRegistered(HKEY root)
{
    return registered(root, L"\\InprocServer32", nullptr) == StatisticsTesting::shippedModule().wstring() &&
           registered(root, L"\\InprocServer32", L"ThreadingModel") == L"Both";
}

bool hasKey(HKEY root)
{
    HKEY key = nullptr;
    const bool found = RegOpenKeyExW(root, ClassKey, 0, KEY_READ, &key) == ERROR_SUCCESS;
    if (found)
        RegCloseKey(key);
    return found;
}

/// Starts without a registration; what a user has comes back at the end.
class TheRegistration : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(unregisterClass(Users::This), S_OK);
        ASSERT_EQ(unregisterClass(Users::All), S_OK);
    }

    LoadedModule module;

private:
    const InstalledComponent kept_{Component::Vanished};
};

class TheRegisteredClass : public testing::Test
{
protected:
    /// In the multithreaded apartment, as the threads of the program.
    static Com<IStatisticsClient> makeClient()
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        void* made = nullptr;
        EXPECT_EQ(CoCreateInstance(guidOf(FactoryClass), nullptr, EveryContext, guidOf(FactoryInterface), &made), S_OK);
        if (!made)
            return nullptr;
        const Com<IStatisticsClientFactory> factory(static_cast<IStatisticsClientFactory*>(made));
        IStatisticsClient* client = nullptr;
        EXPECT_EQ(factory->CreateClient(1, Text(L"E"), Text(L"S"), Text(L"T"), &client), S_OK);
        return Com<IStatisticsClient>(client);
    }

    StatisticsTesting::RecordedStatistics recorded;
};

} // namespace

TEST_F(TheRegistration, isThatOfThisUser)
{
    ASSERT_EQ(module.find<PlainFunction>("DllRegisterServer")(), S_OK);
    EXPECT_TRUE(isRegistered(HKEY_CURRENT_USER));
    EXPECT_FALSE(hasKey(HKEY_LOCAL_MACHINE));
    EXPECT_EQ(module.find<PlainFunction>("DllRegisterServer")(), S_OK) << "twice does no harm";
    ASSERT_EQ(module.find<PlainFunction>("DllUnregisterServer")(), S_OK);
    EXPECT_FALSE(hasKey(HKEY_CURRENT_USER));
    EXPECT_EQ(module.find<PlainFunction>("DllUnregisterServer")(), S_OK) << "nor does this";
}

TEST_F(TheRegistration, isThatOfAllUsersForWhoAsks)
{
    const auto install = module.find<InstallFunction>("DllInstall");
    ASSERT_EQ(install(TRUE, L"machine"), S_OK);
    EXPECT_TRUE(isRegistered(HKEY_LOCAL_MACHINE));
    EXPECT_FALSE(hasKey(HKEY_CURRENT_USER));
    EXPECT_EQ(install(FALSE, L"machine"), S_OK);
    EXPECT_FALSE(hasKey(HKEY_LOCAL_MACHINE));
    for (const wchar_t* words : {static_cast<const wchar_t*>(nullptr), L"", L"user"})
    {
        ASSERT_EQ(install(TRUE, words), S_OK);
        EXPECT_TRUE(isRegistered(HKEY_CURRENT_USER));
        EXPECT_FALSE(hasKey(HKEY_LOCAL_MACHINE));
        ASSERT_EQ(install(FALSE, words), S_OK);
        EXPECT_FALSE(hasKey(HKEY_CURRENT_USER));
    }
}

TEST_F(TheRegisteredClass, isFoundByCom)
{
    const InstalledComponent installed(Component::Shipped);
    std::thread([] { makeClient()->SendView(Text(L"a"), Text(L"b")); }).join();
    EXPECT_EQ(recorded.calls(), (std::vector<std::string>{"CreateClient(1, E, S, T)", "SendView(a, b)"}));
}

TEST_F(TheRegisteredClass, servesThreadsOfTheApartmentWithoutMarshalling)
{
    constexpr int Each = 20;
    const InstalledComponent installed(Component::Shipped);
    std::thread(
        [&]
        {
            const auto client = makeClient();
            ASSERT_TRUE(client);
            const auto send = [&](const wchar_t* name)
            {
                CoInitializeEx(nullptr, COINIT_MULTITHREADED);
                for (int count = 0; count < Each; ++count)
                    EXPECT_EQ(client->SendView(Text(name), Text(L"T")), S_OK);
                CoUninitialize();
            };
            std::thread first(send, L"first");
            std::thread job(send, L"job");
            first.join();
            job.join();
        })
        .join();
    const auto calls = recorded.calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "SendView(first, T)"), Each);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "SendView(job, T)"), Each);
}

TEST_F(TheRegisteredClass, isNotFoundWhenItsFileIsGone)
{
    const InstalledComponent vanished(Component::Vanished);
    std::thread(
        []
        {
            CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            void* made = nullptr;
            EXPECT_LT(CoCreateInstance(guidOf(FactoryClass), nullptr, EveryContext, guidOf(FactoryInterface), &made),
                      0);
            EXPECT_EQ(made, nullptr);
        })
        .join();
}

} // namespace StatisticsModule
