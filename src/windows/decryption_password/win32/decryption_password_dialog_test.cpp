#include "windows/decryption_password/win32/test_dialog.h"

#include "windows/decryption_password/decryption_password_window.h"

namespace JobRunner
{

namespace
{

// The edits, in the order of their making.
constexpr std::size_t PasswordEdit = 0;
constexpr std::size_t KeyFileEdit = 1;

/// The dialog with the window that decides what it accepts. Key files never reach the engine here.
class DecryptionWindowAndDialog : public DecryptionDialog
{
protected:
    int run(const Visit& visit)
    {
        DecryptionPasswordWindow window(std::move(view), nullptr);
        const DialogVisitor visitor([&](HWND dialog) { visitAndClose(dialog, visit); });
        return window.doModal();
    }
};

void expectKeyFileMode(const OpenDialog& dialog)
{
    EXPECT_TRUE(dialog.shows(L"Key file"));
    EXPECT_FALSE(dialog.edit(PasswordEdit).visible);
    EXPECT_TRUE(dialog.edit(KeyFileEdit).visible);
    EXPECT_TRUE(dialog.hasFocus(KeyFileEdit));
}

} // namespace

TEST_F(DecryptionWindowAndDialog, answersEachButtonAndTheCloseBox)
{
    EXPECT_EQ(run(
                  [](const OpenDialog& dialog)
                  {
                      dialog.type(PasswordEdit, L"secret");
                      dialog.press(VK_RETURN);
                  }),
              DecryptionKeyGiven);
    for (const auto& [visit, answer] :
         std::vector<std::pair<Visit, int>>{
             {[](const OpenDialog& dialog) { dialog.click(IDC_IGNORE); }, DecryptionIgnored},
             {[](const OpenDialog& dialog) { dialog.click(IDC_CANCEL); }, DecryptionCancelled},
             {[](const OpenDialog& dialog) { dialog.press(VK_ESCAPE); }, DecryptionCancelled},
             {[](const OpenDialog&) {}, DecryptionCancelled}})
    {
        view = std::make_unique<DecryptionPasswordView>();
        EXPECT_EQ(run(visit), answer);
    }
}

TEST_F(DecryptionWindowAndDialog, tellsWhatIsMissingAtTheEditThatIsSeen)
{
    const BalloonTitle watched;
    const int answer = run(
        [](const OpenDialog& dialog)
        {
            dialog.click(IDC_PROCEED);
            const ShownBalloon atPassword;
            EXPECT_EQ(atPassword.control, dialog.edit(PasswordEdit).window);
            EXPECT_EQ(BalloonTitle::last, L"Your Password");
            EXPECT_EQ(atPassword.text, L"Enter your password, please.");
            dialog.chooseInput(1);
            dialog.click(IDC_PROCEED);
            const ShownBalloon atKeyFile;
            EXPECT_EQ(atKeyFile.control, dialog.edit(KeyFileEdit).window);
            EXPECT_EQ(BalloonTitle::last, L"Your Key File");
            EXPECT_EQ(atKeyFile.text, L"Provide key file path, please.");
        });
    EXPECT_EQ(answer, DecryptionCancelled);
}

TEST_F(DecryptionWindowAndDialog, takesThePickedKeyFileAndEmptiesTheEditAfterACancelledFileDialog)
{
    Fakes::FakeViews views;
    views.factory.pickedKeyFiles = {L"C:\\picked.zelkey"};
    run(
        [&](const OpenDialog& dialog)
        {
            dialog.tell(ControlMessage::ButtonPressed, static_cast<WPARAM>(dialog.edit(KeyFileEdit).id), 0);
            expectKeyFileMode(dialog);
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\picked.zelkey");
            dialog.hold(KeyFileEdit);
            dialog.letGo(KeyFileEdit);
            expectKeyFileMode(dialog);
            EXPECT_EQ(dialog.input(KeyFileEdit), L"");
            ASSERT_EQ(views.factory.keyFileDialogs.size(), 2u);
            EXPECT_FALSE(views.factory.keyFileDialogs[0].initializeCom);
        });
}

} // namespace JobRunner
