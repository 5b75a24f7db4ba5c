#include "windows/decryption_password/win32/test_dialog.h"

#include "systemutilities/shell_utilities.h"
#include "windows/framework/win32/active_window.h"
#include "windows/framework/win32/ended_controls.h"

namespace JobRunner
{

namespace
{

// The edits, in the order of their making.
constexpr std::size_t PasswordEdit = 0;
constexpr std::size_t KeyFileEdit = 1;
constexpr WPARAM NoEdit = 4711;

std::wstring origin(const OpenDialog& dialog)
{
    return dialog.control(ControlClass::TextWithLinks, 1).text;
}

std::wstring header(const OpenDialog& dialog)
{
    return dialog.control(ControlClass::CopyDialogGradient).text;
}

void expectPasswordMode(const OpenDialog& dialog)
{
    EXPECT_TRUE(dialog.shows(L"Password"));
    EXPECT_TRUE(dialog.edit(PasswordEdit).visible);
    EXPECT_FALSE(dialog.edit(KeyFileEdit).visible);
    EXPECT_TRUE(dialog.hasFocus(PasswordEdit));
}

void expectKeyFileMode(const OpenDialog& dialog)
{
    EXPECT_TRUE(dialog.shows(L"Key file"));
    EXPECT_FALSE(dialog.edit(PasswordEdit).visible);
    EXPECT_TRUE(dialog.edit(KeyFileEdit).visible);
    EXPECT_TRUE(dialog.hasFocus(KeyFileEdit));
}

} // namespace

TEST_F(DecryptionDialog, asksForAPasswordAtFirst)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_EQ(dialog.caption(), L"Enter Password");
            EXPECT_TRUE(dialog.shows(L"Origin:"));
            expectPasswordMode(dialog);
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            EXPECT_FALSE(dialog.isMasked(KeyFileEdit));
            EXPECT_TRUE(GetWindowLongPtrW(dialog.window(), GWL_STYLE) & WS_CLIPCHILDREN);
        });
}

TEST_F(DecryptionDialog, saysWhatBecomesOfTheOriginals)
{
    const std::pair<int, const wchar_t*> modes[] = {{0, L"Keep original files (do not delete)."},
                                                    {1, L"Delete original files after decryption."},
                                                    {2, L"Decrypt, Open, Encrypt again (automatically)."},
                                                    {7, L"Keep original files (do not delete)."}};
    for (const auto& [mode, text] : modes)
    {
        view->setDecryptionMode(mode);
        open([&, wanted = text](const OpenDialog& dialog) { EXPECT_EQ(origin(dialog), wanted); });
    }
}

TEST_F(DecryptionDialog, deletesTheOriginalsUnlessToldOtherwise)
{
    open([](const OpenDialog& dialog) { EXPECT_EQ(origin(dialog), L"Delete original files after decryption."); });
}

TEST_F(DecryptionDialog, namesTheShortenedFileInItsHeader)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_EQ(header(dialog),
                      L"Please enter password or provide key file to decrypt selected files on your computer.");
        });
    const std::wstring name = L"C:\\Users\\somebody\\Documents\\of the last year\\a letter with a long name.docx.zel";
    view->setFileName(name);
    open(
        [&](const OpenDialog& dialog)
        {
            const std::wstring shortened = Halden::SystemUtilities::compactPath(name, 40);
            EXPECT_LE(shortened.size(), 40u);
            EXPECT_EQ(header(dialog), L"Provide Key for " + shortened);
        });
    view->setDecryptionMode(2);
    open([](const OpenDialog& dialog)
         { EXPECT_EQ(header(dialog), L"Please enter password to open the document in the associated application."); });
}

TEST_F(DecryptionDialog, offersThreeAnswers)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.shows(L"Proceed"));
            EXPECT_TRUE(dialog.shows(L"Ignore"));
            EXPECT_TRUE(dialog.shows(L"Cancel"));
        });
}

TEST_F(DecryptionDialog, keepsWhatWasTypedWhenTheInputChanges)
{
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.type(PasswordEdit, L"secret");
            dialog.chooseInput(1);
            expectKeyFileMode(dialog);
            EXPECT_FALSE(view->isPasswordMode());
            dialog.type(KeyFileEdit, L"C:\\k");
            dialog.chooseInput(0);
            expectPasswordMode(dialog);
            EXPECT_TRUE(view->isPasswordMode());
            EXPECT_EQ(dialog.input(PasswordEdit), L"secret");
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\k");
        });
}

TEST_F(DecryptionDialog, opensInKeyFileModeWithAGivenKeyFile)
{
    view->setPassword(L"secret");
    view->setKeyFile(L"C:\\k.zelkey");
    open(
        [](const OpenDialog& dialog)
        {
            expectKeyFileMode(dialog);
            EXPECT_EQ(dialog.input(PasswordEdit), L"secret");
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\k.zelkey");
        });
}

TEST_F(DecryptionDialog, takesAPasswordAndAKeyFileWhileItIsOpen)
{
    open(
        [this](const OpenDialog& dialog)
        {
            view->setKeyFile(L"C:\\k.zelkey");
            expectKeyFileMode(dialog);
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\k.zelkey");
            view->setPassword(L"secret");
            expectPasswordMode(dialog);
            EXPECT_EQ(dialog.input(PasswordEdit), L"secret");
        });
}

TEST_F(DecryptionDialog, writesBothEditsAnewForAKeyFileSoThatATypedPasswordIsLost)
{
    view->setPassword(L"given");
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.type(PasswordEdit, L" and more");
            view->setKeyFile(L"C:\\k.zelkey");
            EXPECT_EQ(dialog.input(PasswordEdit), L"given");
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\k.zelkey");
            dialog.setInput(KeyFileEdit, L"typed");
            view->setPassword(L"other");
            EXPECT_EQ(dialog.input(KeyFileEdit), L"C:\\k.zelkey");
        });
}

TEST_F(DecryptionDialog, takesAModeWhileItIsOpen)
{
    open(
        [this](const OpenDialog& dialog)
        {
            view->setDecryptionMode(0);
            EXPECT_EQ(origin(dialog), L"Keep original files (do not delete).");
            view->setDecryptionMode(2);
            EXPECT_EQ(origin(dialog), L"Decrypt, Open, Encrypt again (automatically).");
            EXPECT_FALSE(dialog.shows(L"Ignore"));
        });
}

TEST_F(DecryptionDialog, hasAHeaderByModeAndFileWhateverElseItIsGiven)
{
    view->setHeaderText(L"before");
    open(
        [this](const OpenDialog& dialog)
        {
            EXPECT_NE(header(dialog), L"before");
            dialog.type(PasswordEdit, L"typed");
            view->setHeaderText(L"meanwhile");
            EXPECT_NE(header(dialog), L"meanwhile");
            EXPECT_EQ(dialog.input(PasswordEdit), L"") << "as with the other setters, the edits are written anew";
        });
}

TEST_F(DecryptionDialog, givesWhatIsTypedAtThatMomentAndAfterItsEndWhatItHeldLast)
{
    open(
        [this](const OpenDialog& dialog)
        {
            dialog.type(PasswordEdit, L"secret");
            EXPECT_EQ(view->getPassword(), L"secret");
            dialog.setInput(KeyFileEdit, L"C:\\k");
            EXPECT_EQ(view->getKeyFile(), L"C:\\k");
            dialog.type(PasswordEdit, L"s");
        });
    EXPECT_EQ(view->getPassword(), L"secret") << "the close box looks at no edit";
}

TEST_F(DecryptionDialog, takesWhatWasTypedOnProceed)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.type(PasswordEdit, L"secret");
            dialog.setInput(KeyFileEdit, L"C:\\k");
            dialog.click(IDC_PROCEED);
        });
    EXPECT_EQ(view->getPassword(), L"secret");
    EXPECT_EQ(view->getKeyFile(), L"C:\\k");
}

TEST_F(DecryptionDialog, tellsWhichButtonEndedIt)
{
    std::wstring told;
    view->onIgnore = {[](void* text) { *static_cast<std::wstring*>(text) += L"ignore "; }, &told};
    view->onCancel = {[](void* text) { *static_cast<std::wstring*>(text) += L"cancel "; }, &told};
    open([](const OpenDialog& dialog) { dialog.click(IDC_IGNORE); });
    open([](const OpenDialog& dialog) { dialog.click(IDC_CANCEL); });
    open([](const OpenDialog&) {});
    open([](const OpenDialog& dialog) { dialog.click(IDC_PROCEED); });
    EXPECT_EQ(told, L"ignore cancel cancel ");
}

TEST_F(DecryptionDialog, asksForAPasswordByTheFirstItemAlone)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.tell(ControlMessage::ItemChanged, 0, 2));
            EXPECT_TRUE(dialog.edit(KeyFileEdit).visible);
            EXPECT_TRUE(dialog.tell(ControlMessage::ItemChanged, 0, 0));
            EXPECT_TRUE(dialog.edit(PasswordEdit).visible);
        });
}

TEST_F(DecryptionDialog, showsThePasswordOnlyWhileItsButtonIsHeld)
{
    open(
        [](const OpenDialog& dialog)
        {
            dialog.hold(PasswordEdit);
            EXPECT_FALSE(dialog.isMasked(PasswordEdit));
            dialog.letGo(PasswordEdit);
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
        });
}

TEST_F(DecryptionDialog, takesButtonsOfNoEditAndFurtherButtonsAsHandled)
{
    view->onBrowseKeyFile = {[](void*) { ADD_FAILURE(); }, nullptr};
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonPressed, NoEdit, 0));
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonClicked, NoEdit, 0));
            const auto password = static_cast<WPARAM>(dialog.edit(PasswordEdit).id);
            const auto keyFile = static_cast<WPARAM>(dialog.edit(KeyFileEdit).id);
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonPressed, password, 1));
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonPressed, keyFile, 1));
            EXPECT_TRUE(dialog.tell(ControlMessage::ButtonClicked, keyFile, 0));
            EXPECT_TRUE(dialog.isMasked(PasswordEdit));
            EXPECT_FALSE(dialog.tell(ControlMessage::HyperlinkClicked, 0, 0));
        });
}

TEST_F(DecryptionDialog, asksForHelpAndStaysUp)
{
    open(
        [](const OpenDialog& dialog)
        {
            EXPECT_FALSE(GetModuleHandleW(L"hhctrl.ocx"));
            EXPECT_TRUE(dialog.handles(WM_COMMAND, 110, 0));
            EXPECT_TRUE(GetModuleHandleW(L"hhctrl.ocx")) << "the help viewer";
            dialog.pump();
            EXPECT_TRUE(IsWindowVisible(dialog.window()));
        });
}

TEST_F(DecryptionDialog, endsItsControlsInItsOwnOrderAndLeavesTheKeyFileToItsWindow)
{
    EndedControls controls;
    view->setDecryptionMode(0);
    open([&](const OpenDialog& dialog) { controls.watch(dialog.window()); });
    EXPECT_EQ(controls.ended,
              (std::vector<std::wstring>{
                  L"Please enter password or provide key file to decrypt selected files on your computer.", L"Password",
                  L"", L"Keep original files (do not delete).", L"Origin:"}));
    EXPECT_EQ(controls.left,
              (std::vector<std::wstring>{ControlClass::EditWithIconButtons, L"Button", L"Button", L"Button"}));
}

TEST_F(DecryptionDialog, isOwnedByTheActiveWindow)
{
    const ActiveWindow owner;
    open([&](const OpenDialog& dialog) { EXPECT_TRUE(owner.owns(dialog.window())); });
}

} // namespace JobRunner
