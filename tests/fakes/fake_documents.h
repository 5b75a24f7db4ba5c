#pragma once

#include "fakes/fake_file_list.h"
#include "interfaces/zelplatform/factory.h"

#include <map>
#include <optional>

namespace Fakes
{

/// What a document says. More than one kind may be true.
struct JobAnswers
{
    bool encryption = false;
    bool sfxEncryption = false;
    bool decryption = false;
    bool doubleClickDecryption = false;
    bool wipe = false;
    std::vector<std::wstring> files;
    std::uint32_t algorithm = 0;
    std::uint32_t destiny = 0;
    std::wstring extraText;
    std::wstring sfxComment;
    std::optional<std::wstring> decryptionPath;
    std::uint32_t decryptionMode = 0;
    std::uint32_t deletionMethod = 0;
};

/// A document of any kind, in memory. Logs its calls and ends through `Release`.
class FakeDocument final : public ZelPlatform::IJobRunnerDocument,
                           public ZelPlatform::IEncryptorThreadDocument,
                           public ZelPlatform::IEncryptorSfxThreadDocument,
                           public ZelPlatform::IDecryptorThreadDocument,
                           public ZelPlatform::IDeleterThreadDocument
{
public:
    /// `log` is not owned.
    FakeDocument(CallLog& log, JobAnswers answers);
    ~FakeDocument() = default;

    void Release() override;
    VaultCore::IFileList* GetFileList() override;
    void notCalled1() override { log(L"notCalled1"); }
    bool IsDecryption() override;
    bool IsDoubleClickDecryption() override;
    bool IsEncryption() override;
    bool IsSfxEncryption() override;
    bool IsWipe() override;

    std::uint32_t GetAlgorithm() override;
    void notCalled2() override { log(L"notCalled2"); }
    void notCalled3() override { log(L"notCalled3"); }
    void notCalled4() override { log(L"notCalled4"); }
    void notCalled5() override { log(L"notCalled5"); }
    std::uint32_t GetDestiny() override;
    const wchar_t* GetExtraText() override;
    std::wstring GetSfxComment() override;
    const wchar_t* GetDecryptionPath() override;
    std::uint32_t GetDecryptionMode() override;
    std::uint32_t GetDeletionMethod() override;

private:
    void log(const std::wstring& call) { log_.add(L"document." + call); }

    CallLog& log_;
    const JobAnswers answers_;
    FakeFileList files_;
};

/// A documents' module in memory: gives out the documents that the test has put under their paths. One at a time.
class FakeZelPlatform
{
public:
    /// `log` is not owned.
    explicit FakeZelPlatform(CallLog& log);
    ~FakeZelPlatform();
    FakeZelPlatform(const FakeZelPlatform&) = delete;
    FakeZelPlatform& operator=(const FakeZelPlatform&) = delete;

    /// The module's `createFactory`. A new factory of the module at hand.
    static ZelPlatform::IFactory* createFactory();

    /// By the path of the configuration file; any other path gives null.
    std::map<std::wstring, JobAnswers> documents;

    CallLog& log() { return log_; }

private:
    CallLog& log_;
};

} // namespace Fakes
