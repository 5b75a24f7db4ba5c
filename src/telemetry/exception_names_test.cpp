#include "telemetry/exception_names.h"

#include <gtest/gtest.h>

#include <map>

using namespace Halden::ZEL::Telemetry;

TEST(TheNameOfAnException, isTheOneOfItsCode)
{
    const std::map<std::uint32_t, std::wstring> names{
        {0x80000002, L"EXCEPTION_DATATYPE_MISALIGNMENT"},
        {0x80000003, L"EXCEPTION_BREAKPOINT"},
        {0x80000004, L"EXCEPTION_SINGLE_STEP"},
        {0xC0000005, L"EXCEPTION_ACCESS_VIOLATION"},
        {0xC0000006, L"EXCEPTION_IN_PAGE_ERROR"},
        {0xC000001D, L"EXCEPTION_ILLEGAL_INSTRUCTION"},
        {0xC0000025, L"EXCEPTION_NONCONTINUABLE_EXCEPTION"},
        {0xC0000026, L"EXCEPTION_INVALID_DISPOSITION"},
        {0xC000008C, L"EXCEPTION_ARRAY_BOUNDS_EXCEEDED"},
        {0xC000008D, L"EXCEPTION_FLT_DENORMAL_OPERAND"},
        {0xC000008E, L"EXCEPTION_FLT_DIVIDE_BY_ZERO"},
        {0xC000008F, L"EXCEPTION_FLT_INEXACT_RESULT"},
        {0xC0000090, L"EXCEPTION_FLT_INVALID_OPERATION"},
        {0xC0000091, L"EXCEPTION_FLT_OVERFLOW"},
        {0xC0000092, L"EXCEPTION_FLT_STACK_CHECK"},
        {0xC0000093, L"EXCEPTION_FLT_UNDERFLOW"},
        {0xC0000094, L"EXCEPTION_INT_DIVIDE_BY_ZERO"},
        {0xC0000095, L"EXCEPTION_INT_OVERFLOW"},
        {0xC0000096, L"EXCEPTION_PRIV_INSTRUCTION"},
        {0xC00000FD, L"EXCEPTION_STACK_OVERFLOW"},
    };
    ASSERT_EQ(names.size(), 20U);
    for (const auto& [code, name] : names)
        EXPECT_EQ(ExceptionCodeName(code), name) << std::hex << code;
}

TEST(TheNameOfAnException, isUnknownForOneOfTheLanguageAndAnyOtherCode)
{
    EXPECT_EQ(ExceptionCodeName(0xE06D7363), L"UNKNOWN_EXCEPTION");
    EXPECT_EQ(ExceptionCodeName(0), L"UNKNOWN_EXCEPTION");
    EXPECT_EQ(ExceptionCodeName(0xC0000007), L"UNKNOWN_EXCEPTION");
    EXPECT_EQ(ExceptionCodeName(0xFFFFFFFF), L"UNKNOWN_EXCEPTION");
}
