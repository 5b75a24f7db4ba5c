#include "windows/progress/win32/progress_dialog.h"

#include "fakes/fake_platform.h"
#include "resources/resource.h"
#include "windows/framework/win32/class_object.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace JobRunner
{

namespace
{

using Calls = std::vector<std::string>;

/// Stands in for the system's taskbar and writes down what it is told.
class RecordingTaskbar final : public ITaskbarList3
{
public:
    Calls calls;
    ULONG references = 0;

    HRESULT WINAPI QueryInterface(REFIID iid, void** object) override
    {
        *object = IsEqualIID(iid, IID_ITaskbarList3) ? this : nullptr;
        return *object ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    ULONG WINAPI AddRef() override { return ++references; }
    ULONG WINAPI Release() override { return --references; }

    HRESULT WINAPI SetProgressValue(HWND, ULONGLONG done, ULONGLONG total) override
    {
        return note("value " + std::to_string(done) + " of " + std::to_string(total));
    }
    HRESULT WINAPI SetProgressState(HWND, TBPFLAG state) override { return note("state " + std::to_string(state)); }

    HRESULT WINAPI HrInit() override { return note("HrInit"); }
    HRESULT WINAPI AddTab(HWND) override { return note("AddTab"); }
    HRESULT WINAPI DeleteTab(HWND) override { return note("DeleteTab"); }
    HRESULT WINAPI ActivateTab(HWND) override { return note("ActivateTab"); }
    HRESULT WINAPI SetActiveAlt(HWND) override { return note("SetActiveAlt"); }
    HRESULT WINAPI MarkFullscreenWindow(HWND, BOOL) override { return note("MarkFullscreenWindow"); }
    HRESULT WINAPI RegisterTab(HWND, HWND) override { return note("RegisterTab"); }
    HRESULT WINAPI UnregisterTab(HWND) override { return note("UnregisterTab"); }
    HRESULT WINAPI SetTabOrder(HWND, HWND) override { return note("SetTabOrder"); }
    HRESULT WINAPI SetTabActive(HWND, HWND, DWORD) override { return note("SetTabActive"); }
    HRESULT WINAPI ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override { return note("ThumbBarAddButtons"); }
    HRESULT WINAPI ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override { return note("ThumbBarUpdateButtons"); }
    HRESULT WINAPI ThumbBarSetImageList(HWND, HIMAGELIST) override { return note("ThumbBarSetImageList"); }
    HRESULT WINAPI SetOverlayIcon(HWND, HICON, LPCWSTR) override { return note("SetOverlayIcon"); }
    HRESULT WINAPI SetThumbnailTooltip(HWND, LPCWSTR) override { return note("SetThumbnailTooltip"); }
    HRESULT WINAPI SetThumbnailClip(HWND, RECT*) override { return note("SetThumbnailClip"); }

private:
    HRESULT note(const std::string& call)
    {
        calls.push_back(call);
        return S_OK;
    }
};

/// Every taskbar that this process asks for is the recording one.
class ProgressTaskbarTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        registration_ = std::make_unique<ClassObject>(CLSID_TaskbarList, taskbar_);
        ASSERT_TRUE(registration_->isRegistered());
        window_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 5, 5, 200, 100, nullptr, nullptr, nullptr, nullptr);
    }
    void TearDown() override
    {
        DestroyWindow(window_);
        registration_.reset();
        CoUninitialize();
    }

    static ProgressChanges taskbarAt(TaskbarState state, int value)
    {
        ProgressChanges changes;
        changes.taskbar = state;
        changes.taskbarValue = value;
        return changes;
    }

    RecordingTaskbar taskbar_;
    std::unique_ptr<ClassObject> registration_;
    HWND window_ = nullptr;
};

const std::string Indeterminate = "state " + std::to_string(TBPF_INDETERMINATE);
const std::string NoProgress = "state " + std::to_string(TBPF_NOPROGRESS);

} // namespace

TEST_F(ProgressTaskbarTest, startsIndeterminateWithoutAnInitialisationAndEndsWithoutProgress)
{
    {
        const ProgressDialog dialog(window_);
        EXPECT_EQ(taskbar_.calls, (Calls{Indeterminate}));
        EXPECT_EQ(taskbar_.references, 1u);
    }
    EXPECT_EQ(taskbar_.calls, (Calls{Indeterminate, NoProgress}));
    EXPECT_EQ(taskbar_.references, 0u);
}

TEST_F(ProgressTaskbarTest, showsItsValueOutOf99)
{
    ProgressDialog dialog(window_);
    taskbar_.calls.clear();
    dialog.apply(taskbarAt(TaskbarState::Value, 0));
    dialog.apply(taskbarAt(TaskbarState::Value, 100));
    EXPECT_EQ(taskbar_.calls, (Calls{"value 0 of 99", "value 100 of 99"}));
}

TEST_F(ProgressTaskbarTest, becomesIndeterminateAgain)
{
    ProgressDialog dialog(window_);
    dialog.apply(taskbarAt(TaskbarState::Value, 7));
    taskbar_.calls.clear();
    dialog.apply(taskbarAt(TaskbarState::Indeterminate, -1));
    EXPECT_EQ(taskbar_.calls, (Calls{Indeterminate}));
}

TEST_F(ProgressTaskbarTest, isLeftAloneByOtherChanges)
{
    ProgressDialog dialog(window_);
    taskbar_.calls.clear();
    ProgressChanges changes;
    changes.title = L"Deletion (7%)";
    changes.totalPosition = 7;
    dialog.apply(changes);
    EXPECT_TRUE(taskbar_.calls.empty());
}

TEST_F(ProgressTaskbarTest, standsAsideWhileTheDialogComesToTheFrontEachTimeItIsShown)
{
    const Fakes::FakePlatform platform;
    ProgressDialog dialog(window_);
    const std::wstring toTheFront =
        L"setForegroundWindow " + std::to_wstring(reinterpret_cast<std::uintptr_t>(window_));
    ProgressChanges changes;
    changes.visible = true;
    dialog.apply(changes);
    dialog.apply(changes);
    EXPECT_TRUE(IsWindowVisible(window_));
    changes.visible = false;
    dialog.apply(changes);
    EXPECT_FALSE(IsWindowVisible(window_));
    EXPECT_EQ(platform.log.callsOf(L"setForegroundWindow"), (std::vector<std::wstring>{toTheFront, toTheFront}));
}

TEST_F(ProgressTaskbarTest, centresItsDialog)
{
    const ProgressDialog dialog(window_);
    RECT place{};
    RECT area{};
    GetWindowRect(window_, &place);
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    EXPECT_EQ(place.left, area.left + (area.right - area.left - 200) / 2);
    EXPECT_EQ(place.top, area.top + (area.bottom - area.top - 100) / 2);
}

} // namespace JobRunner
