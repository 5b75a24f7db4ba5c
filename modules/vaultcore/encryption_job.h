#pragma once

#include "vaultcore/container/container.h"
#include "vaultcore/container/secure_bytes.h"
#include "vaultcore/content_digest.h"
#include "vaultcore/list_job.h"
#include "vaultcore/read_back.h"
#include "vaultcore/source_removal.h"
#include "vaultcore/temporary_files.h"
#include "vaultcore/work_ahead.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace VaultCore
{

/// What an encryption is to do. Texts in UTF-8.
struct EncryptionOrder
{
    std::shared_ptr<Key> key;
    std::uint32_t algorithm = 0;
    std::string riddle;
    std::string extraText;
    std::uint32_t destiny = 0;
};

/// Encrypts each file of a list into one of the same name with ".zel" behind it, in the same folder.
/// - Links in folders are left out, and an entry that is a link is a failed file: to encrypt what it leads to under its
///   name, and then to remove one of the two, would not be what anybody means. Temporary files of this engine are left
///   out as well, unless an entry names one. A file that is encrypted already is encrypted again.
/// - The result is written under a temporary name, flushed, and given its own name, which never replaces a file.
/// - Before a source is deleted or wiped, its result is read back under its final name and has to decrypt to the
///   content that was read, and the source has to be what it was. With a public key, which does not decrypt, the bytes
///   of the result have to be those that were written.
/// - Progress: (0, size), every chunk, and (size, size) once the result stands; when the source goes, writing counts as
///   the first half and reading back as the second. Then a wipe reports itself to the receiver of the destiny.
/// - A progress answer of 0 stops the job: the temporary file or the result goes and the source stays as it was, up to
///   the moment when its first byte is overwritten. From then on the result stays.
/// - Behind the first file, small ones are encrypted several at a time and ahead of their turn (`WorkAhead`); what they
///   report when it comes is the same. Results whose turn does not come are removed again.
/// - A source that cannot be removed is asked about like any failure; repeat tries the removal again, and when it is
///   given up, source and result both stay.
class EncryptionJob final : private IListWork, private IResultMaker
{
public:
    /// `order` has to outlive the job.
    EncryptionJob(IFileSystem& files, const EventReceivers& events, const EncryptionOrder& order);

    /// Returns when the last callback has returned. What a callback throws passes through.
    void run(const std::vector<std::wstring>& entries) { job_.run(entries, *this); }

private:
    /// One file under work.
    struct Work final : ResultWork
    {
        Source source;
        /// Digest of what the result has to give when it is read back.
        std::optional<ContentDigest> digest;
        /// Its turn has not come: nothing is reported yet.
        bool ahead = false;
        /// What is to be reported then.
        std::vector<std::uint64_t> parts;
    };

    void comingUp(std::span<const JobItem> items) override;
    void workOnFile(JobItem& item) override;
    void workOnFolder(const JobItem&) override {}
    void leave(const JobItem&) override {}
    void end() override { ahead_.takeBackRest(); }

    std::unique_ptr<ResultWork> make(const JobItem& item) override;
    void check(ResultWork& work) override;
    void takeBack(ResultWork& work) override;

    static std::unique_ptr<Work> workOf(const JobItem& item);
    void encrypt(Work& work);
    void writeResult(Work& work);
    void copyContent(IReadFile& from, ContainerWriter& to, Work& work);
    void finishResult(Work& work);
    void verify(Work& work);
    ContentDigest::Value decryptedDigest(IReadFile& file, const ReadBackProgress& progress);
    void removeSource(Work& work);
    void reportPart(Work& work, std::uint64_t done, bool readingBack);
    void reportShown(const Work& work, std::uint64_t shown);
    bool sourceGoes() const;
    bool keyDecrypts() const;
    EncryptionSession& session();
    bool unlock(ContainerReader& reader);

    IFileSystem& files_;
    const EncryptionOrder& order_;
    JobReports reports_;
    ListJob job_;
    TemporaryFiles temporaries_;
    SourceRemoval removal_;
    std::unique_ptr<EncryptionSession> session_;
    /// Guards `derivations_`.
    std::mutex mutex_;
    std::unique_ptr<DerivationCache> derivations_;
    WorkAhead ahead_;
    /// Of the file whose turn is next; null when it is to be worked on by itself.
    std::unique_ptr<ResultWork> ready_;
};

} // namespace VaultCore
