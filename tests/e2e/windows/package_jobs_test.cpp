#include "windows/dialog_job.h"

#include <filesystem>

namespace fs = std::filesystem;
using namespace EndToEnd;

// Packages that the program has made, started as programs.

namespace
{

// Items of the package's window.
constexpr int Comment = 1001;
constexpr int Hint = 1002;
constexpr int PasswordEdit = 1003;
constexpr int KeyFileButton = 1004;
constexpr int KeyFileName = 1005;
constexpr int FolderEdit = 1006;
constexpr int BrowseButton = 1007;
constexpr int Unpack = 1;
constexpr int CancelButton = 2;

constexpr const wchar_t* Title = L"Self-extracting package";

void enter(const Window& window, int item, const std::wstring& text)
{
    const HWND edit = GetDlgItem(window.handle(), item);
    PostMessageW(edit, EM_SETSEL, 0, -1);
    for (const wchar_t character : text)
        PostMessageW(edit, WM_CHAR, character, 1);
}

BOOL CALLBACK takeVisibleEdit(HWND child, LPARAM found)
{
    wchar_t name[20] = {};
    GetClassNameW(child, name, 20);
    if (_wcsicmp(name, L"Edit") != 0 || IsWindowVisible(child) == FALSE)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;
}

/// The field for a file's name in the system's dialog; it may lie within a list.
HWND nameField(const Window& chooser)
{
    HWND field = nullptr;
    EnumChildWindows(chooser.handle(), takeVisibleEdit, reinterpret_cast<LPARAM>(&field));
    return field;
}

} // namespace

class PackageJob : public DialogJob
{
protected:
    /// Packs the two files with a comment of the job and a riddle.
    void pack(const std::function<void()>& proceed)
    {
        startUpToDialog(
            folder.addJob("encrypt-sfx", files, R"("destiny": 1, "comment": "The letters that I promised")"));
        dialog.openSection();
        dialog.followRiddle();
        const TextEditor editor = TextEditor::of(*program);
        ASSERT_TRUE(editor);
        editor.write(L"my first pet");
        editor.ok();
        proceed();
        expectEnd();
        ASSERT_EQ(names(), Names{L"first.txt.exe"});
    }

    void packWithPassword()
    {
        pack([this] { proceedWithNewPassword(L"Rex"); });
    }

    void open()
    {
        program = std::make_unique<RunningProgram>(package, L"");
        window = program->window(Title);
        ASSERT_TRUE(window);
        ASSERT_TRUE(waitUntil([this] { return window.hasItem(PasswordEdit); }));
    }

    void packWithKeyFile()
    {
        pack([this] { proceedWithKeyFile(key); });
    }

    /// Another window of the package; it shows up with this caption, or any.
    Window other(const std::wstring& caption = L"")
    {
        Window found;
        waitUntil(
            [&]
            {
                for (const Window& candidate : program->visibleWindows())
                {
                    if (candidate.handle() != window.handle() && (caption.empty() || candidate.caption() == caption))
                        found = candidate;
                }
                return found || !program->isRunning();
            });
        return found;
    }

    /// The exit code tells that not everything was unpacked.
    void expectGivenUp() { EXPECT_EQ(program->exitCode(), 1); }

    void expectWord(const std::wstring& text)
    {
        const Window box = other(Title);
        ASSERT_TRUE(box);
        EXPECT_TRUE(waitUntil([&] { return box.shows(text); })) << Path(box.allTexts());
        box.press(VK_RETURN);
        EXPECT_TRUE(waitUntil([&] { return !box.exists(); }));
    }

    void expectUnpackedInto(const Path& target) const
    {
        EXPECT_EQ(contentOf(target / L"first.txt"), "dear reader");
        EXPECT_EQ(contentOf(target / L"second.txt"), "dear writer");
        EXPECT_EQ(std::distance(fs::directory_iterator(target), fs::directory_iterator()), 2);
    }

    const std::vector<Path> files = {folder.addFile(L"first.txt", "dear reader"),
                                     folder.addFile(L"second.txt", "dear writer")};
    const Path package = folder.path() / L"first.txt.exe";
    /// Elsewhere, so that the folder of the package holds nothing else.
    const SampleFolder elsewhere;
    const Path key = makeKey(elsewhere.path() / L"my.zelkey");
    const Path into = elsewhere.path() / L"letters";
    Window window;
};

TEST_F(PackageJob, showsItsCommentAndUnpacksByPasswordAfterAWrongOne)
{
    packWithPassword();
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_EQ(window.text(Comment), L"The letters that I promised");
    EXPECT_EQ(window.text(Hint), L"Hint: my first pet");
    EXPECT_EQ(window.text(FolderEdit), folder.path().wstring());
    enter(window, FolderEdit, into.wstring());
    enter(window, PasswordEdit, L"rex");
    window.click(Unpack);
    expectWord(L"The password or key file does not fit. Try again.");
    EXPECT_FALSE(fs::exists(into));
    enter(window, PasswordEdit, L"Rex");
    window.click(Unpack);
    expectWord(L"All files have been unpacked.");
    expectEnd();
    expectUnpackedInto(into);
}

TEST_F(PackageJob, unpacksByADecryptionToo)
{
    packWithPassword();
    startUpToDialog(folder.addDecryptJob({package}));
    proceedWithPassword(L"Rex");
    expectEnd();
    EXPECT_EQ(names(), (Names{L"first.txt", L"first.txt.exe", L"second.txt"}));
    EXPECT_EQ(contentOf(files[1]), "dear writer");
}

TEST_F(PackageJob, writesNothingWhenItIsCancelled)
{
    packWithKeyFile();
    ASSERT_NO_FATAL_FAILURE(open());
    enter(window, PasswordEdit, L"secret");
    window.click(CancelButton);
    expectGivenUp();
    ASSERT_NO_FATAL_FAILURE(open());
    window.press(VK_ESCAPE);
    expectGivenUp();
    ASSERT_NO_FATAL_FAILURE(open());
    window.close();
    expectGivenUp();
    EXPECT_EQ(names(), Names{L"first.txt.exe"});
}

TEST_F(PackageJob, leavesNothingHalfDoneWhenItIsStopped)
{
    const std::string content(std::size_t{64} << 20, 'x');
    folder.addFile(L"first.txt", content);
    packWithPassword();
    ASSERT_NO_FATAL_FAILURE(open());
    enter(window, FolderEdit, into.wstring());
    enter(window, PasswordEdit, L"Rex");
    window.click(Unpack);
    window.click(CancelButton);
    expectWord(L"Unpacking was stopped. Files that were complete stay in the folder.");
    EXPECT_TRUE(!fs::exists(into) || fs::is_empty(into));
    EXPECT_TRUE(window.exists());
    enter(window, PasswordEdit, L"Rex");
    window.click(Unpack);
    expectWord(L"All files have been unpacked.");
    expectEnd();
    EXPECT_TRUE(contentOf(into / L"first.txt") == content);
    EXPECT_EQ(contentOf(into / L"second.txt"), "dear writer");
}

TEST_F(PackageJob, unpacksByTheKeyFileThatIsChosen)
{
    packWithKeyFile();
    ASSERT_NO_FATAL_FAILURE(open());
    window.click(KeyFileButton);
    const Window chooser = other(L"Key file");
    ASSERT_TRUE(chooser);
    HWND field = nullptr;
    ASSERT_TRUE(waitUntil([&] { return (field = nameField(chooser)) != nullptr; }));
    for (const wchar_t character : key.wstring())
        PostMessageW(field, WM_CHAR, character, 1);
    ASSERT_TRUE(waitUntil([&] { return Window(field).caption() == key.wstring(); }));
    chooser.click(IDOK);
    ASSERT_TRUE(waitUntil([this] { return window.text(KeyFileName) == key.wstring(); }));
    EXPECT_FALSE(window.isEnabled(PasswordEdit));
    enter(window, FolderEdit, into.wstring());
    window.click(Unpack);
    expectWord(L"All files have been unpacked.");
    expectEnd();
    expectUnpackedInto(into);
}

TEST_F(PackageJob, asksForThePasswordAgainAfterACancelledChooser)
{
    packWithKeyFile();
    ASSERT_NO_FATAL_FAILURE(open());
    window.click(KeyFileButton);
    const Window chooser = other(L"Key file");
    ASSERT_TRUE(chooser);
    chooser.click(IDCANCEL);
    ASSERT_TRUE(waitUntil([&] { return !chooser.exists(); }));
    EXPECT_EQ(window.text(KeyFileName), L"");
    EXPECT_TRUE(window.isEnabled(PasswordEdit));
    window.click(CancelButton);
    expectGivenUp();
}

TEST_F(PackageJob, takesTheFolderThatIsChosen)
{
    packWithKeyFile();
    ASSERT_NO_FATAL_FAILURE(open());
    const std::wstring before = window.text(FolderEdit);
    window.click(BrowseButton);
    const Window cancelled = other();
    ASSERT_TRUE(cancelled);
    cancelled.click(IDCANCEL);
    ASSERT_TRUE(waitUntil([&] { return !cancelled.exists(); }));
    EXPECT_EQ(window.text(FolderEdit), before);

    window.click(BrowseButton);
    const Window chooser = other();
    ASSERT_TRUE(chooser);
    ASSERT_TRUE(waitUntil([&] { return chooser.isEnabled(IDOK); }));
    chooser.click(IDOK);
    ASSERT_TRUE(waitUntil([&] { return !chooser.exists(); }));
    const std::wstring after = window.text(FolderEdit);
    EXPECT_NE(after, before);
    EXPECT_TRUE(fs::is_directory(after)) << Path(after);
    window.click(CancelButton);
    expectGivenUp();
}

TEST_F(PackageJob, unpacksWithoutAWindowByAKeyFile)
{
    packWithKeyFile();
    const auto quietly = [&](const Path& file)
    {
        return RunningProgram(package, L"\"/keyfile:" + file.wstring() + L"\" \"/folder:" + into.wstring() + L"\"")
            .exitCode();
    };
    EXPECT_EQ(quietly(elsewhere.path() / L"missing.zelkey"), 1);
    EXPECT_EQ(quietly(elsewhere.addFile(L"note.zelkey", "dear reader")), 1);
    EXPECT_EQ(quietly(makeKey(elsewhere.path() / L"other.zelkey")), 2);
    EXPECT_FALSE(fs::exists(into));
    EXPECT_EQ(quietly(key), 0);
    expectUnpackedInto(into);
}
