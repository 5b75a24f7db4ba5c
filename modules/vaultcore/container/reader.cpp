#include "vaultcore/container/chunk_cipher.h"
#include "vaultcore/container/details.h"
#include "vaultcore/container/failure.h"
#include "vaultcore/container/head.h"

namespace VaultCore
{
namespace
{

class ChunkReader final : public ContainerReader
{
public:
    explicit ChunkReader(IByteSource& source) : source_(source), read_(readHead(source)) {}
    ~ChunkReader() override { wipe(chunk_); }

    std::string riddle() const override { return read_.head.riddle; }
    std::uint32_t algorithm() const override { return read_.head.algorithm; }
    const ContainerDetails& details() const override { return details_; }

    bool unlock(const Key& key, DerivationCache& cache) override
    {
        if (key.material().type == KeyTypePublicRsa)
            throw ContainerFailure{ContainerFault::WrongKey, L"A public RSA key cannot decrypt. Use the private key "
                                                             L"or the key pair."};
        for (const Slot& slot : read_.head.slots)
        {
            const std::optional<SecureBytes> fileKey = openSlot(slot, key, cache);
            if (!fileKey)
                continue;
            start(*fileKey);
            return true;
        }
        return false;
    }

    ByteView read() override
    {
        if (state_ == State::Ended)
            return {};
        if (state_ != State::Content)
            throwDamaged();
        // Whatever is thrown on the way, nothing is given out after it.
        state_ = State::Broken;
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(left_, read_.head.chunkSize));
        left_ -= size;
        const bool last = left_ == 0;
        take(std::span(chunk_).first(size + cipher_->tagSize()), last);
        if (last)
            checkEnd();
        state_ = last ? State::Ended : State::Content;
        return ByteView(chunk_).first(size);
    }

private:
    enum class State
    {
        Locked,
        Content,
        Ended,
        Broken,
    };

    void start(const SecureBytes& fileKey)
    {
        if (state_ == State::Broken)
            throwDamaged();
        if (state_ != State::Locked)
            return;
        if (!isGenuine(read_, fileKey))
            throwDamaged();
        state_ = State::Broken;
        const Head& head = read_.head;
        cipher_ = createChunkCipher(*findAlgorithm(head.algorithm), fileKey.bytes(), head.chunkSize);
        details_ = takeDetails();
        left_ = details_.size;
        // A small file needs no buffer for a whole chunk.
        chunk_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(left_, head.chunkSize)) + cipher_->tagSize());
        state_ = State::Content;
    }

    /// The next chunk, authenticated where it lies.
    void take(std::span<std::uint8_t> chunk, bool last)
    {
        if (source_.read(chunk) != chunk.size() || !cipher_->open({next_++, last}, chunk))
            throwDamaged();
    }

    ContainerDetails takeDetails()
    {
        Bytes chunk(read_.head.detailsSize + cipher_->tagSize());
        take(chunk, false);
        ContainerDetails details = decodeDetails(ByteView(chunk).first(read_.head.detailsSize));
        wipe(chunk);
        return details;
    }

    void checkEnd()
    {
        std::uint8_t byte = 0;
        if (source_.read({&byte, 1}) != 0)
            throwDamaged();
    }

    IByteSource& source_;
    ReadHead read_;
    State state_ = State::Locked;
    std::unique_ptr<ChunkCipher> cipher_;
    ContainerDetails details_;
    /// Announced and not yet given out.
    std::uint64_t left_ = 0;
    std::uint64_t next_ = 0;
    Bytes chunk_;
};

} // namespace

std::unique_ptr<ContainerReader> openContainer(IByteSource& source)
{
    return std::make_unique<ChunkReader>(source);
}

} // namespace VaultCore
