#include "zelplatform/document.h"

#include "zelplatform/file_list.h"

#include <utility>

namespace ZelPlatform
{
namespace
{

/// Base of the documents, and by itself the document of an unknown kind.
class Document : public IJobRunnerDocument
{
public:
    explicit Document(JobDescription job) : job_(std::move(job)), files_(std::move(job_.files)) {}
    virtual ~Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    void Release() override { delete this; }
    VaultCore::IFileList* GetFileList() override { return &files_; }
    void notCalled1() override {}
    bool IsDecryption() override { return job_.kind == JobKind::Decrypt; }
    bool IsDoubleClickDecryption() override { return job_.kind == JobKind::DoubleClick; }
    bool IsEncryption() override { return job_.kind == JobKind::Encrypt; }
    bool IsSfxEncryption() override { return job_.kind == JobKind::EncryptSfx; }
    bool IsWipe() override { return job_.kind == JobKind::Delete; }

protected:
    const JobDescription& job() const { return job_; }

private:
    JobDescription job_;
    FileList files_;
};

class EncryptDocument final : public Document, public IEncryptorThreadDocument
{
public:
    using Document::Document;
    std::uint32_t GetAlgorithm() override { return job().algorithm; }
    void notCalled1() override {}
    void notCalled2() override {}
    void notCalled3() override {}
    std::uint32_t GetDestiny() override { return job().destiny; }
    const wchar_t* GetExtraText() override { return job().extraText.c_str(); }
};

class EncryptSfxDocument final : public Document, public IEncryptorSfxThreadDocument
{
public:
    EncryptSfxDocument(JobDescription job, SfxComment userComment)
        : Document(std::move(job)), userComment_(std::move(userComment))
    {
    }
    void notCalled1() override {}
    void notCalled2() override {}
    void notCalled3() override {}
    void notCalled4() override {}
    std::uint32_t GetDestiny() override { return job().destiny; }
    void notCalled5() override {}
    std::wstring GetSfxComment() override { return job().comment ? *job().comment : userComment_.load(); }

private:
    SfxComment userComment_;
};

class DecryptDocument final : public Document, public IDecryptorThreadDocument
{
public:
    using Document::Document;
    const wchar_t* GetDecryptionPath() override { return job().path ? job().path->c_str() : nullptr; }
    std::uint32_t GetDecryptionMode() override { return job().mode; }
};

class DeleteDocument final : public Document, public IDeleterThreadDocument
{
public:
    using Document::Document;
    std::uint32_t GetDeletionMethod() override { return job().method; }
};

} // namespace

IJobRunnerDocument* createDocument(JobDescription job, SfxComment userComment)
{
    switch (job.kind)
    {
    case JobKind::Encrypt:
        return new EncryptDocument(std::move(job));
    case JobKind::EncryptSfx:
        return new EncryptSfxDocument(std::move(job), std::move(userComment));
    case JobKind::Decrypt:
        return new DecryptDocument(std::move(job));
    case JobKind::Delete:
        return new DeleteDocument(std::move(job));
    case JobKind::DoubleClick:
    case JobKind::Unknown:
        break;
    }
    return new Document(std::move(job));
}

} // namespace ZelPlatform
