#pragma once

#include "vaultcore/container/key.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace VaultCore
{

class SecureBytes;

/// Where a container's bytes go. Throws on failure; what it throws passes through the writer.
class IByteSink
{
public:
    virtual ~IByteSink() = default;
    virtual void write(std::span<const std::uint8_t> bytes) = 0;
};

/// Where a container's bytes come from. Throws on failure; what it throws passes through the reader.
class IByteSource
{
public:
    virtual ~IByteSource() = default;
    /// Fills `bytes` as far as there is data left; a short count is the end.
    virtual std::size_t read(std::span<std::uint8_t> bytes) = 0;
};

/// What a container tells beside the content.
struct ContainerDetails
{
    /// Name of the source without its folder, in UTF-8.
    std::string name;
    /// Size of the content in bytes.
    std::uint64_t size = 0;
    /// Times of the source in 100 ns since 1601 (UTC); 0 when not known.
    std::uint64_t modified = 0;
    std::uint64_t created = 0;
    /// In UTF-8.
    std::string extraText;
};

enum class ContainerFault
{
    NotAContainer,
    UnknownVersion,
    /// An algorithm that this engine does not have; the message names it.
    UnknownAlgorithm,
    /// Parameters beyond the limits: refused before anything is allocated.
    AbsurdParameters,
    /// Changed or cut off.
    Damaged,
    /// The writer was given more or less content than was announced.
    WrongSize,
    /// A key of a kind that cannot do what is asked of it; the message names the kind.
    WrongKey,
};

/// A container that cannot be written or read, with a message for the user.
struct ContainerFailure
{
    ContainerFault fault;
    std::wstring message;
};

/// Null when the engine has the algorithm; else the message for the user, which names it.
std::optional<std::wstring> missingAlgorithm(std::uint32_t algorithm);

class ContainerWriter
{
public:
    virtual ~ContainerWriter() = default;
    /// Content in order, in pieces of any size. Throws `WrongSize` for more than was announced. Once anything was
    /// thrown the container cannot be continued.
    virtual void write(std::span<const std::uint8_t> content) = 0;
    /// Ends the container. Throws `WrongSize` when the content was not as long as announced.
    virtual void finish() = 0;
};

/// What the containers of one job have in common: one key derivation serves them all.
class EncryptionSession
{
public:
    virtual ~EncryptionSession() = default;
    /// Writes the head of a container at once. The riddle (UTF-8) is readable without the key. The sink has to
    /// outlive the writer, the session need not. Throws `AbsurdParameters` for texts beyond the limits of the format.
    virtual std::unique_ptr<ContainerWriter> begin(IByteSink& sink, const std::string& riddle,
                                                   const ContainerDetails& details) = 0;
};

/// Throws `ContainerFailure` for an algorithm that the engine lacks or a key that cannot encrypt. May take a second
/// and much memory for a password. The key is not needed afterwards.
std::unique_ptr<EncryptionSession> startEncryption(const Key& key, std::uint32_t algorithm);

/// Keys found out by one job are remembered, so that a second file of the same job costs no second derivation. Not for
/// use by two threads at once.
class DerivationCache
{
public:
    virtual ~DerivationCache() = default;
    /// The key derived from `key` and `salt` (with all its parameters), by `derive` when it is not yet known. Valid
    /// until the next call. What `derive` throws passes through.
    virtual const SecureBytes& remember(const Key& key, std::span<const std::uint8_t> salt,
                                        const std::function<SecureBytes()>& derive) = 0;
};
std::unique_ptr<DerivationCache> createDerivationCache();

/// Reads one container. Every piece of content that is handed out has been authenticated before.
class ContainerReader
{
public:
    virtual ~ContainerReader() = default;
    virtual std::string riddle() const = 0;
    virtual std::uint32_t algorithm() const = 0;
    /// False for a key that does not fit; another one may be tried. Throws `Damaged` when the key fits and the rest of
    /// the head or the details were changed, and `WrongKey` for a public key, which can decrypt nothing.
    virtual bool unlock(const Key& key, DerivationCache& cache) = 0;
    /// Only once unlocked.
    virtual const ContainerDetails& details() const = 0;
    /// The next piece of content; empty at the end, which is given only once the whole container has proved complete
    /// and nothing follows it. Valid until the next call. Only once unlocked. Throws `Damaged`; it is thrown again by
    /// each call that follows.
    virtual std::span<const std::uint8_t> read() = 0;
};

/// Reads the head. Throws `ContainerFailure` for what is no container. The source has to outlive the reader.
std::unique_ptr<ContainerReader> openContainer(IByteSource& source);

} // namespace VaultCore
