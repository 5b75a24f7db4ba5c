// Opens the dialogs in each of their states, with the real controls, and writes a picture of each state to the folder
// that JOBRUNNER_SCREENSHOTS names. Beside the usual density the names end in it.

#include "fakes/recording_tracker.h"
#include "resources/resource.h"
#include "windows/decryption_password/win32/decryption_password_view.h"
#include "windows/encryption_password/encryption_password_window.h"
#include "windows/framework/win32/dialog_visitor.h"
#include "windows/framework/win32/open_dialog.h"
#include "windows/screenshot.h"
#include "windows/text_editors/win32/riddle_window_view.h"
#include "windows/text_editors/win32/sfx_comment_window_view.h"

#include <cstdio>

using namespace JobRunner;

namespace
{

using Visit = std::function<void(const OpenDialog&)>;

constexpr std::size_t Password = 0;
constexpr std::size_t Repeat = 1;
constexpr std::size_t KeyFileToEncrypt = 2;
constexpr std::size_t KeyFileToDecrypt = 1;
constexpr DWORD PaintTime = 400;
constexpr POINT EditorPlace{300, 300};

std::wstring densitySuffix()
{
    const HDC screen = GetDC(nullptr);
    const int density = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return density == 96 ? L"" : L"-" + std::to_wstring(density);
}

/// Lets the dialog paint itself, the balloons too.
void settle(const OpenDialog& dialog)
{
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < PaintTime)
    {
        dialog.pump();
        Sleep(10);
    }
}

void take(const OpenDialog& dialog, const std::wstring& name)
{
    settle(dialog);
    if (!EndToEnd::takeScreenshot(EndToEnd::Window(dialog.window()), name + densitySuffix()))
        std::wprintf(L"%ls cannot be written\n", name.c_str());
}

/// What a dialog is made to show before its picture is taken.
DialogVisitor visitor(const std::wstring& name, Visit visit)
{
    return DialogVisitor(
        [name, visit](HWND window)
        {
            const OpenDialog dialog(window);
            SetForegroundWindow(window);
            settle(dialog); // a dialog that comes to the front later would cover its own balloon
            visit(dialog);
            take(dialog, name);
            PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
        });
}

void pictureEncryption(const std::wstring& name, const Visit& visit, bool selfExtracting = false)
{
    EncryptionPasswordWindow window(selfExtracting, std::make_shared<Fakes::RecordingTracker>());
    window.setDestiny(1);
    const DialogVisitor visiting = visitor(L"encryption-" + name, visit);
    window.doModal();
}

void pictureDecryption(
    const std::wstring& name, const std::function<void(IDecryptionPasswordView&)>& prepare,
    const Visit& visit = [](const OpenDialog&) {})
{
    DecryptionPasswordView view;
    prepare(view);
    const DialogVisitor visiting = visitor(L"decryption-" + name, visit);
    view.doModal();
}

template <class View> void pictureEditor(const std::wstring& name, const std::wstring& text)
{
    SetCursorPos(EditorPlace.x, EditorPlace.y);
    auto* const view = new View;
    view->setText(text);
    const DialogVisitor visiting = visitor(name, [](const OpenDialog&) {});
    view->doModal();
    view->release();
}

void openSection(const OpenDialog& dialog)
{
    dialog.click(IDC_SECTION);
    SetFocus(dialog.field(Password));
}

void setRiddle(const OpenDialog& dialog, const wchar_t* text)
{
    const DialogVisitor inner(
        [text](HWND editor)
        {
            SetDlgItemTextW(editor, IDC_EDITOR_TEXT, text);
            PostMessageW(editor, WM_COMMAND, IDOK, 0);
        });
    dialog.follow(L"riddle");
}

void pictureAllEncryption()
{
    pictureEncryption(L"empty", [](const OpenDialog&) {});
    pictureEncryption(L"password",
                      [](const OpenDialog& dialog)
                      {
                          dialog.type(Password, L"a good password");
                          dialog.type(Repeat, L"a good password");
                      });
    pictureEncryption(L"mismatch",
                      [](const OpenDialog& dialog)
                      {
                          dialog.type(Password, L"a good password");
                          dialog.type(Repeat, L"a gud");
                      });
    pictureEncryption(L"shown",
                      [](const OpenDialog& dialog)
                      {
                          dialog.type(Password, L"a good password");
                          SetFocus(dialog.iconButton(Password));
                          SendMessageW(GetFocus(), WM_KEYDOWN, VK_SPACE, 1);
                      });
    pictureEncryption(L"balloon", [](const OpenDialog& dialog) { dialog.click(IDC_PROCEED); });
    pictureEncryption(L"key-file",
                      [](const OpenDialog& dialog)
                      {
                          dialog.chooseInput(1);
                          dialog.type(KeyFileToEncrypt, L"C:\\keys\\my own.zelkey");
                      });
    pictureEncryption(L"key-file-more",
                      [](const OpenDialog& dialog)
                      {
                          dialog.chooseInput(1);
                          openSection(dialog);
                      });
    pictureEncryption(L"more", openSection);
    pictureEncryption(L"algorithms",
                      [](const OpenDialog& dialog)
                      {
                          openSection(dialog);
                          dialog.follow(L"algorithm_AES-256");
                      });
    pictureEncryption(L"riddle",
                      [](const OpenDialog& dialog)
                      {
                          openSection(dialog);
                          setRiddle(dialog, L"The street where we lived, the name of the first cat, and the year of "
                                            L"the long summer, in this order and without spaces");
                      });
    pictureEncryption(L"sfx-more", openSection, true);
}

void pictureAllDecryption()
{
    const auto mode = [](int value)
    { return [value](IDecryptionPasswordView& view) { view.setDecryptionMode(value); }; };
    pictureDecryption(L"keep", mode(0));
    pictureDecryption(L"delete", mode(1));
    pictureDecryption(L"open", mode(2));
    pictureDecryption(L"key-file", mode(0),
                      [](const OpenDialog& dialog)
                      {
                          dialog.chooseInput(1);
                          dialog.type(KeyFileToDecrypt, L"C:\\keys\\my own.zelkey");
                      });
    pictureDecryption(L"file-name",
                      [](IDecryptionPasswordView& view)
                      {
                          view.setFileName(L"C:\\Users\\me\\Documents\\letters of this year\\to the landlord.txt.zel");
                          view.setPassword(L"not the right one");
                      });
    pictureDecryption(
        L"balloon",
        [](IDecryptionPasswordView& view)
        {
            static IDecryptionPasswordView* shown;
            shown = &view;
            view.onOk = {[](void*)
                         {
                             shown->showError(L"Enter your password, please.");
                             return false;
                         },
                         nullptr};
        },
        [](const OpenDialog& dialog) { dialog.click(IDC_PROCEED); });
}

} // namespace

int main()
{
    if (!RealControls::areLoaded())
    {
        std::printf("panekit.dll is missing in ..\\bin\n");
        return 1;
    }
    pictureAllEncryption();
    pictureAllDecryption();
    pictureEditor<RiddleWindowView>(L"riddle-editor", L"The name of my first pet?");
    pictureEditor<SfxCommentWindowView>(L"comment-editor",
                                        L"The pictures of our holidays.\r\nThe password is the place.");
    return 0;
}
