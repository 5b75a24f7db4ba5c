#include "vaultcore/container/writer.h"

#include "vaultcore/container/chunk_cipher.h"
#include "vaultcore/container/details.h"
#include "vaultcore/container/failure.h"
#include "vaultcore/container/head.h"

namespace VaultCore
{
namespace
{

[[noreturn]] void throwWrongSize()
{
    throw ContainerFailure{ContainerFault::WrongSize, L"The file changed its size while it was being encrypted."};
}

class ChunkWriter final : public ContainerWriter
{
public:
    ChunkWriter(IByteSink& sink, std::unique_ptr<ChunkCipher> cipher, std::uint32_t chunkSize, std::uint64_t size)
        : sink_(sink), cipher_(std::move(cipher)), left_(size),
          // A small file needs no buffer for a whole chunk.
          pending_(static_cast<std::size_t>(std::min<std::uint64_t>(chunkSize, size))), chunkSize_(chunkSize),
          sealed_(pending_.size() + cipher_->tagSize())
    {
    }
    ~ChunkWriter() override { wipe(pending_); }

    void writeDetails(ByteView details)
    {
        Bytes chunk(details.size() + cipher_->tagSize());
        cipher_->seal({next_++, false}, details, chunk);
        sink_.write(chunk);
    }

    void write(ByteView content) override
    {
        enter();
        if (content.size() > left_)
            throwWrongSize();
        left_ -= content.size();
        while (!content.empty())
            content = content.subspan(accept(content));
        open_ = true;
    }

    void finish() override
    {
        enter();
        if (left_ != 0)
            throwWrongSize();
        flush(ByteView(pending_).first(filled_), true);
    }

private:
    /// Whatever is thrown from here on, nothing may follow it.
    void enter()
    {
        if (!open_)
            throwDamaged();
        open_ = false;
    }

    /// Takes some of the content and tells how much. A full chunk is sealed only once more follows: it could be the
    /// last.
    std::size_t accept(ByteView content)
    {
        if (filled_ == chunkSize_)
        {
            flush(pending_, false);
            filled_ = 0;
        }
        if (filled_ != 0 || content.size() <= chunkSize_)
            return keep(content);
        flush(content.first(chunkSize_), false);
        return chunkSize_;
    }

    std::size_t keep(ByteView content)
    {
        const std::size_t size = std::min(content.size(), chunkSize_ - filled_);
        std::copy_n(content.begin(), size, pending_.begin() + static_cast<std::ptrdiff_t>(filled_));
        filled_ += size;
        return size;
    }

    void flush(ByteView content, bool last)
    {
        const std::span<std::uint8_t> sealed = std::span(sealed_).first(content.size() + cipher_->tagSize());
        cipher_->seal({next_++, last}, content, sealed);
        sink_.write(sealed);
    }

    IByteSink& sink_;
    std::unique_ptr<ChunkCipher> cipher_;
    /// Announced and not yet given.
    std::uint64_t left_;
    /// Content that waits for its chunk to fill.
    Bytes pending_;
    std::size_t filled_ = 0;
    std::size_t chunkSize_;
    Bytes sealed_;
    std::uint64_t next_ = 0;
    bool open_ = true;
};

class Session final : public EncryptionSession
{
public:
    Session(SlotStart start, std::uint32_t algorithm, const WritingParameters& parameters)
        : start_(std::move(start)), algorithm_(algorithm), chunkSize_(parameters.chunkSize)
    {
    }

    std::unique_ptr<ContainerWriter> begin(IByteSink& sink, const std::string& riddle,
                                           const ContainerDetails& details) override
    {
        SecureBytes fileKey(FileKeySize);
        fillRandom(fileKey.bytes());
        Slot slot = start_.slot;
        wrapFileKey(slot, start_.slotKey, fileKey);
        Bytes detailBytes = encodeDetails(details);
        Head head;
        head.algorithm = static_cast<std::uint16_t>(algorithm_);
        head.chunkSize = chunkSize_;
        head.detailsSize = static_cast<std::uint32_t>(detailBytes.size());
        head.riddle = riddle;
        head.slots = {std::move(slot)};
        const Bytes headBytes = encodeHead(head, fileKey);
        auto writer = std::make_unique<ChunkWriter>(
            sink, createChunkCipher(*findAlgorithm(algorithm_), fileKey.bytes(), chunkSize_), chunkSize_, details.size);
        sink.write(headBytes);
        writer->writeDetails(detailBytes);
        wipe(detailBytes);
        return writer;
    }

private:
    const SlotStart start_;
    std::uint32_t algorithm_;
    std::uint32_t chunkSize_;
};

} // namespace

WritingParameters& usualParameters()
{
    static WritingParameters parameters;
    return parameters;
}

std::unique_ptr<EncryptionSession> startEncryptionWith(const Key& key, std::uint32_t algorithm,
                                                       const WritingParameters& parameters)
{
    if (const auto message = missingAlgorithm(algorithm))
        throw ContainerFailure{ContainerFault::UnknownAlgorithm, *message};
    return std::make_unique<Session>(startSlot(key, parameters.argon2), algorithm, parameters);
}

std::unique_ptr<EncryptionSession> startEncryption(const Key& key, std::uint32_t algorithm)
{
    return startEncryptionWith(key, algorithm, usualParameters());
}

} // namespace VaultCore
