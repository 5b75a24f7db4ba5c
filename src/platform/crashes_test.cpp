#include "platform/crashes.h"

#include "platform/testing_crashes.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

constexpr std::uint32_t IllegalInstruction = 0xC000001D;
constexpr std::uint32_t Breakpoint = 0x80000003;
constexpr std::uint32_t DivisionByZero = 0xC0000094;

using Codes = std::vector<std::uint32_t>;

struct WayToCrash
{
    const char* way;
    std::uint32_t code;
};

void PrintTo(const WayToCrash& crash, std::ostream* stream)
{
    *stream << crash.way;
}

class EachWayToCrash : public testing::TestWithParam<WayToCrash>
{
};

std::string nameOfWay(const testing::TestParamInfo<WayToCrash>& info)
{
    std::string name = info.param.way;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

TEST_P(EachWayToCrash, isReportedOnceAndEndsTheProcess)
{
    const CrashResult result = runCrashing(GetParam().way);
    EXPECT_EQ(result.codes, Codes{GetParam().code});
    EXPECT_EQ(result.ending, endingBy(GetParam().code));
    EXPECT_EQ(result.said, "");
}

INSTANTIATE_TEST_SUITE_P(Faults, EachWayToCrash,
                         testing::Values(WayToCrash{"null-write", Platform::ExceptionAccessViolation},
                                         WayToCrash{"unmapped-read", Platform::ExceptionAccessViolation},
                                         WayToCrash{"illegal-instruction", IllegalInstruction},
                                         WayToCrash{"breakpoint", Breakpoint}, WayToCrash{"division", DivisionByZero},
                                         WayToCrash{"null-write-on-thread", Platform::ExceptionAccessViolation},
                                         WayToCrash{"null-write-on-plain-thread", Platform::ExceptionAccessViolation},
                                         WayToCrash{"module-null-write", Platform::ExceptionAccessViolation},
                                         WayToCrash{"null-write-beside-message-loop",
                                                    Platform::ExceptionAccessViolation},
                                         WayToCrash{"stack-overflow", Platform::ExceptionStackOverflow},
                                         WayToCrash{"stack-overflow-on-thread", Platform::ExceptionStackOverflow}),
                         nameOfWay);

INSTANTIATE_TEST_SUITE_P(Exceptions, EachWayToCrash,
                         testing::Values(WayToCrash{"exception", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"exception-on-thread", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"exception-on-plain-thread", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"foreign-exception", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"broken-noexcept", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"terminate", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"module-exception", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"module-exception-on-its-thread", Platform::ExceptionOfTheLanguage},
                                         WayToCrash{"exception-beside-message-loop", Platform::ExceptionOfTheLanguage}),
                         nameOfWay);

TEST(Crashes, tellTheAddressOfTheInstruction)
{
    const CrashResult result = runCrashing("null-write");
    ASSERT_EQ(result.addresses.size(), 1u);
    EXPECT_GT(result.addresses[0], 0x10000u) << "the instruction, not what it wrote to";
}

TEST(Crashes, areReportedOnceWhenTwoThreadsCrashAtOnce)
{
    EXPECT_EQ(runCrashing("two-null-writes", "slow-note").codes, Codes{Platform::ExceptionAccessViolation});
    EXPECT_EQ(runCrashing("two-exceptions", "slow-note").codes, Codes{Platform::ExceptionOfTheLanguage});
}

class AFilterThatFails : public testing::TestWithParam<const char*>
{
};

TEST_P(AFilterThatFails, endsTheProcessByTheFirstCrash)
{
    const CrashResult fault = runCrashing("null-write", GetParam());
    EXPECT_EQ(fault.codes, Codes{Platform::ExceptionAccessViolation});
    EXPECT_EQ(fault.ending, endingBy(Platform::ExceptionAccessViolation));
    const CrashResult overflow = runCrashing("stack-overflow-on-thread", GetParam());
    EXPECT_EQ(overflow.codes, Codes{Platform::ExceptionStackOverflow});
    EXPECT_EQ(overflow.ending, endingBy(Platform::ExceptionStackOverflow));
}

INSTANTIATE_TEST_SUITE_P(Ways, AFilterThatFails, testing::Values("throw", "fault"));

TEST(AFilterThatThrows, endsTheProcessByTheExceptionThatItReported)
{
    const CrashResult result = runCrashing("exception", "throw");
    EXPECT_EQ(result.codes, Codes{Platform::ExceptionOfTheLanguage});
    EXPECT_EQ(result.ending, endingBy(Platform::ExceptionOfTheLanguage));
}

TEST(NoCrash, isNotReported)
{
    const CrashResult result = runCrashing("no such way");
    EXPECT_EQ(result.codes, Codes{});
}

} // namespace
