#include "sfxstub/resource.h"
#include "vaultcore/package/package_program.h"
#include "vaultcore/package/testing_package.h"
#include "vaultcore/package/testing_sfx.h"
#include "vaultcore/package/win32/running_package.h"

// Packages with the real program in front, started.

namespace VaultCore
{
namespace
{

class PackageProgramTest : public SfxTest
{
protected:
    PackageProgramTest()
    {
        usualParameters() = cheapParameters();
        order.key = createPasswordKey(L"sesam \u00e4");
        order.riddle = "what opens";
        const fs::path tests = fs::path(packageProgram()).parent_path();
        fs::copy_file(tests.parent_path() / "bin" / "package.stub", program, fs::copy_options::overwrite_existing);
    }
    ~PackageProgramTest() override { usualParameters() = {}; }

    fs::path packageOfTwo()
    {
        fs::create_directories(inside / "docs" / "deep");
        put(inside / "docs" / "deep" / "a", std::string(700'000, 'x') + "end");
        put(inside / "docs" / L"\u00e4.txt", "");
        pack({inside / "docs"});
        return inside / "docs.exe";
    }

    DWORD runQuietly(const fs::path& package, const std::string& password = "sesam \xc3\xa4\n")
    {
        return RunningPackage(package, L"/stdin \"/folder:" + into.wstring() + L"\"", password).exitCode();
    }

    void expectBoth() const
    {
        EXPECT_EQ(content(into / "docs" / "deep" / "a"), std::string(700'000, 'x') + "end");
        EXPECT_TRUE(fs::exists(into / "docs" / L"\u00e4.txt"));
        EXPECT_EQ(temporariesIn(into), 0U);
    }

    /// The real program with a package of the kit behind it.
    fs::path hostile(const char* name)
    {
        BadPackage kit(bytesOf(content(program)), *order.key);
        kit.add("good");
        kit.add(name);
        const MemoryPackage package = kit.finish();
        return put(inside / "bad.exe", std::string(package.bytes.begin(), package.bytes.end()));
    }

    static void enter(HWND dialog, int control, const std::wstring& text)
    {
        SendMessageW(GetDlgItem(dialog, control), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }

    /// Does one of a message box's texts hold this?
    static bool says(HWND box, const std::wstring& text)
    {
        for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        {
            wchar_t shown[1000] = {};
            SendMessageW(child, WM_GETTEXT, std::size(shown), reinterpret_cast<LPARAM>(shown));
            if (std::wstring_view(shown).find(text) != std::wstring_view::npos)
                return true;
        }
        return false;
    }

    static std::wstring textIn(HWND dialog, int control)
    {
        wchar_t text[1000] = {};
        SendMessageW(GetDlgItem(dialog, control), WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
        return text;
    }
};

TEST_F(PackageProgramTest, unpacksByteForByte)
{
    const fs::path package = packageOfTwo();
    const std::string before = content(package);
    EXPECT_EQ(runQuietly(package), 0U);
    expectBoth();
    EXPECT_EQ(content(package), before);
}

TEST_F(PackageProgramTest, theDecryptionJobUnpacksTheSamePackage)
{
    const fs::path package = packageOfTwo();
    fs::create_directory(into);
    provider.answer = [](IKey** key)
    {
        *key = createPasswordKey(L"sesam \u00e4").release();
        return KeyProvided;
    };
    decrypt({package}, false, into);
    expectBoth();
}

TEST_F(PackageProgramTest, aWrongPasswordWritesNothing)
{
    EXPECT_EQ(runQuietly(packageOfTwo(), "sesam\n"), 2U);
    EXPECT_FALSE(fs::exists(into));
}

TEST_F(PackageProgramTest, anExistingFileIsNotReplaced)
{
    const fs::path package = packageOfTwo();
    fs::create_directories(into / "docs" / "deep");
    put(into / "docs" / "deep" / "a", "mine");
    EXPECT_EQ(runQuietly(package), 1U);
    EXPECT_EQ(content(into / "docs" / "deep" / "a"), "mine");
    EXPECT_TRUE(fs::exists(into / "docs" / L"\u00e4.txt"));
}

TEST_F(PackageProgramTest, badArgumentsAreRefused)
{
    const fs::path package = packageOfTwo();
    for (const wchar_t* arguments : {L"/stdin", L"/folder:x", L"/password:x /folder:x", L"/stdin /folder:x more"})
        EXPECT_EQ(RunningPackage(package, arguments, "sesam\n").exitCode(), 3U);
}

TEST_F(PackageProgramTest, badNamesWriteNothing)
{
    for (const char* name : {"../a", "C:\\a", "nul", "a:b", "a."})
    {
        const fs::path package = hostile(name);
        EXPECT_EQ(runQuietly(package), 1U) << name;
        EXPECT_TRUE(!fs::exists(into) || fs::is_empty(into));
    }
}

TEST_F(PackageProgramTest, aDamagedPackageIsRefused)
{
    const fs::path package = packageOfTwo();
    std::string bytes = content(package);
    bytes[bytes.size() - 1] ^= 1;
    put(package, bytes);
    EXPECT_EQ(runQuietly(package), 1U);
    EXPECT_EQ(runQuietly(program), 1U);
}

TEST_F(PackageProgramTest, theWindowShowsTheCommentAsksAgainAndUnpacks)
{
    const fs::path package = packageOfTwo();
    RunningPackage running(package, L"");
    const HWND dialog = running.dialogBeside(nullptr);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(textIn(dialog, IDC_COMMENT), L"About \u00e4");
    EXPECT_EQ(textIn(dialog, IDC_HINT), L"Hint: what opens");
    EXPECT_EQ(textIn(dialog, IDC_FOLDER), inside.wstring());
    EXPECT_NE(SendMessageW(GetDlgItem(dialog, IDC_PASSWORD), EM_GETPASSWORDCHAR, 0, 0), 0);
    enter(dialog, IDC_FOLDER, into.wstring());
    enter(dialog, IDC_PASSWORD, L"wrong");
    RunningPackage::press(dialog, IDOK);
    const HWND told = running.dialogBeside(dialog);
    ASSERT_NE(told, nullptr);
    EXPECT_TRUE(says(told, L"does not fit. Try again."));
    PostMessageW(told, WM_CLOSE, 0, 0);
    ASSERT_TRUE(RunningPackage::comes([&] { return textIn(dialog, IDC_PASSWORD).empty(); }));
    EXPECT_FALSE(fs::exists(into));
    enter(dialog, IDC_PASSWORD, L"sesam \u00e4");
    RunningPackage::press(dialog, IDOK);
    const HWND done = running.dialogBeside(dialog);
    ASSERT_NE(done, nullptr);
    EXPECT_TRUE(says(done, L"All files have been unpacked."));
    PostMessageW(done, WM_CLOSE, 0, 0);
    EXPECT_EQ(running.exitCode(), 0U);
    expectBoth();
}

TEST_F(PackageProgramTest, theWindowAsksBeforeItReplacesAndNoIsTheDefault)
{
    const fs::path package = packageOfTwo();
    fs::create_directories(into / "docs" / "deep");
    put(into / "docs" / "deep" / "a", "mine");
    for (const int answer : {IDNO, IDYES})
    {
        fs::remove(into / "docs" / L"\u00e4.txt");
        RunningPackage running(package, L"");
        const HWND dialog = running.dialogBeside(nullptr);
        ASSERT_NE(dialog, nullptr);
        enter(dialog, IDC_FOLDER, into.wstring());
        enter(dialog, IDC_PASSWORD, L"sesam \u00e4");
        RunningPackage::press(dialog, IDOK);
        const HWND question = running.dialogBeside(dialog);
        ASSERT_NE(question, nullptr);
        EXPECT_TRUE(says(question, L"docs\\deep\\a"));
        EXPECT_EQ(GetWindowLongW(GetDlgItem(question, IDNO), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
        EXPECT_EQ(GetWindowLongW(GetDlgItem(question, IDYES), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON);
        RunningPackage::press(question, answer);
        ASSERT_TRUE(RunningPackage::comes([&] { return !IsWindow(question); }));
        const HWND done = running.dialogBeside(dialog);
        ASSERT_NE(done, nullptr);
        EXPECT_TRUE(says(done, answer == IDYES ? L"All files" : L"Some files have not been unpacked."));
        EXPECT_EQ(content(into / "docs" / "deep" / "a") == "mine", answer == IDNO);
    }
}

} // namespace
} // namespace VaultCore
