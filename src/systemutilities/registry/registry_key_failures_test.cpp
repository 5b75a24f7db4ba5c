#include "systemutilities/registry/testing_scripted_registry.h"

#include <functional>

namespace Halden::SystemUtilities::Registry
{

namespace
{

/// An operation that fails with what the registry gives for one call.
struct Failure
{
    const char* name;
    const wchar_t* call;
    const char* message;
    std::function<void(IRegistryKey&)> operation;
};

void PrintTo(const Failure& failure, std::ostream* stream)
{
    *stream << failure.name;
}

std::vector<Failure> failuresToOpen()
{
    const char* message = "RegOpenKey failed.";
    return {
        {"Exists", L"open", message, [](auto& key) { key.Exists(false); }},
        {"CreateSubKey", L"open", message, [](auto& key) { key.CreateSubKey(L"s", false); }},
        {"DeleteKey", L"open", message, [](auto& key) { key.DeleteKey(); }},
        {"GetString", L"open", message, [](auto& key) { key.GetString(L"v", L""); }},
        {"GetMultiString", L"open", message, [](auto& key) { key.GetMultiString(L"v", {}); }},
        {"GetDword", L"open", message, [](auto& key) { key.GetDword(L"v", 0); }},
        {"GetQword", L"open", message, [](auto& key) { key.GetQword(L"v", 0); }},
        {"GetBinary", L"open", message, [](auto& key) { key.GetBinary(L"v"); }},
        {"SetString", L"open", message, [](auto& key) { key.SetString(L"v", L""); }},
        {"SetMultiString", L"open", message, [](auto& key) { key.SetMultiString(L"v", {}); }},
        {"SetDword", L"open", message, [](auto& key) { key.SetDword(L"v", 0, false); }},
        {"SetBinary", L"open", message, [](auto& key) { key.SetBinary(L"v", {}); }},
        {"SetQword", L"open", message, [](auto& key) { key.SetQword(L"v", 0); }},
        {"SetExpandString", L"open", message, [](auto& key) { key.SetExpandString(L"v", L""); }},
        {"DeleteValue", L"open", message, [](auto& key) { key.DeleteValue(L"v", false); }},
        {"SetLinkTarget", L"open", message, [](auto& key) { key.SetLinkTarget(L"v", L""); }},
        {"GetLinks", L"open", message, [](auto& key) { key.GetLinks(); }},
        {"DeleteSubKey", L"open", message, [](auto& key) { key.DeleteSubKey(L"s", false); }},
        {"DeleteSubKeyThatIsALink", L"open", message, [](auto& key) { key.DeleteSubKey(L"s", true); }},
        {"GetSubKeys", L"open", message, [](auto& key) { key.GetSubKeys(); }},
        {"GetValues", L"open", message, [](auto& key) { key.GetValues(false); }},
        {"GetNtPath", L"open", message, [](auto& key) { key.GetNtPath(); }},
    };
}

std::vector<Failure> failuresOfOpenKeys()
{
    const char* read = "RegGetValue failed.";
    const char* write = "RegSetKeyValue failed.";
    return {
        {"Create", L"create", "RegCreateKey failed.", [](auto& key) { key.Create(false); }},
        {"CreateSubKey", L"create", "RegCreateKey failed.", [](auto& key) { key.CreateSubKey(L"s", false); }},
        {"GetString", L"query", read, [](auto& key) { key.GetString(L"v", L""); }},
        {"GetMultiString", L"query", read, [](auto& key) { key.GetMultiString(L"v", {}); }},
        {"GetDword", L"query", read, [](auto& key) { key.GetDword(L"v", 0); }},
        {"GetQword", L"query", read, [](auto& key) { key.GetQword(L"v", 0); }},
        {"GetBinary", L"query", read, [](auto& key) { key.GetBinary(L"v"); }},
        {"SetString", L"set", write, [](auto& key) { key.SetString(L"v", L""); }},
        {"SetMultiString", L"set", write, [](auto& key) { key.SetMultiString(L"v", {}); }},
        {"SetDword", L"set", write, [](auto& key) { key.SetDword(L"v", 0, false); }},
        {"SetBinary", L"set", write, [](auto& key) { key.SetBinary(L"v", {}); }},
        {"SetQword", L"set", write, [](auto& key) { key.SetQword(L"v", 0); }},
        {"SetExpandString", L"set", write, [](auto& key) { key.SetExpandString(L"v", L""); }},
        {"SetLinkTarget", L"set", write, [](auto& key) { key.SetLinkTarget(L"v", L""); }},
        {"SetRawValue", L"set", write, [](auto& key) { key.SetRawValue(L"v", 99, {}); }},
        {"DeleteValue", L"deleteValue", "DeleteValue failed.", [](auto& key) { key.DeleteValue(L"v", false); }},
        {"DeleteSubKey", L"deleteSubKey", "RegDeleteKey failed.", [](auto& key) { key.DeleteSubKey(L"s", false); }},
        {"GetSubKeys", L"enumerateKey", "GetSubKeys failed.", [](auto& key) { key.GetSubKeys(); }},
        {"GetValues", L"enumerateValue", "RegEnumValue failed.", [](auto& key) { key.GetValues(false); }},
        {"GetLinks", L"enumerateValue", "RegEnumValue failed.", [](auto& key) { key.GetLinks(); }},
        {"DeleteKey", L"enumerateValue", "RegEnumValue failed.", [](auto& key) { key.DeleteKey(); }},
    };
}

class AFailure : public ScriptedKey, public testing::WithParamInterface<Failure>
{
};

TEST_P(AFailure, hasTheMessageOfItsCallAndTheResultAsItsCode)
{
    // 6 for a handle that is none, 234 for more data, 1018 for a key that was deleted while it was open.
    for (const std::uint32_t result : {6u, 87u, 234u, 1018u, 0xC0000022u})
    {
        key_ = makeKey();
        registry_.tell(GetParam().call, result);
        EXPECT_EQ(errorOf(GetParam().message, [&] { GetParam().operation(*key_); }), result);
    }
}

TEST_P(AFailure, leavesAnObjectThatWorksOnceTheCauseIsGone)
{
    registry_.tell(GetParam().call, 1018);
    errorOf(GetParam().message, [&] { GetParam().operation(*key_); });
    EXPECT_NO_THROW(key_->SetDword(L"v", 1, false));
    EXPECT_EQ(registry_.written, (Bytes{1, 0, 0, 0}));
}

std::string nameOf(const testing::TestParamInfo<Failure>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(ToOpenTheKey, AFailure, testing::ValuesIn(failuresToOpen()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfAnOpenKey, AFailure, testing::ValuesIn(failuresOfOpenKeys()), nameOf);

} // namespace

} // namespace Halden::SystemUtilities::Registry
