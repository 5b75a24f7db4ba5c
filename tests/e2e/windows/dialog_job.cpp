#include "windows/dialog_job.h"

#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace EndToEnd
{

Window windowWith(const RunningProgram& program, int item)
{
    Window found;
    waitUntil(
        [&]
        {
            const bool ended = !program.isRunning();
            for (const Window& window : program.visibleWindows())
            {
                if (window.hasItem(item))
                    found = window;
            }
            return found || ended;
        });
    return found;
}

TextEditor TextEditor::of(const RunningProgram& program)
{
    return TextEditor(windowWith(program, Text));
}

bool TextEditor::isDefaultChecked() const
{
    return SendMessageW(GetDlgItem(window_.handle(), DefaultBox), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void TextEditor::write(const std::wstring& text) const
{
    const HWND edit = GetDlgItem(window_.handle(), Text);
    PostMessageW(edit, EM_SETSEL, 0, -1);
    if (text.empty())
        PostMessageW(edit, WM_CLEAR, 0, 0);
    for (const wchar_t character : text)
        PostMessageW(edit, WM_CHAR, character, 1);
}

void TextEditor::checkDefault() const
{
    window_.click(DefaultBox);
    if (!waitUntil([this] { return isDefaultChecked(); }))
        throw std::runtime_error("the box cannot be checked");
}

void TextEditor::end(int button) const
{
    window_.click(button);
    if (!waitUntil([this] { return !window_.exists(); }))
        throw std::runtime_error("the editor does not close");
}

void DialogJob::start(const Path& job)
{
    program = std::make_unique<RunningProgram>(programUnderTest(), quoted(job));
}

void DialogJob::expectDialog(const std::wstring& headerBeginning)
{
    dialog = PasswordDialog::of(*program, headerBeginning);
    if (!dialog)
        throw std::runtime_error("the dialog does not come");
}

void DialogJob::lock(const std::vector<Path>& files, const std::wstring& password)
{
    startUpToDialog(folder.addEncryptJob(files, DeleteFiles));
    proceedWithNewPassword(password);
    expectEnd();
    for (const Path& file : files)
    {
        EXPECT_FALSE(fs::exists(file)) << file;
        EXPECT_TRUE(fs::exists(encrypted(file))) << file;
    }
}

Path DialogJob::makeKey(const Path& name) const
{
    const Path key = folder.path() / name;
    const RunningProgram maker(programUnderTest().parent_path() / L"make_key.exe", L"symmetric " + quoted(key));
    EXPECT_EQ(maker.exitCode(), 0);
    return key;
}

std::set<std::wstring> DialogJob::names() const
{
    std::set<std::wstring> all;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.path()))
        all.insert(entry.path().filename().wstring());
    return all;
}

bool DialogJob::hasTemporary() const
{
    for (const std::wstring& name : names())
    {
        if (name.ends_with(L".zel-part"))
            return true;
    }
    return false;
}

} // namespace EndToEnd
