#pragma once

#include "fakes/fake_platform.h"
#include "platform/platform.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

// What every system promises is tested on the real one and on the fake one by the same tests.

enum class Kind
{
    Native,
    Fake
};

class EachSystem : public testing::TestWithParam<Kind>
{
protected:
    Platform::System& system() { return GetParam() == Kind::Fake ? fake().system() : Platform::nativeSystem(); }

    Fakes::FakePlatform& fake()
    {
        if (!fake_)
            fake_.emplace();
        return *fake_;
    }

    bool looksLikeWindows() { return system().separator == L'\\'; }

    /// A full path in the form of the system, from one like "/folder/file".
    std::wstring path(std::wstring text)
    {
        if (!looksLikeWindows())
            return text;
        for (wchar_t& character : text)
            if (character == L'/')
                character = L'\\';
        return text.starts_with(L'\\') ? L"C:" + text : text;
    }

private:
    std::optional<Fakes::FakePlatform> fake_;
};

inline std::string kindName(const testing::TestParamInfo<Kind>& info)
{
    return info.param == Kind::Fake ? "fake" : "native";
}

#define INSTANTIATE_EACH_SYSTEM(suite)                                                                                 \
    INSTANTIATE_TEST_SUITE_P(OnEachSystem, suite, testing::Values(Kind::Native, Kind::Fake), kindName)
