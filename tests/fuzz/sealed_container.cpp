#include "fuzz/container_keys.h"
#include "vaultcore/container/chunk_cipher.h"
#include "vaultcore/container/details.h"
#include "vaultcore/container/head.h"

#include <map>

// A container that is sealed under the right key with whatever the input says: a script of the details, of chunks for
// any place in any order, and of damage done afterwards. So the fuzzer gets past each tag, as somebody does who has
// several files of one key, or who has the key.

namespace Fuzz
{
namespace
{

using namespace VaultCore;

constexpr std::size_t MostChunks = 24, MostContent = std::size_t{48} * 1024, MostDetails = 4096;

/// What is done with the next bytes of the script.
enum class Step : std::uint8_t
{
    Chunk,
    LastChunk,
    ChunkElsewhere,
    RawBytes,
    Damage,
};
constexpr std::uint8_t Steps = 5;

class Script
{
public:
    explicit Script(ByteView input) : script_(input)
    {
        const SecureBytes fileKey(contentOf(FileKeySize));
        const std::uint32_t algorithm = AvailableAlgorithms[script_.u8() % AvailableAlgorithms.size()];
        head_.algorithm = static_cast<std::uint16_t>(algorithm);
        head_.chunkSize = SmallestChunk << script_.u8() % 3;
        head_.riddle = takeText(script_.u8());
        cipher_ = createChunkCipher(*findAlgorithm(algorithm), fileKey.bytes(), head_.chunkSize);
        details = takeBytes(std::min<std::size_t>(script_.u16(), MostDetails));
        // The head may tell another size than the details have.
        head_.detailsSize = static_cast<std::uint32_t>(details.size()) + script_.u8();
        head_.slots = {slotFor(fileKey)};
        container = encodeHead(head_, fileKey);
        sealChunk({0, false}, details);
        while (script_.ok() && script_.left() != 0 && chunks.size() < MostChunks)
            step();
    }

    Bytes container;
    Bytes details;
    /// What was sealed for a place. It is all that may come out there.
    std::multimap<std::pair<std::uint64_t, bool>, Bytes> chunks;
    const Head& head() const { return head_; }

private:
    static Slot slotFor(const SecureBytes& fileKey)
    {
        static const SlotStart start = startSlot(*containerKeys()[0], CheapArgon2);
        Slot slot = start.slot;
        wrapFileKey(slot, start.slotKey, fileKey);
        return slot;
    }

    std::string takeText(std::size_t size) { return textOfBytes(takeBytes(size)); }
    Bytes takeBytes(std::size_t size)
    {
        const ByteView taken = script_.take(std::min(size, script_.left()));
        Bytes bytes(taken.begin(), taken.end());
        bytes.resize(size);
        return bytes;
    }

    void step()
    {
        switch (static_cast<Step>(script_.u8() % Steps))
        {
        case Step::Chunk:
            return addChunk({next_++, false});
        case Step::LastChunk:
            return addChunk({next_++, true});
        case Step::ChunkElsewhere:
            return addChunk({script_.u8(), script_.u8() % 2 != 0});
        case Step::RawBytes:
            return append(takeBytes(script_.u8()));
        case Step::Damage:
            container[script_.u16() % container.size()] ^= script_.u8();
        }
    }

    /// A full chunk when the size is the largest number.
    void addChunk(ChunkPlace place)
    {
        const std::size_t told = script_.u16();
        const std::size_t size = told == 0xFFFF ? head_.chunkSize : told;
        if (container.size() + size > MostContent)
            return;
        Bytes content = contentOf(size);
        const std::uint8_t own = script_.u8();
        for (std::uint8_t& byte : content)
            byte ^= own;
        sealChunk(place, content);
        chunks.emplace(std::pair(place.index, place.last), std::move(content));
    }

    void sealChunk(ChunkPlace place, ByteView content)
    {
        Bytes sealed(content.size() + cipher_->tagSize());
        cipher_->seal(place, content, sealed);
        append(sealed);
    }
    void append(ByteView bytes) { container.insert(container.end(), bytes.begin(), bytes.end()); }

    ByteReader script_;
    Head head_;
    std::unique_ptr<ChunkCipher> cipher_;
    std::uint64_t next_ = 1;
};

bool wasSealed(const Script& script, std::uint64_t index, bool last, ByteView piece)
{
    const auto [begin, end] = script.chunks.equal_range({index, last});
    return std::any_of(begin, end, [&](const auto& chunk) { return std::ranges::equal(chunk.second, piece); });
}

void checkDetails(const Script& script, const ContainerDetails& details)
{
    expect(script.head().detailsSize == script.details.size(), "details of another size are refused");
    const Bytes written = encodeDetails(details);
    const std::size_t size = std::min(written.size(), script.details.size());
    expect(std::equal(written.begin(), written.begin() + static_cast<std::ptrdiff_t>(size), script.details.begin()),
           "details are those that were sealed");
}

bool readSealed(ByteView input)
{
    const Script script(input);
    MeasuredSource source(script.container);
    CheapDerivations derivations;
    try
    {
        const auto reader = openContainer(source);
        source.setUnlocked();
        if (!reader->unlock(*containerKeys()[0], derivations))
            return false;
        expect(reader->riddle() == script.head().riddle, "a riddle is the one that was sealed");
        checkDetails(script, reader->details());
        std::uint64_t left = reader->details().size;
        bool isLast = false;
        for (std::uint64_t index = 1; !isLast; ++index)
        {
            const ByteView piece = reader->read();
            expect(piece.size() <= left, "no more comes out than the details tell");
            left -= piece.size();
            isLast = left == 0;
            expect(wasSealed(script, index, isLast, piece), "what comes out was sealed for its place");
        }
        expect(reader->read().empty(), "the end stays the end");
        return true;
    }
    catch (const ContainerFailure&)
    {
        return false;
    }
}

void put(Bytes& script, std::initializer_list<unsigned> bytes)
{
    for (const unsigned byte : bytes)
        script.push_back(static_cast<std::uint8_t>(byte));
}

/// Algorithm, chunks of 4 KiB, riddle and details of a file of this size.
Bytes startOf(unsigned algorithm, std::uint64_t size)
{
    const Bytes details = encodeDetails(detailsOf(size));
    Bytes script;
    put(script, {algorithm, 0, 1, '?'});
    put(script, {static_cast<unsigned>(details.size() & 0xFF), static_cast<unsigned>(details.size() >> 8)});
    script.insert(script.end(), details.begin(), details.end());
    put(script, {0});
    return script;
}

std::vector<Bytes> sealedSeeds()
{
    constexpr unsigned Chunk = 0, LastChunk = 1, Elsewhere = 2, Raw = 3, Damage = 4;
    std::vector<Bytes> seeds;
    for (unsigned algorithm = 0; algorithm < AvailableAlgorithms.size(); ++algorithm)
    {
        seeds.push_back(startOf(algorithm, 40));
        put(seeds.back(), {LastChunk, 40, 0, 7});
    }
    seeds.push_back(startOf(2, 0));
    put(seeds.back(), {LastChunk, 0, 0, 0});
    seeds.push_back(startOf(2, 2 * SmallestChunk + 5));
    put(seeds.back(), {Chunk, 0xFF, 0xFF, 1, Elsewhere, 2, 0, 0xFF, 0xFF, 2, Elsewhere, 3, 1, 5, 0, 3});
    // Swapped, behind the end, damaged.
    seeds.push_back(startOf(3, 2 * SmallestChunk));
    put(seeds.back(), {Elsewhere, 2, 1, 0xFF, 0xFF, 1, Elsewhere, 1, 0, 0xFF, 0xFF, 2});
    seeds.push_back(startOf(3, 9));
    put(seeds.back(), {LastChunk, 9, 0, 1, Raw, 3, 'e', 'n', 'd'});
    seeds.push_back(startOf(2, 9));
    put(seeds.back(), {LastChunk, 9, 0, 1, Damage, 200, 2, 1});
    return seeds;
}

const Registered registered({"sealed_container", readSealed, sealedSeeds});

} // namespace
} // namespace Fuzz
