#pragma once

#include "windows/progress/progress_display.h"

#include <windows.h>

#include <memory>
#include <shobjidl.h>

namespace JobRunner
{

/// The items of the progress dialog and its button in the taskbar. Thread of the dialog only.
class ProgressDialog
{
public:
    /// Puts a dialog that was just made into its first state: centred, bars from 0 to 100.
    explicit ProgressDialog(HWND window);
    ~ProgressDialog();
    ProgressDialog(const ProgressDialog&) = delete;
    ProgressDialog& operator=(const ProgressDialog&) = delete;

    void apply(const ProgressChanges& changes);

private:
    struct ComRelease
    {
        void operator()(IUnknown* object) const { object->Release(); }
    };

    void setText(int id, const std::optional<std::wstring>& text);
    void setPosition(int id, std::optional<int> position);
    void applyMarquee(bool on);
    void applyTaskbar(const ProgressChanges& changes);
    void applyPaused(bool paused);
    void applyVisible(bool visible);
    HWND item(int id) const { return GetDlgItem(window_, id); }

    const HWND window_;
    std::unique_ptr<ITaskbarList3, ComRelease> taskbar_; ///< null where the system has none
};

} // namespace JobRunner
