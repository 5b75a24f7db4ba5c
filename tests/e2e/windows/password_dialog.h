#pragma once

#include <string>

#include "running_program.h"

namespace EndToEnd
{

/// One of the two dialogs that ask for a password or a key file, used as its user does.
class PasswordDialog
{
public:
    // The buttons.
    static constexpr int Proceed = 1;
    static constexpr int Cancel = 2;
    static constexpr int Section = 3;
    static constexpr int Ignore = 5;

    /// The dialog of the program whose header begins so, once it is there; one without a window otherwise.
    static PasswordDialog of(const RunningProgram& program, const std::wstring& headerBeginning = L"Please enter");

    explicit PasswordDialog(Window window) : window_(window) {}

    explicit operator bool() const { return static_cast<bool>(window_); }
    const Window& window() const { return window_; }
    /// Empty for a window of another kind.
    std::wstring header() const;
    bool isForNewEncryption() const { return window_.hasItem(Section); }
    void typePassword(const std::wstring& text) const { type(0, text); }
    /// Takes the place of a password that is filled in.
    void replacePassword(const std::wstring& text) const;
    /// Of a new encryption: the same text twice.
    void typeNewPassword(const std::wstring& text) const
    {
        type(0, text);
        type(1, text);
    }
    /// Picks the key file from the menu of the input choice and types the path.
    void typeKeyFile(const std::wstring& path) const;
    /// Where the key file is picked already: takes the place of the path that is there.
    void replaceKeyFile(const std::wstring& path) const;
    /// Follows the link behind the origin with the keyboard.
    void changeDestiny() const;
    std::wstring origin() const;
    /// The path in the edit of the key file.
    std::wstring keyFile() const;
    /// Opens the section behind "More >>".
    void openSection() const;
    /// Follow a link of the open section with the keyboard; its editor opens.
    void followRiddle() const;
    void followComment() const;
    /// What the link of the riddle shows.
    std::wstring riddle() const;
    void click(int button) const { window_.click(button); }

private:
    HWND control(const wchar_t* kind, int index) const;
    HWND keyFileEdit() const;
    void type(int edit, const std::wstring& text) const;

    Window window_;
};

} // namespace EndToEnd
