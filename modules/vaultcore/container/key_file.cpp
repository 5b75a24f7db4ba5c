#include "vaultcore/container/key_file.h"

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/rsa.h"
#include "vaultcore/container/small_file.h"
#include "vaultcore/file_failure.h"

#include "interfaces/vaultcore/exception.h"

namespace VaultCore
{
namespace
{

constexpr std::array<std::uint8_t, 8> Magic{0x89, 'Z', 'K', 'Y', '\r', '\n', 0x1A, '\n'};
constexpr std::uint16_t Version = 1;
constexpr std::size_t HeaderSize = Magic.size() + 2 + 2 + 4;
constexpr std::size_t ChecksumSize = DigestSize;

[[noreturn]] void refuse(const std::wstring& message)
{
    throw Exception(message);
}

std::size_t payloadSize(const KeyMaterial& key)
{
    if (key.type == KeyTypeSymmetric)
        return key.secret.size();
    const std::size_t publicSize = 2 + 4 + key.rsa.modulus.size();
    return key.type == KeyTypePublicRsa ? publicSize : publicSize + 2 * key.rsa.modulus.size();
}

void encodePayload(const KeyMaterial& key, ByteWriter& writer)
{
    if (key.type == KeyTypeSymmetric)
    {
        writer.put(key.secret.bytes());
        return;
    }
    writer.u16(static_cast<std::uint16_t>(key.rsa.modulus.size()));
    writer.u32(key.rsa.exponent);
    writer.put(key.rsa.modulus);
    if (key.type == KeyTypePublicRsa)
        return;
    writer.put(key.rsa.privateExponent.bytes());
    writer.put(key.rsa.prime1.bytes());
    writer.put(key.rsa.prime2.bytes());
}

RsaNumbers decodeRsa(int type, ByteReader& reader)
{
    RsaNumbers rsa;
    const std::size_t size = reader.u16();
    rsa.exponent = reader.u32();
    const ByteView modulus = reader.take(size);
    rsa.modulus.assign(modulus.begin(), modulus.end());
    if (type == KeyTypePublicRsa)
        return rsa;
    rsa.privateExponent = SecureBytes(reader.take(size));
    rsa.prime1 = SecureBytes(reader.take(size / 2));
    rsa.prime2 = SecureBytes(reader.take(size / 2));
    return rsa;
}

KeyMaterial decodePayload(int type, ByteReader reader)
{
    KeyMaterial key;
    key.type = type;
    if (type == KeyTypeSymmetric)
        key.secret = SecureBytes(reader.take(SymmetricKeySize));
    else
        key.rsa = decodeRsa(type, reader);
    if (!reader.ok() || reader.left() != 0)
        refuse(L"The key file is damaged.");
    if (type != KeyTypeSymmetric && !isSoundRsaKey(key.rsa))
        refuse(L"The RSA key in the key file cannot be used. Only sound keys of 3072 or 4096 bits can.");
    return key;
}

void checkMagic(ByteView bytes)
{
    if (bytes.empty())
        refuse(L"The key file is empty.");
    const std::size_t size = std::min(bytes.size(), Magic.size());
    if (!std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size), Magic.begin()))
        refuse(L"The file is no key file.");
    if (bytes.size() < HeaderSize)
        refuse(L"The key file is incomplete.");
}

SmallFile readKeyFile(const std::wstring& path)
try
{
    return readSmallFile(path, LargestKeyFile);
}
catch (const FileFailure& failure)
{
    throw Exception(failure.text());
}

} // namespace

SecureBytes encodeKeyFile(const KeyMaterial& key)
{
    const std::size_t payload = payloadSize(key);
    SecureBytes bytes(HeaderSize + payload + ChecksumSize);
    ByteWriter writer(bytes.bytes());
    writer.put(Magic);
    writer.u16(Version);
    writer.u16(static_cast<std::uint16_t>(key.type));
    writer.u32(static_cast<std::uint32_t>(payload));
    encodePayload(key, writer);
    writer.put(sha256(bytes.bytes().first(HeaderSize + payload)));
    return bytes;
}

KeyMaterial decodeKeyFile(ByteView bytes)
{
    checkMagic(bytes);
    ByteReader reader(bytes.subspan(Magic.size()));
    const std::uint16_t version = reader.u16();
    const std::uint16_t type = reader.u16();
    const std::size_t payload = reader.u32();
    if (version != Version)
        refuse(L"The key file has the version " + std::to_wstring(version) + L", which this engine does not know.");
    if (bytes.size() - HeaderSize < ChecksumSize || payload > bytes.size() - HeaderSize - ChecksumSize)
        refuse(L"The key file is incomplete.");
    const ByteView covered = bytes.first(HeaderSize + payload);
    if (!sameSecret(sha256(covered), bytes.subspan(covered.size())))
        refuse(L"The key file is damaged.");
    if (type < KeyTypeSymmetric || type > KeyTypeRsaPair)
        refuse(L"The key file holds a key of a kind that this engine does not know.");
    return decodePayload(type, ByteReader(covered.subspan(HeaderSize)));
}

std::unique_ptr<Key> loadKeyFile(const std::wstring& path)
{
    const SmallFile file = readKeyFile(path);
    switch (file.kind)
    {
    case SmallFileKind::Folder:
        refuse(L"The key file is a folder.");
    case SmallFileKind::NoPlainFile:
        refuse(L"The file is no key file.");
    case SmallFileKind::TooLarge:
        refuse(L"The file is too large for a key file.");
    case SmallFileKind::Content:
        break;
    }
    return createKey(decodeKeyFile(file.content.bytes()));
}

} // namespace VaultCore
