#include "platform/paths.h"

#include "platform/each_system.h"
#include "platform/handles.h"
#include "platform/testing_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

constexpr std::uint32_t Enough = 1024;

struct PathsTest : EachSystem
{
    Platform::Paths& paths() { return system().paths; }
    std::uint32_t lastError() { return system().handles.lastError(); }
    bool isFake() { return GetParam() == Kind::Fake; }

    std::wstring folder()
    {
        if (!isFake())
            return folder_.path();
        fake().paths.files[L"C:\\folder"].attributes = Platform::AttributeDirectory;
        return L"C:\\folder";
    }

    std::wstring missing() { return folder() + system().separator + L"missing.txt"; }

    /// A file that exists.
    std::wstring file(const std::wstring& name)
    {
        std::wstring path = folder() + system().separator + name;
        if (isFake())
            fake().paths.files[path] = {Platform::AttributeNormal, L"C:\\folder\\SHORT~1.TXT"};
        else
            TestingFolder::write(path, "content");
        return path;
    }

    bool isReadOnly(const std::wstring& path) { return (paths().attributes(path) & Platform::AttributeReadOnly) != 0; }

    TestingFolder folder_;
};

} // namespace

TEST_P(PathsTest, theProgramHasAFullPath)
{
    const std::wstring name = paths().programFileName(Enough);
    EXPECT_NE(name.find(system().separator), std::wstring::npos);
    EXPECT_GT(name.size(), 10u);
    EXPECT_EQ(name.find(L'\0'), std::wstring::npos);
}

TEST_P(PathsTest, aNameThatDoesNotFitIsCutOff)
{
    const std::wstring name = paths().programFileName(Enough);
    const auto length = static_cast<std::uint32_t>(name.size());
    EXPECT_EQ(paths().programFileName(length + 1), name);
    EXPECT_EQ(paths().programFileName(length), name.substr(0, length - 1));
    EXPECT_EQ(paths().programFileName(5), name.substr(0, 4));
    EXPECT_EQ(lastError(), Platform::ErrorInsufficientBuffer);
}

TEST_P(PathsTest, theWindowsDirectoryHasToFit)
{
    const std::wstring directory = paths().windowsDirectory(260);
    EXPECT_EQ(directory.empty(), !looksLikeWindows());
    const auto length = static_cast<std::uint32_t>(directory.size());
    EXPECT_EQ(paths().windowsDirectory(length + 1), directory);
    EXPECT_EQ(paths().windowsDirectory(length), L"");
}

TEST_P(PathsTest, dotsAreTakenOutOfATextAlone)
{
    std::wstring canonical = L"before";
    EXPECT_TRUE(paths().canonicalize(path(L"/no/such/../place/./here"), canonical));
    EXPECT_EQ(canonical, path(L"/no/place/here"));
    EXPECT_TRUE(paths().canonicalize(path(L"/../../x"), canonical));
    EXPECT_EQ(canonical, path(L"/x"));
}

TEST_P(PathsTest, aPathOf259CharactersIsTakenAndOnWindowsNoLongerOne)
{
    std::wstring canonical;
    const std::wstring start = path(L"/");
    const std::wstring longest = start + std::wstring(259 - start.size(), L'x');
    EXPECT_TRUE(paths().canonicalize(longest, canonical));
    EXPECT_EQ(canonical, longest);
    for (const std::size_t length : {260u, 261u, 32767u})
    {
        canonical = L"before";
        const std::wstring text = start + std::wstring(length - start.size(), L'x');
        EXPECT_EQ(paths().canonicalize(text, canonical), !looksLikeWindows()) << length;
        EXPECT_TRUE(canonical == (looksLikeWindows() ? L"" : text)) << length;
    }
}

TEST_P(PathsTest, aLongNameIsAskedForItsSizeAndThenForItself)
{
    const std::wstring path = file(L"a long name with blanks.txt");
    const std::uint32_t size = paths().longPathName(path, nullptr, 0);
    ASSERT_GT(size, 1u);
    std::wstring name(size, L'?');
    ASSERT_EQ(paths().longPathName(path, name.data(), size), size - 1);
    EXPECT_EQ(name[size - 1], L'\0');
    EXPECT_TRUE(name.substr(0, size - 1).ends_with(L"a long name with blanks.txt"));
    EXPECT_EQ(paths().longPathName(path, name.data(), size - 1), size);
}

TEST_P(PathsTest, aShortNameIsAskedForItsSizeAndThenForItself)
{
    const std::wstring path = file(L"a long name with blanks.txt");
    const std::uint32_t size = paths().shortPathName(path, nullptr, 0);
    ASSERT_GT(size, 1u);
    std::wstring name(size, L'?');
    ASSERT_EQ(paths().shortPathName(path, name.data(), size), size - 1);
    EXPECT_EQ(name.substr(0, size - 1) == path, !looksLikeWindows());
    EXPECT_EQ(paths().shortPathName(path, name.data(), size - 1), size);
}

TEST_P(PathsTest, theShortNameLeadsBackToTheLongOne)
{
    const std::wstring path = file(L"a long name with blanks.txt");
    std::wstring brief(Enough, L'?');
    brief.resize(paths().shortPathName(path, brief.data(), Enough));
    std::wstring full(Enough, L'?');
    full.resize(paths().longPathName(brief, full.data(), Enough));
    EXPECT_TRUE(full.ends_with(L"a long name with blanks.txt"));
}

TEST_P(PathsTest, whatIsNotThereHasNoNames)
{
    const std::wstring path = missing();
    std::wstring name(Enough, L'?');
    system().handles.setLastError(0);
    EXPECT_EQ(paths().longPathName(path, nullptr, 0), 0u);
    EXPECT_EQ(lastError(), Platform::ErrorFileNotFound);
    system().handles.setLastError(0);
    EXPECT_EQ(paths().shortPathName(path, name.data(), Enough), 0u);
    EXPECT_EQ(lastError(), Platform::ErrorFileNotFound);
}

TEST_P(PathsTest, theReadOnlyBitIsSetAndCleared)
{
    const std::wstring path = file(L"bits.txt");
    EXPECT_FALSE(isReadOnly(path));
    EXPECT_TRUE(paths().setAttributes(path, Platform::AttributeReadOnly));
    EXPECT_TRUE(isReadOnly(path));
    EXPECT_TRUE(paths().setAttributes(path, Platform::AttributeReadOnly));
    EXPECT_TRUE(isReadOnly(path));
    EXPECT_TRUE(paths().setAttributes(path, 0));
    EXPECT_FALSE(isReadOnly(path));
}

TEST_P(PathsTest, aFolderHasItsBit)
{
    const std::uint32_t attributes = paths().attributes(folder());
    ASSERT_NE(attributes, Platform::InvalidAttributes);
    EXPECT_NE(attributes & Platform::AttributeDirectory, 0u);
    EXPECT_EQ(paths().attributes(file(L"a.txt")) & Platform::AttributeDirectory, 0u);
}

TEST_P(PathsTest, whatIsNotThereHasNoAttributes)
{
    const std::wstring path = missing();
    system().handles.setLastError(0);
    EXPECT_EQ(paths().attributes(path), Platform::InvalidAttributes);
    EXPECT_EQ(lastError(), Platform::ErrorFileNotFound);
    system().handles.setLastError(0);
    EXPECT_FALSE(paths().setAttributes(path, Platform::AttributeReadOnly));
    EXPECT_EQ(lastError(), Platform::ErrorFileNotFound);
}

TEST_P(PathsTest, aDriveThatNothingWasMappedToHasNoDevice)
{
    std::wstring buffer(Enough, L'?');
    system().handles.setLastError(0);
    EXPECT_EQ(paths().queryDosDevice(L"1:", buffer.data(), Enough), 0u);
    EXPECT_EQ(lastError(), Platform::ErrorFileNotFound);
}

TEST_P(PathsTest, aDeviceEndsWithTwoTerminatorsThatBothHaveToFit)
{
    std::wstring buffer(Enough, L'?');
    const std::uint32_t length = paths().queryDosDevice(L"C:", buffer.data(), Enough);
    ASSERT_EQ(length != 0, looksLikeWindows());
    if (length == 0)
        return;
    ASSERT_GT(length, 2u);
    EXPECT_EQ(buffer[0], L'\\');
    EXPECT_NE(buffer[length - 3], L'\0');
    EXPECT_EQ(buffer.substr(length - 2, 3), std::wstring(L"\0\0?", 3));
    EXPECT_EQ(paths().queryDosDevice(L"C:", buffer.data(), length), length);
    EXPECT_EQ(paths().queryDosDevice(L"C:", buffer.data(), 2), 0u);
    EXPECT_EQ(lastError(), Platform::ErrorInsufficientBuffer);
}

INSTANTIATE_EACH_SYSTEM(PathsTest);
