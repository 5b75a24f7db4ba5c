#include "vaultcore/win32/win32_files.h"

#include <gtest/gtest.h>

namespace VaultCore
{
namespace
{

TEST(SafeLeafName, leavesPlainNamesAlone)
{
    for (const wchar_t* name : {L"a.txt", L"a b", L".hidden", L"COM", L"COM10", L"console", L"nullify.txt", L"\u5B57"})
        EXPECT_EQ(safeLeafName(name), name);
}

TEST(SafeLeafName, cutsFoldersOff)
{
    EXPECT_EQ(safeLeafName(LR"(C:\Windows\a.txt)"), L"a.txt");
    EXPECT_EQ(safeLeafName(LR"(..\..\a.txt)"), L"a.txt");
    EXPECT_EQ(safeLeafName(LR"(\\server\share\)"), L"");
}

TEST(SafeLeafName, namesNoStreamAndNoDrive)
{
    EXPECT_EQ(safeLeafName(L"a.txt:evil"), L"a.txt_evil");
    EXPECT_EQ(safeLeafName(L"C:a.txt"), L"C_a.txt");
}

TEST(SafeLeafName, cutsTrailingDotsAndSpacesOff)
{
    EXPECT_EQ(safeLeafName(L"a.exe. . "), L"a.exe");
    EXPECT_EQ(safeLeafName(L"..."), L"");
}

TEST(SafeLeafName, turnsNoDirectionOfWriting)
{
    EXPECT_EQ(safeLeafName(L"exe\u202Etxt.pdf\u2069"), L"exe_txt.pdf_");
}

TEST(SafeLeafName, namesNoDevice)
{
    EXPECT_EQ(safeLeafName(L"CON"), L"_CON");
    EXPECT_EQ(safeLeafName(L"nul.txt"), L"_nul.txt");
    EXPECT_EQ(safeLeafName(L"Com1"), L"_Com1");
    EXPECT_EQ(safeLeafName(L"lpt\u00B2.log"), L"_lpt\u00B2.log");
    EXPECT_EQ(safeLeafName(L"aux .txt"), L"_aux .txt");
    EXPECT_EQ(safeLeafName(L"CONIN$"), L"_CONIN$");
}

} // namespace
} // namespace VaultCore
