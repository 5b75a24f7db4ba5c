#include "recorded/job_user.h"

#include "windows/dialog_job.h"

namespace EndToEnd
{

namespace
{

const std::wstring Password(UserPassword, UserPassword + std::char_traits<char>::length(UserPassword));

/// The program with a job.
class Started
{
public:
    explicit Started(const Path& job) : program_(programUnderTest(), quoted(job)) {}

    PasswordDialog dialog() const
    {
        const PasswordDialog dialog = PasswordDialog::of(program_);
        EXPECT_TRUE(dialog);
        return dialog;
    }
    void typePassword() const
    {
        const PasswordDialog asked = dialog();
        asked.typePassword(Password);
        asked.click(PasswordDialog::Proceed);
    }
    void typeNewPassword() const
    {
        const PasswordDialog asked = dialog();
        asked.typeNewPassword(Password);
        asked.click(PasswordDialog::Proceed);
    }
    void cancel() const { dialog().click(PasswordDialog::Cancel); }
    /// The box with this caption, and a button of it, once it is there.
    void answer(const std::wstring& caption, int button) const
    {
        const Window box = program_.window(caption);
        EXPECT_TRUE(box) << Path(caption);
        box.click(button);
        EXPECT_TRUE(waitUntil([&] { return !box.exists(); })) << Path(caption);
    }
    void agree(bool agrees) const { answer(L"Securely Delete Items", agrees ? IDYES : IDNO); }
    void end(int code = 0) const { EXPECT_EQ(program_.exitCode(LongLimit), code); }

private:
    RunningProgram program_;
};

} // namespace

void encryptByPassword(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addEncryptJob(files, DeleteFiles));
    job.typeNewPassword();
    job.end();
}

void cancelEncryption(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addEncryptJob(files, DeleteFiles));
    job.cancel();
    job.end();
}

void makePackage(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addJob("encrypt-sfx", files, "\"destiny\": 1"));
    job.typeNewPassword();
    job.end();
}

void decryptByPassword(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addDecryptJob(files));
    job.typePassword();
    job.end();
}

void cancelDecryption(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addDecryptJob(files));
    job.cancel();
    job.end();
}

void remove(const SampleFolder& folder, const std::vector<Path>& files, std::uint32_t method)
{
    const Started job(folder.addDeleteJob(files, method));
    job.agree(true);
    job.end();
}

void declineRemoval(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addDeleteJob(files));
    job.agree(false);
    job.end();
}

void removeWithoutTheFirst(const SampleFolder& folder, const std::vector<Path>& files)
{
    const Started job(folder.addDeleteJob(files));
    job.agree(true);
    job.answer(L"File Error Occured", TryAgainButton);
    job.answer(L"File Error Occured", SkipFileButton);
    job.end();
}

void doubleClick(const SampleFolder& folder, const Path& file)
{
    const Started job(folder.addJob("double-click", {file}));
    job.typePassword();
    job.end();
}

void startWithoutAJob(const SampleFolder& folder)
{
    const Started job(folder.path() / L"none.json");
    job.answer(L"Job Runner", IDOK);
    job.end(1);
}

} // namespace EndToEnd
