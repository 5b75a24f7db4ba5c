#include "vaultcore/package/package_writer.h"

#include "vaultcore/content_digest.h"
#include "vaultcore/package/package_failure.h"
#include "vaultcore/package/package_names.h"

namespace VaultCore
{
namespace
{

/// What containers, directory and comment take beside content and names, at their most.
constexpr std::uint64_t Reserve = std::uint64_t{4} << 20;

/// A container with its tags: less than a hundredth more than its content.
std::uint64_t mostOf(std::uint64_t content)
{
    return content + content / 64 + LargestContainerStart;
}

} // namespace

/// Counts what goes through, and digests it until the container's start is over.
class PackageWriter::Counter final : public IByteSink
{
public:
    explicit Counter(IByteSink& sink) : sink_(sink) {}

    void write(std::span<const std::uint8_t> bytes) override
    {
        if (digesting_)
            digest_.add(bytes);
        sink_.write(bytes);
        count_ += bytes.size();
    }
    Digest endOfStart()
    {
        digesting_ = false;
        return digest_.finish();
    }
    std::uint64_t count() const { return count_; }

private:
    IByteSink& sink_;
    ContentDigest digest_;
    bool digesting_ = true;
    std::uint64_t count_ = 0;
};

PackageWriter::PackageWriter(IPackageSink& sink, std::uint64_t programSize, EncryptionSession& session,
                             std::string riddle)
    : sink_(sink), session_(session), riddle_(std::move(riddle)), end_(programSize)
{
    directory_.programSize = programSize;
}

void PackageWriter::add(const ContainerDetails& details, const std::function<void(ContainerWriter&)>& copy)
{
    checkRoom(details);
    // What a failed attempt has left behind goes first.
    sink_.cutTo(end_);
    try
    {
        Counter counter(sink_);
        const auto container = session_.begin(counter, riddle_, details);
        PackageEntry entry{details.name, details.size, end_, 0, 0, {}};
        entry.startSize = static_cast<std::uint32_t>(counter.count());
        entry.start = counter.endOfStart();
        copy(*container);
        container->finish();
        entry.size = counter.count();
        directorySize_ += directoryBytesOf(entry);
        end_ += entry.size;
        directory_.entries.push_back(std::move(entry));
    }
    catch (...)
    {
        sink_.cutTo(end_);
        throw;
    }
}

void PackageWriter::finish(const std::string& comment)
{
    if (comment.size() > LargestComment)
        throwAbsurdPackage(L"the comment is too long");
    sink_.cutTo(end_);
    writeEnd(comment);
}

void PackageWriter::checkRoom(const ContainerDetails& details) const
{
    if (const auto fault = faultOfName(details.name))
        throw ContainerFailure{ContainerFault::AbsurdParameters,
                               L"The file's name cannot stand in a package: " + *fault + L"."};
    if (directory_.entries.size() >= MostPackageFiles ||
        directorySize_ + LongestPackageName + DigestSize * 4 > LargestDirectory)
        throwAbsurdPackage(L"it holds no more files");
    const std::uint64_t taken = end_ + directorySize_ + LargestComment + Reserve;
    if (details.size > LargestPackage || taken > LargestPackage || mostOf(details.size) > LargestPackage - taken)
        throwAbsurdPackage(L"with this file it would be larger than 4 GB, and Windows starts no such program");
}

void PackageWriter::writeEnd(const std::string& comment)
{
    directory_.comment = sha256(viewOf(comment));
    const Bytes content = encodeDirectory(directory_);
    Counter counter(sink_);
    const ContainerDetails details{DirectoryName, content.size(), 0, 0, {}};
    const auto container = session_.begin(counter, riddle_, details);
    container->write(content);
    container->finish();
    Trailer trailer;
    trailer.programSize = directory_.programSize;
    trailer.directoryOffset = end_;
    trailer.directorySize = counter.count();
    trailer.commentOffset = end_ + counter.count();
    trailer.commentSize = static_cast<std::uint32_t>(comment.size());
    sink_.write(viewOf(comment));
    sink_.write(encodeTrailer(trailer));
}

} // namespace VaultCore
