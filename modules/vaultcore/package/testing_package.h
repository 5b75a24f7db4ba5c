#pragma once

#include "vaultcore/container/testing_container.h"
#include "vaultcore/package/package_reader.h"
#include "vaultcore/package/package_writer.h"

#include <map>
#include <string>

// What the tests of the packages share: packages in memory, made well and made badly.

namespace VaultCore
{

class MemoryPackage final : public IPackageSink, public IPackageSource
{
public:
    explicit MemoryPackage(Bytes start = {}) : bytes(std::move(start)) {}

    void write(ByteView more) override
    {
        if (bytes.size() + more.size() > room)
            throw ContainerFailure{ContainerFault::WrongSize, L"full"};
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    void cutTo(std::uint64_t size) override { bytes.resize(static_cast<std::size_t>(size)); }
    std::uint64_t size() override { return bytes.size(); }
    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) override
    {
        const auto from = static_cast<std::size_t>(std::min<std::uint64_t>(offset, bytes.size()));
        const std::size_t count = std::min(out.size(), bytes.size() - from);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(from), count, out.begin());
        return count;
    }

    Bytes bytes;
    std::size_t room = std::size_t{1} << 30;
};

inline Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

inline const std::string TestProgram = "MZ the program";

inline void addFile(PackageWriter& writer, const std::string& name, ByteView content)
{
    writer.add({name, content.size(), 132539328000000000, 0, ""},
               [&](ContainerWriter& container) { container.write(content); });
}

using Files = std::vector<std::pair<std::string, Bytes>>;

inline MemoryPackage packageOf(const Files& files, const std::string& comment = "About this package",
                               std::uint8_t key = 0)
{
    MemoryPackage package(bytesOf(TestProgram));
    const auto session = startEncryptionWith(*symmetricKey(key), Aes256, cheapParameters());
    PackageWriter writer(package, package.size(), *session, "riddle");
    for (const auto& [name, content] : files)
        addFile(writer, name, content);
    writer.finish(comment);
    return package;
}

/// Everything in a package. Throws `WrongKey` for a key that does not fit.
inline Files filesOf(IPackageSource& package, const Key& key, DerivationCache& cache)
{
    PackageReader reader(package);
    if (!reader.unlock(key, cache))
        throw ContainerFailure{ContainerFault::WrongKey, L""};
    Files files;
    for (std::size_t index = 0; index < reader.entries().size(); ++index)
    {
        ContainerReader& file = reader.open(index);
        Bytes content;
        for (ByteView piece = file.read(); !piece.empty(); piece = file.read())
            content.insert(content.end(), piece.begin(), piece.end());
        files.emplace_back(reader.entries()[index].name, content);
    }
    return files;
}

inline Files filesOf(IPackageSource& package)
{
    return filesOf(package, *symmetricKey(), *createDerivationCache());
}

inline std::wstring refusalOf(IPackageSource& package)
{
    const auto failure = failureOf([&] { filesOf(package); });
    return failure ? failure->message : L"";
}

/// A package whose directory and trailer are what the test makes of them, sealed with the right key.
class BadPackage
{
public:
    BadPackage() : BadPackage(bytesOf(TestProgram), *symmetricKey()) {}
    BadPackage(Bytes program, const Key& key)
        : package_(std::move(program)), session_(startEncryptionWith(key, Aes256, cheapParameters()))
    {
        directory.programSize = package_.size();
    }

    /// A container that is whole; its entry can be changed until `finish`.
    PackageEntry& add(const std::string& name, const std::string& content, const std::string& insideName)
    {
        const std::size_t offset = package_.bytes.size();
        const auto writer = session_->begin(package_, "", {insideName, content.size(), 0, 0, ""});
        const std::size_t start = package_.bytes.size() - offset;
        writer->write(viewOf(content));
        writer->finish();
        PackageEntry entry{name, content.size(), offset, package_.bytes.size() - offset, 0, {}};
        entry.startSize = static_cast<std::uint32_t>(start);
        entry.start = sha256(ByteView(package_.bytes).subspan(offset, start));
        directory.entries.push_back(entry);
        return directory.entries.back();
    }
    PackageEntry& add(const std::string& name) { return add(name, "content of " + name, name); }

    MemoryPackage finish(const std::string& comment = "")
    {
        directory.comment = sha256(viewOf(comment));
        return finishWith(encodeDirectory(directory), comment);
    }

    MemoryPackage finishWith(ByteView content, const std::string& comment = "", const std::string& name = DirectoryName)
    {
        Trailer trailer{directory.programSize, package_.size(), 0, 0, static_cast<std::uint32_t>(comment.size())};
        const auto writer = session_->begin(package_, "", {name, content.size(), 0, 0, ""});
        writer->write(content);
        writer->finish();
        trailer.commentOffset = package_.size();
        trailer.directorySize = trailer.commentOffset - trailer.directoryOffset;
        package_.write(viewOf(comment));
        package_.write(encodeTrailer(trailer));
        return package_;
    }

    Directory directory;

private:
    MemoryPackage package_;
    std::unique_ptr<EncryptionSession> session_;
};

} // namespace VaultCore
