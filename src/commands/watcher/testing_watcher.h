#pragma once

#include "commands/watcher/application_watcher.h"
#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// What the tests of the watcher share.

namespace JobRunner
{

using Calls = std::vector<std::wstring>;

inline constexpr std::uint32_t Self = 100;
inline const wchar_t* const Application = L"C:\\Apps\\Editor.exe";

/// A desktop with this process, its parent and an application that runs already; everything else comes later.
class AWatcher : public testing::Test
{
protected:
    AWatcher()
    {
        platform.processes.start({10, 0, L"shell.exe", {}, {11}});
        platform.processes.start({Self, 10, L"JobRunner.exe", {}, {101}});
        platform.processes.start({50, 10, L"editor.exe", {Application}, {51, 52}});
        platform.desktop.windows[Fakes::FakeDesktop::windowNumber(5)] = {51};
    }

    ApplicationWatcher& watcher()
    {
        if (!watcher_)
            watcher_.emplace();
        return *watcher_;
    }
    void snapshot(const std::wstring& executable = Application)
    {
        watcher().TakeSnapshot(Self, executable);
        platform.log.clear();
    }
    void findNew(std::uintptr_t foreground = 0)
    {
        watcher().FindNewObjects(foreground ? Fakes::FakeDesktop::windowNumber(foreground) : nullptr);
        platform.log.clear();
    }
    void starts(std::uint32_t id, std::uint32_t parent) { platform.processes.start({id, parent}); }
    void at(std::int64_t time, std::function<void()> action) { platform.threads.at(time, std::move(action)); }
    void endsAt(std::int64_t time, std::uint32_t id)
    {
        at(time, [this, id] { platform.processes.end(id); });
    }
    Fakes::FakeWindow& window(std::uintptr_t number)
    {
        return platform.desktop.windows[Fakes::FakeDesktop::windowNumber(number)];
    }
    void closesAt(std::int64_t time, std::uintptr_t number)
    {
        at(time, [this, number] { platform.desktop.windows.erase(Fakes::FakeDesktop::windowNumber(number)); });
    }

    std::int64_t waitForThreadsAndWindows()
    {
        watcher().WaitForThreadsAndWindows();
        return platform.threads.elapsed();
    }
    std::int64_t waitForProcessTree()
    {
        watcher().WaitForProcessTree();
        return platform.threads.elapsed();
    }
    /// The processes that are new, as the walk of the tree opens them.
    Calls newProcesses()
    {
        platform.log.clear();
        watcher().WaitForProcessesIdle();
        return platform.log.callsOf(L"idle");
    }
    static Calls idle(const std::vector<int>& ids)
    {
        Calls calls;
        for (const int id : ids)
            calls.push_back(L"idle process " + std::to_wstring(id) + L" 10000");
        return calls;
    }

    Fakes::FakePlatform platform;

private:
    std::optional<ApplicationWatcher> watcher_;
};

} // namespace JobRunner
