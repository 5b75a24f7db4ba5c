#include "password_dialog.h"

#include <stdexcept>

namespace EndToEnd
{
namespace
{

constexpr const wchar_t* Header = L"paneexpl7::copydialoggradient";
constexpr const wchar_t* TextWithLinks = L"panewin7::text::textwithlinks";
constexpr const wchar_t* InputChoice = L"panewin7::text::textwithpopupmenu";
constexpr const wchar_t* Edit = L"paneexpl7::edit::editwithbuttons";
// Texts, each behind its caption; those of the section follow the caption of the repeated password.
constexpr int OriginText = 1;
constexpr int RiddleText = 6;
constexpr int CommentText = 8;

HWND childOf(HWND parent, const wchar_t* kind, int index)
{
    HWND found = nullptr;
    for (int i = 0; i <= index; ++i)
    {
        found = FindWindowExW(parent, found, kind, nullptr);
        if (found == nullptr)
            return nullptr;
    }
    return found;
}

std::wstring textOf(HWND window)
{
    wchar_t text[300] = {};
    SendMessageW(window, WM_GETTEXT, 300, reinterpret_cast<LPARAM>(text));
    return text;
}

void postKey(HWND window, WPARAM key)
{
    PostMessageW(window, WM_KEYDOWN, key, 1);
}

} // namespace

PasswordDialog PasswordDialog::of(const RunningProgram& program, const std::wstring& headerBeginning)
{
    PasswordDialog found{Window()};
    waitUntil(
        [&]
        {
            for (const Window& window : program.visibleWindows())
            {
                const PasswordDialog candidate(window);
                if (candidate.header().starts_with(headerBeginning))
                    found = candidate;
            }
            return found || !program.isRunning();
        });
    return found;
}

HWND PasswordDialog::control(const wchar_t* kind, int index) const
{
    return childOf(window_.handle(), kind, index);
}

std::wstring PasswordDialog::header() const
{
    const HWND header = control(Header, 0);
    return header == nullptr ? L"" : textOf(header);
}

std::wstring PasswordDialog::origin() const
{
    return textOf(control(TextWithLinks, OriginText));
}

void PasswordDialog::type(int edit, const std::wstring& text) const
{
    const HWND field = childOf(control(Edit, edit), L"Edit", 0);
    for (const wchar_t character : text)
        PostMessageW(field, WM_CHAR, character, 1);
}

void PasswordDialog::replacePassword(const std::wstring& text) const
{
    PostMessageW(childOf(control(Edit, 0), L"Edit", 0), EM_SETSEL, 0, -1);
    type(0, text);
}

void PasswordDialog::typeKeyFile(const std::wstring& path) const
{
    const HWND choice = control(InputChoice, 0);
    for (const WPARAM key : {VK_SPACE, VK_DOWN, VK_DOWN, VK_RETURN})
        postKey(choice, key);
    if (!waitUntil([&] { return textOf(choice) == L"Key file"; }))
        throw std::runtime_error("the key file cannot be chosen");
    replaceKeyFile(path);
}

void PasswordDialog::replaceKeyFile(const std::wstring& path) const
{
    const HWND field = childOf(keyFileEdit(), L"Edit", 0);
    PostMessageW(field, EM_SETSEL, 0, -1);
    for (const wchar_t character : path)
        PostMessageW(field, WM_CHAR, character, 1);
}

std::wstring PasswordDialog::keyFile() const
{
    return textOf(childOf(keyFileEdit(), L"Edit", 0));
}

/// The last edit of both dialogs.
HWND PasswordDialog::keyFileEdit() const
{
    return control(Edit, control(Edit, 2) != nullptr ? 2 : 1);
}

void PasswordDialog::openSection() const
{
    click(Section);
    if (!waitUntil([&] { return window_.text(Section) == L"<< Less"; }))
        throw std::runtime_error("the section does not open");
}

void PasswordDialog::followRiddle() const
{
    postKey(control(TextWithLinks, RiddleText), VK_SPACE);
}

void PasswordDialog::followComment() const
{
    postKey(control(TextWithLinks, CommentText), VK_SPACE);
}

std::wstring PasswordDialog::riddle() const
{
    return textOf(control(TextWithLinks, RiddleText));
}

void PasswordDialog::changeDestiny() const
{
    const std::wstring before = origin();
    postKey(control(TextWithLinks, OriginText), VK_SPACE);
    if (!waitUntil([&] { return origin() != before; }))
        throw std::runtime_error("the destiny does not change");
}

} // namespace EndToEnd
