#include "windows/encryption_password/win32/test_dialog.h"

#include "fakes/recording_tracker.h"
#include "windows/encryption_password/encryption_password_window.h"

// The dialog with the window that decides what it accepts.

namespace JobRunner
{

namespace
{

constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Black = RGB(0, 0, 0);

/// Makes real dialogs; the file dialog stays a fake.
class RealDialogs : public Fakes::FakeViewFactory
{
public:
    std::unique_ptr<IEncryptionPasswordView> createEncryptionPasswordView(bool selfExtracting) override
    {
        return std::make_unique<EncryptionPasswordView>(selfExtracting);
    }
};

class EncryptionWindowAndDialog : public EncryptionDialog
{
protected:
    EncryptionWindowAndDialog()
    {
        setViewFactory(&views);
        window = std::make_unique<EncryptionPasswordWindow>(false, std::make_shared<Fakes::RecordingTracker>());
    }
    ~EncryptionWindowAndDialog() override { setViewFactory(nullptr); }

    bool open(const Visit& visit)
    {
        const DialogVisitor visitor([&](HWND dialog) { visitAndClose(dialog, visit); });
        return window->doModal();
    }

    static void expectBalloon(const OpenDialog& dialog, std::size_t edit, const std::wstring& text)
    {
        const ShownBalloon balloon;
        EXPECT_EQ(balloon.control, dialog.edit(edit).window);
        EXPECT_EQ(balloon.text, text);
        EXPECT_EQ(BalloonTitle::last, L"Correct your password");
    }

    const BalloonTitle watched;
    RealDialogs views;
    std::unique_ptr<EncryptionPasswordWindow> window;
};

} // namespace

TEST_F(EncryptionWindowAndDialog, turnsTheRepeatRedWhileItDiffers)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_EQ(dialog.inputColour(RepeatEdit), Black);
            dialog.type(PasswordEdit, L"ab");
            EXPECT_EQ(dialog.inputColour(RepeatEdit), Red);
            dialog.type(RepeatEdit, L"a");
            EXPECT_EQ(dialog.inputColour(RepeatEdit), Red);
            dialog.type(RepeatEdit, L"b");
            EXPECT_EQ(dialog.inputColour(RepeatEdit), Black);
            dialog.type(RepeatEdit, L"B");
            EXPECT_EQ(dialog.inputColour(RepeatEdit), Red);
            EXPECT_EQ(dialog.inputColour(PasswordEdit), Black);
        });
}

TEST_F(EncryptionWindowAndDialog, tellsWhatIsWrongAtTheEditInQuestion)
{
    EXPECT_TRUE(open(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_PROCEED);
            expectBalloon(dialog, PasswordEdit, L"Please type password here.");
            dialog.type(PasswordEdit, L"secret");
            dialog.click(IDC_PROCEED);
            expectBalloon(dialog, RepeatEdit, L"Please repeat password here.");
            dialog.type(RepeatEdit, L"Secret");
            dialog.click(IDC_PROCEED);
            expectBalloon(dialog, RepeatEdit, L"Your second password must match the first password.");
            dialog.setInput(RepeatEdit, L"secret");
            dialog.click(IDC_PROCEED);
        }));
    EXPECT_EQ(window->getPassword(), L"secret");
}

TEST_F(EncryptionWindowAndDialog, refusesAnEmptyKeyFileWithoutAWord)
{
    EXPECT_FALSE(open(
        [](const OpenDialog& dialog)
        {
            dialog.chooseInput(1);
            dialog.click(IDC_PROCEED);
            dialog.pump();
            EXPECT_TRUE(dialog.edit(KeyFileEdit).visible);
            EXPECT_FALSE(ShownBalloon().control);
        }));
}

TEST_F(EncryptionWindowAndDialog, takesThePickedKeyFileAndEmptiesTheEditAfterACancelledFileDialog)
{
    views.pickedKeyFiles = {L"C:\\picked.zelkey"};
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.chooseInput(1);
            dialog.type(KeyFileEdit, L"C:\\typed");
            dialog.hold(KeyFileEdit);
            dialog.letGo(KeyFileEdit);
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\picked.zelkey");
            dialog.hold(KeyFileEdit);
            dialog.letGo(KeyFileEdit);
            EXPECT_EQ(dialog.input(KeyFileEdit), L"");
            ASSERT_EQ(views.keyFileDialogs.size(), 2u);
            EXPECT_TRUE(views.keyFileDialogs[0].initializeCom);
        });
}

} // namespace JobRunner
