#include "windows/file_error/win32/file_error_window_view.h"

#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/memory_buffer.h"
#include "windows/framework/win32/active_window.h"
#include "windows/framework/win32/controls.h"
#include "windows/framework/win32/dialog_visitor.h"
#include "windows/framework/win32/ended_controls.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace JobRunner
{

namespace
{

using Picture = std::vector<COLORREF>;

Picture pictureOf(HWND control)
{
    RECT client{};
    GetClientRect(control, &client);
    const Drawing::WindowDc screen(nullptr);
    Drawing::MemoryBuffer buffer;
    buffer.create(screen.get(), static_cast<int>(client.right), static_cast<int>(client.bottom));
    SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
    Picture picture;
    for (int y = 0; y < buffer.height(); ++y)
        for (int x = 0; x < buffer.width(); ++x)
            picture.push_back(GetPixel(buffer.dc(), x, y));
    return picture;
}

HWND childOf(HWND dialog, const wchar_t* text)
{
    HWND child = nullptr;
    while ((child = FindWindowExW(dialog, child, nullptr, nullptr)) != nullptr)
    {
        wchar_t own[300] = {};
        GetWindowTextW(child, own, 300);
        if (std::wstring(own) == text)
            return child;
    }
    return nullptr;
}

/// A control of the test's own in the dialog, of the same size as `other`.
template <class Interface> Interface* controlLike(HWND other, const wchar_t* classId)
{
    RECT client{};
    GetClientRect(other, &client);
    return createControlAs<Interface>(classId, GetParent(other), 0, 0, static_cast<int>(client.right),
                                      static_cast<int>(client.bottom));
}

class FileErrorControls : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(RealControls::areLoaded()); }

    /// Opens the dialog, looks at it, and ends it.
    int open(const std::function<void(HWND)>& look)
    {
        const DialogVisitor visitor(
            [&](HWND dialog)
            {
                look(dialog);
                PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
            });
        return view_.doModal();
    }

    FileErrorWindowView view_;
};

/// Refuses each window that this thread would make.
LRESULT CALLBACK refuseWindows(int code, WPARAM wParam, LPARAM lParam)
{
    return code == HCBT_CREATEWND ? 1 : CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

TEST_F(FileErrorControls, haveAHeaderWithTheQuestionOnItsTwoBlues)
{
    open(
        [](HWND dialog)
        {
            const HWND header = childOf(dialog, L"Please choose what to do with file.");
            auto* const like = controlLike<ICopyDialogGradient>(header, ControlClass::CopyDialogGradient);
            RECT client{};
            GetClientRect(header, &client);
            EXPECT_EQ(client.bottom, like->heightForWidth(0));
            like->setIcon(GetModuleHandleW(nullptr), L"QUESTION32.PNG");
            like->setText(L"Please choose what to do with file.");
            like->setColors(RGB(8, 56, 141), RGB(5, 22, 52));
            EXPECT_EQ(pictureOf(header), pictureOf(static_cast<HWND>(like->getWindowHandle())));
            like->destroy();
        });
}

TEST_F(FileErrorControls, haveAHeaderWhoseHeightDoesNotFollowItsText)
{
    std::wstring text = L"A header";
    while (text.size() < 200)
        text += L" of many words";
    view_.setHeader(text.c_str());
    open(
        [&](HWND dialog)
        {
            const HWND header = childOf(dialog, text.c_str());
            auto* const like = controlLike<ICopyDialogGradient>(header, ControlClass::CopyDialogGradient);
            RECT client{};
            GetClientRect(header, &client);
            EXPECT_EQ(client.bottom, like->heightForWidth(0)) << "before it has its text";
            like->setText(text.c_str());
            EXPECT_LT(client.bottom, like->heightForWidth(static_cast<int>(client.right)));
            like->destroy();
        });
}

TEST_F(FileErrorControls, haveCaptionsInTheStyleOfCaptions)
{
    view_.setTarget(L"C:\\target");
    open(
        [](HWND dialog)
        {
            for (const wchar_t* const text : {L"Source:", L"Target:"})
            {
                const HWND caption = childOf(dialog, text);
                auto* const like = controlLike<ISimpleText>(caption, ControlClass::SimpleText);
                like->setText(text);
                like->setCaptionStyle(true);
                EXPECT_EQ(pictureOf(caption), pictureOf(static_cast<HWND>(like->getWindowHandle())));
                like->destroy();
            }
        });
}

TEST_F(FileErrorControls, areMadeInOneOrder)
{
    view_.setSource(L"C:\\source");
    view_.setTarget(L"C:\\target");
    open(
        [](HWND dialog)
        {
            std::vector<int> ids;
            for (const wchar_t* const text : {L"Please choose what to do with file.", L"Source:", L"C:\\source",
                                              L"Target:", L"C:\\target", L"Unknown error occured"})
                ids.push_back(GetDlgCtrlID(childOf(dialog, text)));
            for (std::size_t i = 1; i < ids.size(); ++i)
                EXPECT_EQ(ids[i], ids[i - 1] + 1) << i;
        });
}

TEST_F(FileErrorControls, endBeforeTheirDialogDoes)
{
    EndedControls controls;
    open([&](HWND dialog) { controls.watch(dialog); });
    EXPECT_EQ(controls.ended.size(), 4u);
    EXPECT_EQ(controls.left, (std::vector<std::wstring>{L"Button", L"Button", L"Button"}));
}

TEST_F(FileErrorControls, standInADialogInTheMiddleOfTheScreen)
{
    open(
        [](HWND dialog)
        {
            RECT place{};
            RECT area{};
            GetWindowRect(dialog, &place);
            SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
            EXPECT_NEAR(place.left + place.right, area.left + area.right, 1);
            EXPECT_GT(place.top, area.top);
        });
}

TEST_F(FileErrorControls, standInADialogOwnedByTheActiveWindow)
{
    const ActiveWindow owner;
    open([&](HWND dialog) { EXPECT_TRUE(owner.owns(dialog)); });
}

TEST_F(FileErrorControls, answerAbortWhenTheirDialogCannotBeMade)
{
    const HHOOK hook = SetWindowsHookExW(WH_CBT, refuseWindows, nullptr, GetCurrentThreadId());
    ASSERT_TRUE(hook);
    const int answer = view_.doModal();
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(answer, FileErrorAbortJob);
}

TEST(CreateControl, keepsTheExportOfTheFirstCall)
{
    ASSERT_TRUE(RealControls::areLoaded());
    const HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    createControl(L"nosuchclass", parent, 0, 0, 1, 1);
    void* const module = controlModule();
    setControlModule(nullptr);
    ICustomControl* const text = createControl(ControlClass::SimpleText, parent, 0, 0, 10, 10);
    setControlModule(module);
    ASSERT_TRUE(text);
    text->destroy();
    DestroyWindow(parent);
}

} // namespace JobRunner
