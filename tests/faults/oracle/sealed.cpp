#include "oracle/sealed.h"

#include "vaultcore/container/container.h"
#include "vaultcore/container/key_file.h"
#include "vaultcore/package/package_reader.h"
#include "vaultcore/package/package_writer.h"

#include <algorithm>
#include <span>

namespace Faults
{
namespace
{

using namespace VaultCore;

constexpr std::uint32_t Aes256 = 3;

void append(std::string& text, std::span<const std::uint8_t> bytes)
{
    text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

class TextSource final : public IByteSource
{
public:
    explicit TextSource(const std::string& text) : text_(text) {}
    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        const std::size_t count = std::min(bytes.size(), text_.size() - at_);
        std::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(at_), count, bytes.begin());
        at_ += count;
        return count;
    }

private:
    const std::string& text_;
    std::size_t at_ = 0;
};

class PackageText final : public IPackageSource
{
public:
    explicit PackageText(const std::string& text) : text_(text) {}
    std::uint64_t size() override { return text_.size(); }
    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> bytes) override
    {
        const auto at = static_cast<std::size_t>(std::min<std::uint64_t>(offset, text_.size()));
        const std::size_t count = std::min(bytes.size(), text_.size() - at);
        std::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(at), count, bytes.begin());
        return count;
    }

private:
    const std::string& text_;
};

class TextSink final : public IPackageSink
{
public:
    void write(std::span<const std::uint8_t> bytes) override { append(text, bytes); }
    void cutTo(std::uint64_t size) override { text.resize(static_cast<std::size_t>(size)); }
    std::string text;
};

ContainerDetails detailsOf(const std::string& name, const std::string& content)
{
    ContainerDetails details;
    details.name = name;
    details.size = content.size();
    return details;
}

std::span<const std::uint8_t> bytesOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

KeyMaterial material()
{
    KeyMaterial key;
    key.type = KeyTypeSymmetric;
    key.secret = SecureBytes(SymmetricKeySize);
    for (std::uint8_t& byte : key.secret.bytes())
        byte = 'k';
    return key;
}

std::string contentOf(ContainerReader& reader)
{
    std::string content;
    for (auto piece = reader.read(); !piece.empty(); piece = reader.read())
        append(content, piece);
    return content;
}

std::optional<Files> unpackedAnew(const std::string& package)
try
{
    PackageText source(package);
    PackageReader reader(source);
    const auto cache = createDerivationCache();
    if (!reader.unlock(*testedKey(), *cache))
        return std::nullopt;
    Files files;
    for (std::size_t index = 0; index < reader.entries().size(); ++index)
        files[reader.entries()[index].name] = contentOf(reader.open(index));
    return files;
}
catch (const ContainerFailure&)
{
    return std::nullopt;
}

} // namespace

std::unique_ptr<Key> testedKey()
{
    return createKey(material());
}

std::string testedKeyFile()
{
    const SecureBytes bytes = encodeKeyFile(material());
    return {bytes.bytes().begin(), bytes.bytes().end()};
}

std::optional<std::string> opened(const std::string& encrypted)
try
{
    TextSource source(encrypted);
    const auto reader = openContainer(source);
    const auto cache = createDerivationCache();
    if (!reader->unlock(*testedKey(), *cache))
        return std::nullopt;
    return contentOf(*reader);
}
catch (const ContainerFailure&)
{
    return std::nullopt;
}

std::optional<Files> unpacked(const std::string& package)
{
    // The judge asks about each file of a package, and opening one takes its time.
    static std::string last;
    static std::optional<Files> lastFiles;
    if (package != last)
    {
        lastFiles = unpackedAnew(package);
        last = package;
    }
    return lastFiles;
}
std::string sealed(const std::string& name, const std::string& content)
{
    TextSink sink;
    const auto writer = startEncryption(*testedKey(), Aes256)->begin(sink, {}, detailsOf(name, content));
    writer->write(bytesOf(content));
    writer->finish();
    return sink.text;
}

std::string packed(const Files& files)
{
    TextSink sink;
    sink.text = "MZ";
    const auto session = startEncryption(*testedKey(), Aes256);
    PackageWriter writer(sink, sink.text.size(), *session, {});
    for (const auto& [name, content] : files)
        writer.add(detailsOf(name, content), [&](ContainerWriter& to) { to.write(bytesOf(content)); });
    writer.finish({});
    return sink.text;
}

} // namespace Faults
