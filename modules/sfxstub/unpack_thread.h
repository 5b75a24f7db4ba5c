#pragma once

#include "sfxstub/unpack_run.h"

#include <atomic>
#include <memory>
#include <thread>
#include <windows.h>

namespace SfxStub
{

/// What the thread sends to the dialog. Questions are sent and wait for the answer, the others are posted.
inline constexpr UINT MessageProgress = WM_APP + 1;   // wParam: thousandths
inline constexpr UINT MessageMayReplace = WM_APP + 2; // lParam: path; answer: not 0 for yes
inline constexpr UINT MessageFailed = WM_APP + 3;     // wParam: name, lParam: reason; answer: a FailureAnswer
inline constexpr UINT MessageFinished = WM_APP + 4;

/// Unpacks on a thread of its own, so that the window stays alive.
class UnpackThread final : private IUser
{
public:
    UnpackThread(HWND dialog, VaultCore::IPackageSource& source, std::unique_ptr<VaultCore::Key> key,
                 std::wstring folder);
    void stop() { stopped_.store(true); }
    /// Once `MessageFinished` has come.
    const RunResult& result() const { return result_; }

private:
    bool progress(std::uint64_t done, std::uint64_t total) override;
    bool mayReplace(const std::wstring& path) override;
    FailureAnswer failed(const std::wstring& name, const std::wstring& reason) override;

    HWND dialog_;
    std::atomic<bool> stopped_{false};
    std::uint64_t shown_ = ~std::uint64_t{0};
    RunResult result_;
    std::jthread thread_; // last: it ends before what it uses
};

} // namespace SfxStub
