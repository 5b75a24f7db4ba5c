#include "sfxstub/stub_dialog.h"

#include "interfaces/vaultcore/exception.h"
#include "platform/utf8.h"
#include "sfxstub/choosers.h"
#include "sfxstub/own_package.h"
#include "sfxstub/quiet_run.h"
#include "sfxstub/resource.h"
#include "sfxstub/system_libraries.h"
#include "sfxstub/unpack_thread.h"
#include "vaultcore/file_failure.h"

#include <algorithm>
#include <commctrl.h>
#include <optional>

namespace SfxStub
{
namespace
{

constexpr const wchar_t* Title = L"Self-extracting package";
constexpr LPARAM LongestPassword = 1024;
constexpr LPARAM LongestPath = 32767;

std::wstring textOf(HWND dialog, int control)
{
    const HWND window = GetDlgItem(dialog, control);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

/// As an edit control wants its lines; a text from outside may hold anything else.
std::wstring withLineEnds(const std::wstring& text)
{
    std::wstring lines;
    for (const wchar_t letter : text)
    {
        if (letter == L'\n')
            lines += L'\r';
        if (letter != L'\r' && letter != L'\0')
            lines += letter;
    }
    return lines;
}

class Dialog
{
public:
    /// Throws what the package is refused for.
    Dialog() : reader_(package_) {}

    int run(HINSTANCE instance)
    {
        DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_PACKAGE), nullptr, procedure, reinterpret_cast<LPARAM>(this));
        return exitCode_;
    }

private:
    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG)
        {
            SetWindowLongPtrW(window, DWLP_USER, lParam);
            reinterpret_cast<Dialog*>(lParam)->init(window);
            return FALSE; // the password has the focus
        }
        auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
        return dialog != nullptr ? dialog->handle(message, wParam, lParam) : FALSE;
    }

    void init(HWND window)
    {
        window_ = window;
        SetDlgItemTextW(window_, IDC_COMMENT, withLineEnds(Platform::fromUtf8(reader_.comment())).c_str());
        const std::wstring hint = Platform::fromUtf8(reader_.riddle());
        if (!hint.empty())
            SetDlgItemTextW(window_, IDC_HINT, (L"Hint: " + hint).c_str());
        const std::wstring path = ownPath();
        SetDlgItemTextW(window_, IDC_FOLDER, path.substr(0, path.rfind(L'\\')).c_str());
        SendDlgItemMessageW(window_, IDC_PASSWORD, EM_SETLIMITTEXT, static_cast<WPARAM>(LongestPassword), 0);
        SendDlgItemMessageW(window_, IDC_FOLDER, EM_SETLIMITTEXT, static_cast<WPARAM>(LongestPath), 0);
        SendDlgItemMessageW(window_, IDC_BAR, PBM_SETRANGE32, 0, 1000);
        SetFocus(GetDlgItem(window_, IDC_PASSWORD));
    }

    INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam)
    {
        switch (message)
        {
        case WM_COMMAND:
            onCommand(LOWORD(wParam));
            return TRUE;
        case MessageProgress:
            SendDlgItemMessageW(window_, IDC_BAR, PBM_SETPOS, wParam, 0);
            tell(L"Unpacking...");
            return TRUE;
        case MessageMayReplace:
            return answer(mayReplace(reinterpret_cast<const wchar_t*>(lParam)));
        case MessageFailed:
            return answer(static_cast<LONG_PTR>(
                askAboutFailure(reinterpret_cast<const wchar_t*>(wParam), reinterpret_cast<const wchar_t*>(lParam))));
        case MessageFinished:
            onFinished();
            return TRUE;
        default:
            return FALSE;
        }
    }

    INT_PTR answer(LONG_PTR value) const
    {
        SetWindowLongPtrW(window_, DWLP_MSGRESULT, value);
        return TRUE;
    }

    void onCommand(int command)
    {
        if (command == IDOK && !thread_)
            unpack();
        if (command == IDCANCEL)
            cancel();
        if (command == IDC_KEY_FILE && !thread_)
            chooseKeyFile();
        if (command != IDC_BROWSE || thread_)
            return;
        const std::wstring folder = chooseFolder(window_);
        if (!folder.empty())
            SetDlgItemTextW(window_, IDC_FOLDER, folder.c_str());
    }

    void chooseKeyFile()
    {
        keyFile_ = chooseFile(window_);
        SetDlgItemTextW(window_, IDC_KEY_FILE_NAME, keyFile_.c_str());
        EnableWindow(GetDlgItem(window_, IDC_PASSWORD), keyFile_.empty());
    }

    /// While files are unpacked it stops that; the window goes only afterwards.
    void cancel()
    {
        if (!thread_)
        {
            EndDialog(window_, 0);
            return;
        }
        thread_->stop();
        tell(L"Stopping...");
    }

    void unpack()
    {
        const std::wstring folder = textOf(window_, IDC_FOLDER);
        if (folder.empty())
            return say(L"Choose a folder for the files.", MB_ICONINFORMATION);
        std::unique_ptr<VaultCore::Key> key = makeKey();
        if (!key)
            return;
        enable(false);
        tell(L"Checking the key...");
        thread_.emplace(window_, package_, std::move(key), folder);
    }

    std::unique_ptr<VaultCore::Key> makeKey()
    {
        try
        {
            if (!keyFile_.empty())
                return VaultCore::loadKeyFile(keyFile_);
            std::wstring password = textOf(window_, IDC_PASSWORD);
            auto key = VaultCore::createPasswordKey(password);
            SecureZeroMemory(password.data(), password.size() * sizeof(wchar_t));
            return key;
        }
        catch (const VaultCore::Exception& failure)
        {
            say(failure.GetText(), MB_ICONERROR);
            return nullptr;
        }
    }

    void onFinished()
    {
        const RunResult result = thread_->result();
        thread_.reset();
        enable(true);
        tell(L"");
        switch (result.outcome)
        {
        case Outcome::Complete:
            exitCode_ = ExitComplete;
            SetDlgItemTextW(window_, IDC_PASSWORD, L"");
            say(L"All files have been unpacked.", MB_ICONINFORMATION);
            EndDialog(window_, 0);
            return;
        case Outcome::WrongKey:
            exitCode_ = ExitWrongKey;
            say(result.reason.empty() ? L"The password or key file does not fit. Try again." : result.reason,
                MB_ICONWARNING);
            SetDlgItemTextW(window_, IDC_PASSWORD, L"");
            SetFocus(GetDlgItem(window_, IDC_PASSWORD));
            return;
        case Outcome::Incomplete:
            say(L"Some files have not been unpacked.", MB_ICONWARNING);
            break;
        case Outcome::Stopped:
            say(L"Unpacking was stopped. Files that were complete stay in the folder.", MB_ICONWARNING);
            break;
        case Outcome::Refused:
            say(result.reason, MB_ICONERROR);
            break;
        }
        exitCode_ = ExitFailed;
        SendDlgItemMessageW(window_, IDC_BAR, PBM_SETPOS, 0, 0);
    }

    bool mayReplace(const std::wstring& path)
    {
        const std::wstring question = L"This file exists already:\n\n" + path + L"\n\nReplace it?";
        return MessageBoxW(window_, question.c_str(), Title, MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION) == IDYES;
    }

    FailureAnswer askAboutFailure(const std::wstring& name, const std::wstring& reason)
    {
        const std::wstring question = name + L"\n\n" + reason;
        switch (MessageBoxW(window_, question.c_str(), Title, MB_ABORTRETRYIGNORE | MB_ICONERROR))
        {
        case IDRETRY:
            return FailureAnswer::Repeat;
        case IDIGNORE:
            return FailureAnswer::Skip;
        default:
            return FailureAnswer::Stop;
        }
    }

    void say(const std::wstring& text, UINT icon) { MessageBoxW(window_, text.c_str(), Title, MB_OK | icon); }
    void tell(const std::wstring& text) { SetDlgItemTextW(window_, IDC_STATE, text.c_str()); }

    void enable(bool on)
    {
        for (const int control : {IDOK, IDC_KEY_FILE, IDC_FOLDER, IDC_BROWSE})
            EnableWindow(GetDlgItem(window_, control), on);
        EnableWindow(GetDlgItem(window_, IDC_PASSWORD), on && keyFile_.empty());
    }

    HWND window_ = nullptr;
    OwnPackage package_;
    VaultCore::PackageReader reader_;
    std::wstring keyFile_;
    int exitCode_ = ExitFailed;
    std::optional<UnpackThread> thread_;
};

void refuse(const std::wstring& reason)
{
    MessageBoxW(nullptr, reason.c_str(), Title, MB_OK | MB_ICONERROR);
}

} // namespace

int showDialog(HINSTANCE instance)
{
    // The bar's library; its window class is there once it is loaded.
    using Init = BOOL WINAPI(const INITCOMMONCONTROLSEX*);
    if (const auto init = systemFunction<Init>(L"comctl32.dll", "InitCommonControlsEx"))
    {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
        init(&classes);
    }
    try
    {
        return Dialog().run(instance);
    }
    catch (const VaultCore::FileFailure& failure)
    {
        refuse(failure.text());
    }
    catch (const VaultCore::ContainerFailure& failure)
    {
        refuse(failure.message);
    }
    return ExitFailed;
}

} // namespace SfxStub
