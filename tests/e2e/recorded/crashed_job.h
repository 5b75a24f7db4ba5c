#pragma once

#include "recorded/user_account.h"
#include "scenarios/expected_calls.h"
#include "scenarios/job_events.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>

namespace EndToEnd
{

/// A crash on a thread of the program: "first", "job", "engine" or "dialog", by a "fault" or an "exception".
struct Crash
{
    const char* thread;
    const char* way;
    std::uint32_t ending; ///< exit code or signal

    bool isOnTheFirstThread() const { return std::string(thread) == "first"; }
    bool isFault() const { return std::string(way) == "fault"; }
};

inline void PrintTo(const Crash& crash, std::ostream* stream)
{
    *stream << crash.way << " on the " << crash.thread << " thread";
}

inline std::string nameOfCrash(const testing::TestParamInfo<Crash>& info)
{
    return std::string(info.param.thread) + '_' + info.param.way;
}

/// A delete job that crashes, and what it reports.
class ReportedCrash : public testing::TestWithParam<Crash>
{
protected:
    static Lines ofTheCrash()
    {
        return expectedCrashCalls(GetParam().isFault() ? "EXCEPTION_ACCESS_VIOLATION" : "UNKNOWN_EXCEPTION");
    }
    /// What is told up to the crash, and then of the crash itself.
    static Lines expected(const Lines& ofTheCrash)
    {
        Lines calls = expectedCalls(GetParam().isOnTheFirstThread() ? Start : Deletion);
        calls.insert(calls.end(), ofTheCrash.begin(), ofTheCrash.end());
        return calls;
    }
    Lines told() const { return withoutCrashAddress(account.told()); }

    const UserAccount account;
    const SampleFolder folder;
    const Path file = folder.addFile("a file.txt");
    const Path job = folder.addDeleteJob({file});
};

} // namespace EndToEnd
