#include "vaultcore/read_back.h"

#include "vaultcore/container/secure_bytes.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/file_streams.h"

namespace VaultCore
{

void readBack(IFileSystem& files, const Place& result, const FileInfo& published, ContentDigest& content,
              const ReadBackProgress& progress)
{
    const auto file = files.openForReading(result);
    file->forgetMemory();
    if (!unchanged(published, file->info()))
        throw FileFailure(FailureCause::ResultDiffers, 0);
    SecureBytes chunk(ContentChunk);
    ContentDigest digest;
    std::uint64_t done = 0;
    for (std::size_t count = chunk.size(); count == chunk.size();)
    {
        count = file->read(chunk.bytes());
        digest.add(chunk.bytes().first(count));
        done += count;
        if (done < published.size)
            progress(done);
    }
    if (digest.finish() != content.finish())
        throw FileFailure(FailureCause::ResultDiffers, 0);
}

} // namespace VaultCore
