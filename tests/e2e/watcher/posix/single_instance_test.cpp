#include "watched_document.h"

#include "applications/association.h"
#include "platform/posix/start_program.h"
#include "platform/utf8.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>

#include <optional>

namespace EndToEnd
{

namespace
{

constexpr std::uint32_t LongestDelay = 1000;

/// An application that runs already; it ends with the object.
class RunningApplication
{
public:
    explicit RunningApplication(const std::string& command)
        : process_(Platform::startProgram("/bin/sh", {"sh", "-c", "exec " + command}))
    {
    }
    ~RunningApplication()
    {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    RunningApplication(const RunningApplication&) = delete;
    RunningApplication& operator=(const RunningApplication&) = delete;

private:
    const pid_t process_;
};

TEST(SingleInstance, isWaitedForUntilTheThreadThatTookTheDocumentEnds)
{
    WatchedDocument document;
    const RunningApplication running(Platform::toUtf8(L'"' + Applications::testApplication() +
                                                      L"\" single --serve --open 3000" + document.logOption()));
    document.noted("serves");
    const auto result = document.open(L"single");
    EXPECT_TRUE(result.opened);
    ASSERT_TRUE(document.isNoted("closed"));
    EXPECT_LE(result.returned - document.noted("closed"), LongestDelay);
}

} // namespace

} // namespace EndToEnd
