#include "windows/progress/win32/progress_dialog.h"

#include "resources/resource.h"
#include "systemutilities/shell_utilities.h"
#include "windows/framework/win32/dialog.h"
#include "windows/framework/win32/progress_marquee.h"

#include <commctrl.h>

namespace JobRunner
{

namespace
{

constexpr LPARAM RangeFrom0To100 = MAKELPARAM(0, 100);

/// This thread never enters an apartment of its own; where the creation fails, the taskbar is left alone.
ITaskbarList3* createTaskbar()
{
    void* taskbar = nullptr;
    CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_ALL, IID_ITaskbarList3, &taskbar);
    return static_cast<ITaskbarList3*>(taskbar);
}

} // namespace

ProgressDialog::ProgressDialog(HWND window) : window_(window)
{
    centreDialog(window_);
    SendMessageW(item(IDC_FILE_BAR), PBM_SETRANGE, 0, RangeFrom0To100);
    SendMessageW(item(IDC_TOTAL_BAR), PBM_SETRANGE, 0, RangeFrom0To100);
    taskbar_.reset(createTaskbar());
    if (taskbar_)
        taskbar_->SetProgressState(window_, TBPF_INDETERMINATE);
}

ProgressDialog::~ProgressDialog()
{
    if (taskbar_)
        taskbar_->SetProgressState(window_, TBPF_NOPROGRESS);
}

void ProgressDialog::apply(const ProgressChanges& changes)
{
    setText(IDC_FILE_TEXT, changes.fileText);
    setPosition(IDC_FILE_BAR, changes.filePosition);
    if (changes.marquee)
        applyMarquee(*changes.marquee);
    setPosition(IDC_TOTAL_BAR, changes.totalPosition);
    applyTaskbar(changes);
    setText(IDC_TOTAL_TEXT, changes.totalText);
    if (changes.title)
        SetWindowTextW(window_, changes.title->c_str());
    setText(IDC_ELAPSED_TIME, changes.elapsedTime);
    setText(IDC_TIME_LEFT, changes.timeLeft);
    setText(IDC_SPEED, changes.speed);
    setText(IDC_ELAPSED_BYTES, changes.elapsedBytes);
    setText(IDC_BYTES_LEFT, changes.bytesLeft);
    setText(IDC_TOTAL_BYTES, changes.totalBytes);
    if (changes.paused)
        applyPaused(*changes.paused);
    // Last, so that the dialog comes up with its newest figures.
    if (changes.visible)
        applyVisible(*changes.visible);
}

void ProgressDialog::setText(int id, const std::optional<std::wstring>& text)
{
    if (text)
        SetWindowTextW(item(id), text->c_str());
}

void ProgressDialog::setPosition(int id, std::optional<int> position)
{
    if (position)
        SendMessageW(item(id), PBM_SETPOS, static_cast<WPARAM>(*position), 0);
}

void ProgressDialog::applyMarquee(bool on)
{
    if (on)
        SetProgressMarquee(item(IDC_TOTAL_BAR));
    else
        ClearProgressMarquee(item(IDC_TOTAL_BAR));
}

void ProgressDialog::applyTaskbar(const ProgressChanges& changes)
{
    if (!taskbar_ || !changes.taskbar)
        return;
    if (*changes.taskbar == TaskbarState::Indeterminate)
        taskbar_->SetProgressState(window_, TBPF_INDETERMINATE);
    else
        taskbar_->SetProgressValue(window_, static_cast<ULONGLONG>(changes.taskbarValue), TaskbarTotal);
}

void ProgressDialog::applyPaused(bool paused)
{
    EnableWindow(item(IDC_CANCEL_JOB), !paused);
    SetWindowTextW(item(IDC_PAUSE_JOB), paused ? L"Resume" : L"Pause");
}

void ProgressDialog::applyVisible(bool visible)
{
    ShowWindow(window_, visible ? SW_SHOW : SW_HIDE);
    if (visible)
        Halden::SystemUtilities::ForceForegroundWindow(window_);
}

} // namespace JobRunner
