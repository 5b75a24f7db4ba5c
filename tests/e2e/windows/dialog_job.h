#pragma once

#include "scenarios/sample_folder.h"
#include "windows/password_dialog.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>

// What the tests of the jobs with dialogs share.

namespace EndToEnd
{

inline constexpr int KeepFiles = 0;
inline constexpr int DeleteFiles = 1;
inline constexpr milliseconds LongLimit{60000};

inline constexpr int TryAgainButton = 1;
inline constexpr int AbortButton = 2;
inline constexpr int SkipFileButton = 5;
inline constexpr int PauseJobButton = 1090;
inline constexpr int CancelJobButton = 1226;

/// The visible window of the program that has this item, once it is there; one without a window otherwise.
Window windowWith(const RunningProgram& program, int item);

/// One of the small editors that the encryption dialog opens, used as its user does.
class TextEditor
{
public:
    static TextEditor of(const RunningProgram& program);

    explicit operator bool() const { return static_cast<bool>(window_); }
    const Window& window() const { return window_; }
    std::wstring text() const { return window_.text(Text); }
    bool hasDefaultBox() const { return window_.hasItem(DefaultBox); }
    bool isDefaultChecked() const;
    /// Takes the place of the text that is there.
    void write(const std::wstring& text) const;
    void checkDefault() const;
    /// Both wait until the editor is gone.
    void ok() const { end(1); }
    void cancel() const { end(2); }

private:
    static constexpr int Text = 1000;
    static constexpr int DefaultBox = 1001;

    explicit TextEditor(Window window) : window_(window) {}
    void end(int button) const;

    Window window_;
};

class DialogJob : public testing::Test
{
protected:
    void start(const Path& job);
    /// The dialog that asks for a password, once it is there.
    void expectDialog(const std::wstring& headerBeginning = L"Please enter");
    void startUpToDialog(const Path& job)
    {
        start(job);
        expectDialog();
    }
    void proceedWithNewPassword(const std::wstring& password)
    {
        dialog.typeNewPassword(password);
        dialog.click(PasswordDialog::Proceed);
    }
    void proceedWithPassword(const std::wstring& password)
    {
        dialog.typePassword(password);
        dialog.click(PasswordDialog::Proceed);
    }
    void proceedWithKeyFile(const Path& path)
    {
        dialog.typeKeyFile(path.wstring());
        dialog.click(PasswordDialog::Proceed);
    }
    /// The program has to end by itself, with the exit code 0.
    void expectEnd() { EXPECT_EQ(program->exitCode(LongLimit), 0); }
    /// Encrypts by password, and deletes the files.
    void lock(const std::vector<Path>& files, const std::wstring& password);

    /// Makes a symmetric key file, in the folder unless the path says otherwise.
    Path makeKey(const Path& key) const;

    /// The names of everything in the folder, so that nothing is overseen.
    std::set<std::wstring> names() const;
    /// Is one of them that of a result under work?
    bool hasTemporary() const;

    static Path encrypted(Path file) { return file += ".zel"; }

    SampleFolder folder;
    std::unique_ptr<RunningProgram> program;
    PasswordDialog dialog{Window()};
};

using Names = std::set<std::wstring>;

} // namespace EndToEnd
