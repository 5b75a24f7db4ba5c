#include "windows/framework/win32/password_controls.h"

#include "windows/decryption_password/win32/decryption_password_view.h"
#include "windows/drawing/gdi_handles.h"
#include "windows/drawing/images.h"
#include "windows/framework/win32/dialog.h"
#include "windows/framework/win32/dialog_visitor.h"
#include "windows/framework/win32/open_dialog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

// Which pictures the controls of the password dialogs show, by their look at the usual density.

namespace JobRunner
{

namespace
{

constexpr const wchar_t* Pictures[] = {L"ZELICON32.PNG", L"QUESTION32.PNG", L"SHOWPASS.PNG",
                                       L"DOTS.PNG",      L"KEYBOARD.PNG",   L"USB.PNG"};
constexpr int Around = 20; // of the middle of a picture

/// What a control paints.
class Painted
{
public:
    explicit Painted(HWND control)
    {
        RECT client{};
        GetClientRect(control, &client);
        const Drawing::WindowDc dc(control);
        buffer_.create(dc.get(), static_cast<int>(client.right), static_cast<int>(client.bottom));
        SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer_.dc()), PRF_CLIENT);
    }

    /// The picture that its look there comes closest to.
    std::wstring pictureAt(int middle) const
    {
        return *std::min_element(std::begin(Pictures), std::end(Pictures),
                                 [&](const wchar_t* left, const wchar_t* right)
                                 { return distanceTo(left, middle) < distanceTo(right, middle); });
    }
    int width() const { return buffer_.width(); }
    int darkest() const
    {
        int darkest = 255;
        for (int y = 0; y < buffer_.height(); ++y)
            for (int x = 0; x < buffer_.width(); ++x)
                darkest = std::min<int>(darkest, GetGValue(pixel(buffer_, x, y)));
        return darkest;
    }

private:
    static COLORREF pixel(const Drawing::MemoryBuffer& buffer, int x, int y) { return GetPixel(buffer.dc(), x, y); }

    long distanceTo(const wchar_t* name, int middle) const
    {
        const auto picture = Drawing::loadPngResource(resourceModule(), name);
        Drawing::MemoryBuffer wanted;
        wanted.create(buffer_.dc(), buffer_.width(), buffer_.height());
        for (int y = 0; y < buffer_.height(); ++y)
            for (int x = 0; x < buffer_.width(); ++x)
                SetPixelV(wanted.dc(), x, y, pixel(buffer_, 0, y)); // nothing stands at the left end
        {
            const auto width = static_cast<int>(picture->GetWidth());
            const auto height = static_cast<int>(picture->GetHeight());
            Gdiplus::Graphics graphics(wanted.dc());
            graphics.DrawImage(picture.get(), middle - width / 2, (buffer_.height() - height) / 2, width, height);
        }
        long distance = 0;
        for (int y = 0; y < buffer_.height(); ++y)
            for (int x = std::max(0, middle - Around); x < std::min(buffer_.width(), middle + Around); ++x)
                distance += between(pixel(buffer_, x, y), pixel(wanted, x, y));
        return distance;
    }

    static long between(COLORREF left, COLORREF right)
    {
        return std::abs(GetRValue(left) - GetRValue(right)) + std::abs(GetGValue(left) - GetGValue(right)) +
               std::abs(GetBValue(left) - GetBValue(right));
    }

    Drawing::MemoryBuffer buffer_;
};

class PasswordControlsTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(RealControls::areLoaded()); }

    static void open(const std::function<void(const OpenDialog&)>& visit)
    {
        DecryptionPasswordView view;
        const DialogVisitor visitor(
            [&](HWND window)
            {
                const OpenDialog dialog(window);
                visit(dialog);
                dialog.close();
            });
        view.doModal();
    }
};

} // namespace

TEST_F(PasswordControlsTest, showsTheSuitesPictureInTheHeader)
{
    constexpr int MiddleOfThePicture = 31;
    open(
        [](const OpenDialog& dialog)
        {
            const Painted header(dialog.control(ControlClass::CopyDialogGradient).window);
            EXPECT_EQ(header.pictureAt(MiddleOfThePicture), L"ZELICON32.PNG");
        });
}

TEST_F(PasswordControlsTest, showsTheEyeBesideAPasswordAndTheDotsBesideAKeyFile)
{
    open(
        [](const OpenDialog& dialog)
        {
            const Painted password(dialog.iconButton(0));
            EXPECT_EQ(password.pictureAt(password.width() / 2), L"SHOWPASS.PNG");
            dialog.chooseInput(1);
            const Painted keyFile(dialog.iconButton(1));
            EXPECT_EQ(keyFile.pictureAt(keyFile.width() / 2), L"DOTS.PNG");
        });
}

TEST_F(PasswordControlsTest, marksACaptionAsOne)
{
    open(
        [](const OpenDialog& dialog)
        {
            const Painted caption(dialog.control(ControlClass::TextWithLinks, 0).window);
            const Painted text(dialog.control(ControlClass::TextWithLinks, 1).window);
            EXPECT_GT(caption.darkest(), text.darkest());
        });
}

} // namespace JobRunner
