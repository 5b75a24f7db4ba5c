#pragma once

#include "fakes/fake_platform.h"
#include "platform/handles.h"
#include "platform/registry.h"
#include "platform/utf16.h"
#include "systemutilities/registry/i_registry_key.h"
#include "telemetry/event_tracker.h"
#include "telemetry/settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace Halden::ZEL::Telemetry
{

using Calls = std::vector<std::wstring>;

/// A tracker on a fake system whose statistics component is installed and whose settings are kept in memory.
class TrackerTest : public testing::Test
{
protected:
    TrackerTest() { platform.statistics.installed = true; }

    /// A connected tracker, with nothing in the log.
    EventTracker& connected()
    {
        EXPECT_TRUE(tracker.ConnectStatisticsClient());
        platform.log.clear();
        return tracker;
    }

    /// What the component was told, without its name.
    Calls told()
    {
        Calls calls = platform.log.callsOf(L"statistics.");
        for (std::wstring& call : calls)
            call.erase(0, std::wstring(L"statistics.").size());
        return calls;
    }

    std::unique_ptr<SystemUtilities::Registry::IRegistryKey> settings()
    {
        return SystemUtilities::Registry::CreateRegistryKey(Platform::CurrentUser, SettingsKey, false);
    }
    void makeSettings() { settings()->Create(false); }
    void set(const std::wstring& name, std::uint32_t value)
    {
        makeSettings();
        settings()->SetDword(name, value, false);
    }
    std::uint32_t setting(const std::wstring& name) { return settings()->GetDword(name, NotSet); }

    static constexpr std::uint32_t NotSet = 4711;

    Fakes::FakePlatform platform;
    EventTracker tracker;
};

} // namespace Halden::ZEL::Telemetry
