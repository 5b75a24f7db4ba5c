#include "windows/encryption_password/win32/test_dialog.h"

#include "windows/encryption_password/encryption_password_texts.h"
#include "windows/framework/win32/active_window.h"
#include "windows/framework/win32/ended_controls.h"

namespace JobRunner
{

namespace
{

constexpr UINT FocusPassword = 1124;
constexpr WPARAM NoEdit = 4711;

void typeBoth(const OpenDialog& dialog, const std::wstring& text)
{
    dialog.type(PasswordEdit, text);
    dialog.type(RepeatEdit, text);
}

} // namespace

TEST_F(EncryptionDialog, opensInPasswordModeWithTheSectionClosed)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_EQ(dialog.caption(), L"Enter Password");
            EXPECT_TRUE(dialog.shows(EncryptionText::Header));
            EXPECT_TRUE(dialog.shows(L"Origin:"));
            EXPECT_TRUE(dialog.shows(L"Password"));
            EXPECT_TRUE(dialog.shows(L"Repeat:"));
            EXPECT_TRUE(dialog.shows(L"More >>"));
            EXPECT_FALSE(dialog.shows(L"Algorithm:"));
            EXPECT_FALSE(dialog.shows(L"AES-256"));
            EXPECT_FALSE(dialog.shows(L"Riddle:"));
            EXPECT_TRUE(dialog.edit(PasswordEdit).visible);
            EXPECT_TRUE(dialog.edit(RepeatEdit).visible);
            EXPECT_FALSE(dialog.edit(KeyFileEdit).visible);
            EXPECT_TRUE(GetWindowLongPtrW(dialog.window(), GWL_STYLE) & WS_CLIPCHILDREN);
        });
    EXPECT_TRUE(view->isPasswordMode());
}

TEST_F(EncryptionDialog, givesThePasswordTheFocusOnceItIsUpAndOnRequest)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.hasFocus(PasswordEdit));
            SetFocus(dialog.item(IDC_CANCEL).window);
            SendMessageW(dialog.window(), FocusPassword, 0, 0);
            EXPECT_TRUE(dialog.hasFocus(PasswordEdit));
        });
}

TEST_F(EncryptionDialog, makesItsControlsInTheOrderOfTheTabKeyWithTheButtonsLast)
{
    beSelfExtracting();
    open(
        [](const OpenDialog& dialog)
        {
            std::vector<std::wstring> texts;
            for (const ShownControl& control : dialog.controls())
                texts.push_back(control.text);
            EXPECT_EQ(texts,
                      (std::vector<std::wstring>{
                          EncryptionText::Header, L"Origin:", L"Delete original files after encryption. Change",
                          L"Password", L"Repeat:", L"", L"", L"", L"Algorithm:", L"AES-256", L"Riddle:", L"Set Riddle",
                          L"Sfx Comment:", L"Change Sfx Description", L"", L"Proceed", L"Cancel", L"More >>"}));
            EXPECT_EQ(dialog.controls(ControlClass::EditWithIconButtons).size(), 3u);
            EXPECT_EQ(dialog.controls(ControlClass::ComboBox).size(), 1u);
            EXPECT_EQ(dialog.controls(ControlClass::CopyDialogGradient).size(), 1u);
        });
}

TEST_F(EncryptionDialog, endsAllItsControlsAheadOfItsWindow)
{
    EndedControls controls;
    open([&](const OpenDialog& dialog) { controls.watch(dialog.window()); });
    EXPECT_EQ(controls.ended.size(), 13u);
    EXPECT_EQ(controls.left, (std::vector<std::wstring>{L"Button", L"Button", L"Button"}));
}

TEST_F(EncryptionDialog, isOwnedByTheActiveWindow)
{
    const ActiveWindow owner;
    open([&](const OpenDialog& dialog) { EXPECT_TRUE(owner.owns(dialog.window())); });
}

TEST_F(EncryptionDialog, takesWhatWasTypedOnProceed)
{
    EXPECT_TRUE(open(
        [](const OpenDialog& dialog)
        {
            dialog.type(PasswordEdit, L"first");
            dialog.type(RepeatEdit, L"second");
            dialog.setInput(KeyFileEdit, L"C:\\key.zelkey");
            dialog.click(IDC_PROCEED);
        }));
    EXPECT_EQ(view->getPassword(), L"first");
    EXPECT_EQ(view->getPasswordRepeat(), L"second");
    EXPECT_EQ(view->getKeyFile(), L"C:\\key.zelkey");
}

TEST_F(EncryptionDialog, endsUncheckedByCancelCloseBoxAndEscape)
{
    view->onOk = {[](void*)
                  {
                      ADD_FAILURE() << "nothing is checked";
                      return true;
                  },
                  nullptr};
    EXPECT_FALSE(open([](const OpenDialog& dialog) { dialog.click(IDC_CANCEL); }));
    EXPECT_FALSE(open([](const OpenDialog&) {}));
    EXPECT_FALSE(open([](const OpenDialog& dialog) { dialog.press(VK_ESCAPE); }));
}

TEST_F(EncryptionDialog, proceedsByTheEnterKeyFromAnEdit)
{
    EXPECT_TRUE(open(
        [](const OpenDialog& dialog)
        {
            typeBoth(dialog, L"secret");
            dialog.press(VK_RETURN);
        }));
    EXPECT_EQ(view->getPassword(), L"secret");
}

TEST_F(EncryptionDialog, opensAnewInPasswordModeWithTheSectionClosed)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.chooseInput(1);
            dialog.click(IDC_SECTION);
        });
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.edit(RepeatEdit).visible);
            EXPECT_FALSE(dialog.edit(KeyFileEdit).visible);
            EXPECT_TRUE(dialog.shows(L"More >>"));
        });
    open([](const OpenDialog& dialog) { EXPECT_FALSE(dialog.edit(KeyFileEdit).visible) << "after a password too"; });
}

TEST_F(EncryptionDialog, leavesTheFocusWhenTheInputStays)
{
    open(
        [](const OpenDialog& dialog)
        {
            const HWND choice = dialog.control(ControlClass::TextWithPopupMenu).window;
            SetFocus(choice);
            dialog.chooseInput(0);
            EXPECT_EQ(GetFocus(), choice);
        });
}

TEST_F(EncryptionDialog, acceptsCommand110AndDoesNothing)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.handles(WM_COMMAND, 110, 0));
            EXPECT_FALSE(dialog.handles(WM_COMMAND, 111, 0));
            EXPECT_TRUE(IsWindow(dialog.window()));
            EXPECT_TRUE(dialog.shows(L"More >>"));
        });
}

TEST_F(EncryptionDialog, keepsWhatWasTypedWhenTheInputChanges)
{
    open(
        [this](const OpenDialog& dialog)
        {
            typeBoth(dialog, L"secret");
            dialog.chooseInput(1);
            EXPECT_TRUE(dialog.shows(L"Key file"));
            EXPECT_FALSE(dialog.edit(PasswordEdit).visible);
            EXPECT_FALSE(dialog.edit(RepeatEdit).visible);
            EXPECT_FALSE(dialog.shows(L"Repeat:"));
            EXPECT_TRUE(dialog.edit(KeyFileEdit).visible);
            EXPECT_TRUE(dialog.hasFocus(KeyFileEdit));
            EXPECT_FALSE(view->isPasswordMode());
            dialog.type(KeyFileEdit, L"C:\\k");
            dialog.chooseInput(0);
            EXPECT_TRUE(dialog.hasFocus(PasswordEdit));
            EXPECT_TRUE(dialog.shows(L"Repeat:"));
            EXPECT_EQ(dialog.input(PasswordEdit), L"secret");
            EXPECT_EQ(dialog.input(RepeatEdit), L"secret");
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\k");
            EXPECT_TRUE(view->isPasswordMode());
        });
}

TEST_F(EncryptionDialog, showsAPasswordOnlyWhileItsOwnButtonIsHeld)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            EXPECT_TRUE(dialog.isMasked(RepeatEdit));
            EXPECT_FALSE(dialog.isMasked(KeyFileEdit));
            dialog.hold(PasswordEdit);
            EXPECT_FALSE(dialog.isMasked(PasswordEdit));
            EXPECT_TRUE(dialog.isMasked(RepeatEdit));
            dialog.letGo(PasswordEdit);
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            dialog.hold(RepeatEdit);
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            EXPECT_FALSE(dialog.isMasked(RepeatEdit));
            dialog.letGo(RepeatEdit);
            EXPECT_TRUE(dialog.isMasked(RepeatEdit));
        });
}

TEST_F(EncryptionDialog, takesButtonsOfNoEditAndFurtherButtonsAsHandled)
{
    view->onBrowseKeyFile = {[](void*) { ADD_FAILURE(); }, nullptr};
    view->onPasswordsChanged = {[](void*) { ADD_FAILURE(); }, nullptr};
    open(
        [](const OpenDialog& dialog)
        {
            for (const wchar_t* const message :
                 {ControlMessage::ButtonPressed, ControlMessage::ButtonClicked, ControlMessage::TextChanged})
                EXPECT_TRUE(dialog.tell(message, NoEdit, 0));
            const auto password = static_cast<WPARAM>(dialog.edit(PasswordEdit).id);
            const auto keyFile = static_cast<WPARAM>(dialog.edit(KeyFileEdit).id);
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonPressed, password, 1));
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonPressed, keyFile, 1));
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonClicked, keyFile, 0));
            EXPECT_TRUE(dialog.tell(ControlMessage::TextChanged, keyFile, 0));
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            EXPECT_FALSE(dialog.tell(ControlMessage::UpdateBackground, 0, 0));
        });
}

TEST_F(EncryptionDialog, hasTheCurrentPathWhenItAsksForAnother)
{
    view->onBrowseKeyFile = {[](void* self)
                             {
                                 auto& asking = *static_cast<EncryptionPasswordView*>(self);
                                 asking.setKeyFile(asking.getKeyFile() + L".new");
                             },
                             view.get()};
    open(
        [](const OpenDialog& dialog)
        {
            dialog.chooseInput(1);
            dialog.type(KeyFileEdit, L"typed");
            dialog.hold(KeyFileEdit);
            dialog.letGo(KeyFileEdit);
            EXPECT_EQ(dialog.input(KeyFileEdit), L"typed.new");
        });
}

TEST_F(EncryptionDialog, takesAKeyFileBeforeAndWhileItIsOpen)
{
    view->setKeyFile(L"C:\\first.zelkey");
    open(
        [this](const OpenDialog& dialog)
        {
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\first.zelkey");
            view->setKeyFile(L"C:\\second.zelkey");
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\second.zelkey");
            EXPECT_TRUE(dialog.edit(PasswordEdit).visible) << "the input stays as chosen";
        });
    EXPECT_EQ(view->getKeyFile(), L"C:\\second.zelkey");
}

} // namespace JobRunner
