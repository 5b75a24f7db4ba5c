#include "engine/engine_job.h"

#include "interfaces/vaultcore/encryptor.h"
#include "interfaces/vaultcore/factory.h"
#include "oracle/sealed.h"
#include "vaultcore/container/key.h"
#include "vaultcore/decryption_job.h"
#include "vaultcore/deletion_job.h"
#include "vaultcore/encryption_job.h"
#include "vaultcore/package/sfx_job.h"

namespace Faults
{
namespace
{

using namespace VaultCore;

constexpr std::uint32_t Aes256 = 3;

class Listener final : public IOverallProgressEvents, public IFileProgressEvents, public IFileConflictEvents
{
public:
    Listener(int tries, const std::function<void(const Told&)>& onTold) : tries_(tries), onTold_(onTold) {}
    virtual ~Listener() = default;

    EventReceivers receivers() { return {nullptr, this, this, this, this}; }

    void OnOperationStarted() override {}
    void OnFileStarted(const wchar_t*) override {}
    void OnFileFinished(const void*, const wchar_t*, std::uint32_t error) override
    {
        ++(error == 0 ? report.told.processed : report.told.failed);
        onTold_(report.told);
    }
    void OnOperationFinished() override { report.finished = true; }
    int OnFileProgress(std::uint64_t, std::uint64_t) override { return 1; }
    int OnFileConflict(std::uint32_t, std::uint32_t) override { return 0; }
    int OnFileError(const wchar_t*, const wchar_t*, const wchar_t* text) override
    {
        ++report.questions;
        report.lastQuestion = text;
        return tries_-- > 0 ? FileErrorRepeat : FileErrorSkip;
    }

    JobReport report;

private:
    int tries_;
    const std::function<void(const Told&)>& onTold_;
};

class OneKey final : public IPasswordProvider
{
public:
    virtual ~OneKey() = default;
    int ProvideKey(const wchar_t*, IKey** key) override
    {
        *key = testedKey().release();
        return KeyProvided;
    }
    IKey* GetStoredKey(int index) override { return stored_.at(static_cast<std::size_t>(index)).get(); }
    int GetStoredKeyCount() override { return static_cast<int>(stored_.size()); }
    bool AddStoredKey(IKey* key) override
    {
        stored_.emplace_back(dynamic_cast<Key*>(key));
        return true;
    }

private:
    std::vector<std::unique_ptr<Key>> stored_;
};

std::uint32_t destinyOf(Fate fate)
{
    return static_cast<std::uint32_t>(fate);
}

void start(const Order& order, const std::wstring& folder, const std::vector<std::wstring>& entries, IFileSystem& files,
           const EventReceivers& events)
{
    EncryptionOrder encryption;
    encryption.key = testedKey();
    encryption.algorithm = Aes256;
    encryption.destiny = destinyOf(order.fate);
    OneKey provider;
    switch (order.kind)
    {
    case Kind::Encrypt:
        return EncryptionJob(files, events, encryption).run(entries);
    case Kind::Pack:
    {
        const SfxOrder sfx{encryption, "", folder + L"package.stub"};
        return SfxJob(files, events, sfx).run(entries);
    }
    case Kind::Decrypt:
        return DecryptionJob(files, events, {L"", order.fate != Fate::Keep, &provider}).run(entries);
    case Kind::Remove:
        return DeletionJob(files, events, order.fate == Fate::Wipe).run(entries);
    }
}

} // namespace

JobReport EngineJob::run(IFileSystem& files, int tries)
{
    std::vector<std::wstring> entries;
    for (const std::string& entry : order_.entries)
        entries.push_back(folder_ + std::wstring(entry.begin(), entry.end()));
    Listener listener(tries, onTold);
    start(order_, folder_, entries, files, listener.receivers());
    return listener.report;
}

Order withStub(Order order)
{
    order.before["package.stub"] = "MZ a program";
    return order;
}

} // namespace Faults
