#include "vaultcore/container/slot.h"

#include "vaultcore/container/crypto.h"
#include "vaultcore/container/failure.h"
#include "vaultcore/container/rsa.h"

#include <new>

namespace VaultCore
{
namespace
{

[[noreturn]] void throwUnfit(const std::wstring& message)
{
    throw ContainerFailure{ContainerFault::WrongKey, message};
}

SlotKind kindFor(const KeyMaterial& key)
{
    switch (key.type)
    {
    case Key::TypePassword:
        return SlotKind::Password;
    case KeyTypeSymmetric:
        return SlotKind::Symmetric;
    default:
        return SlotKind::Rsa;
    }
}

std::array<std::uint8_t, 16> checkOf(const SecureBytes& slotKey)
{
    const SecureBytes full = expandKey(slotKey.bytes(), "vaultcore check", {}, 16);
    std::array<std::uint8_t, 16> check{};
    std::copy(full.bytes().begin(), full.bytes().end(), check.begin());
    return check;
}

std::array<std::uint8_t, 16> markOf(const RsaNumbers& rsa, ByteView salt)
{
    Bytes numbers(rsa.modulus.size() + 4);
    ByteWriter writer(numbers);
    writer.put(rsa.modulus);
    writer.u32(rsa.exponent);
    const Digest digest = hmacSha256(salt, numbers);
    std::array<std::uint8_t, 16> mark{};
    std::copy_n(digest.begin(), mark.size(), mark.begin());
    return mark;
}

SecureBytes derivePassword(const KeyMaterial& key, const Slot& slot)
try
{
    return deriveFromPassword(key.secret.bytes(), slot.salt, slot.argon2);
}
catch (const std::bad_alloc&)
{
    throwAbsurd(L"There is not enough memory to derive the key from the password.");
}

SecureBytes deriveSymmetric(const KeyMaterial& key, const Slot& slot)
{
    Digest digest = hmacSha256(slot.salt, key.secret.bytes());
    SecureBytes slotKey(digest);
    wipe(digest);
    return slotKey;
}

/// A slot key under the public key of a pair. The mark has told already that it is the right pair.
SecureBytes openRsa(const KeyMaterial& key, const Slot& slot)
{
    std::optional<SecureBytes> slotKey = openWithRsa(key.rsa, slot.sealedSlotKey);
    if (!slotKey || slotKey->size() != DerivedKeySize)
        throwDamaged();
    return std::move(*slotKey);
}

SecureBytes slotKeyFor(const KeyMaterial& key, const Slot& slot)
{
    switch (slot.kind)
    {
    case SlotKind::Password:
        return derivePassword(key, slot);
    case SlotKind::Symmetric:
        return deriveSymmetric(key, slot);
    case SlotKind::Rsa:
        break;
    }
    return openRsa(key, slot);
}

/// Everything that the slot key depends on, beside the key.
Bytes derivationInput(const Slot& slot)
{
    Bytes input(2 + slot.salt.size() + std::size_t{3} * 4 + slot.sealedSlotKey.size());
    ByteWriter writer(input);
    writer.u16(static_cast<std::uint16_t>(slot.kind));
    writer.put(slot.salt);
    writer.u32(slot.argon2.memoryKiB);
    writer.u32(slot.argon2.passes);
    writer.u32(slot.argon2.lanes);
    writer.put(slot.sealedSlotKey);
    return input;
}

CipherHandle wrapCipher(const Slot& slot, const SecureBytes& slotKey)
{
    CipherHandle cipher = openCipher(GCRY_CIPHER_AES256, GCRY_CIPHER_MODE_OCB);
    setCipherKey(cipher, expandKey(slotKey.bytes(), "vaultcore wrap", {}, 32).bytes());
    checkCrypto(gcry_cipher_setiv(cipher.get(), slot.nonce.data(), slot.nonce.size()));
    checkCrypto(gcry_cipher_final(cipher.get()));
    return cipher;
}

SecureBytes unwrapFileKey(const Slot& slot, const SecureBytes& slotKey)
{
    const CipherHandle cipher = wrapCipher(slot, slotKey);
    SecureBytes fileKey(slot.wrappedFileKey);
    checkCrypto(gcry_cipher_decrypt(cipher.get(), fileKey.bytes().data(), fileKey.size(), nullptr, 0));
    if (gcry_cipher_checktag(cipher.get(), slot.wrapTag.data(), slot.wrapTag.size()) != 0)
        throwDamaged();
    return fileKey;
}

/// Whether the slot can be for this key at all; found out without any costly work.
bool mayFit(const Slot& slot, const KeyMaterial& key)
{
    if (slot.kind != kindFor(key))
        return false;
    if (slot.kind == SlotKind::Password)
        return !key.secret.empty();
    if (slot.kind == SlotKind::Symmetric)
        return true;
    return slot.sealedSlotKey.size() == key.rsa.modulus.size() && sameSecret(markOf(key.rsa, slot.salt), slot.keyMark);
}

} // namespace

SlotStart startSlot(const Key& key, const Argon2Parameters& argon2)
{
    const KeyMaterial& material = key.material();
    if (material.type == KeyTypePrivateRsa)
        throwUnfit(L"A private RSA key cannot encrypt. Use the public key or the key pair.");
    if (material.type == Key::TypePassword && material.secret.empty())
        throwUnfit(L"An empty password cannot encrypt.");
    SlotStart start;
    start.slot.kind = kindFor(material);
    fillRandom(start.slot.salt);
    if (start.slot.kind == SlotKind::Password)
        start.slot.argon2 = argon2;
    if (start.slot.kind == SlotKind::Rsa)
    {
        start.slot.keyMark = markOf(material.rsa, start.slot.salt);
        start.slotKey = SecureBytes(DerivedKeySize);
        fillRandom(start.slotKey.bytes());
        start.slot.sealedSlotKey = sealWithRsa(material.rsa, start.slotKey);
    }
    else
        start.slotKey = slotKeyFor(material, start.slot);
    start.slot.check = checkOf(start.slotKey);
    return start;
}

void wrapFileKey(Slot& slot, const SecureBytes& slotKey, const SecureBytes& fileKey)
{
    fillNonce(slot.nonce);
    const CipherHandle cipher = wrapCipher(slot, slotKey);
    checkCrypto(gcry_cipher_encrypt(cipher.get(), slot.wrappedFileKey.data(), slot.wrappedFileKey.size(),
                                    fileKey.bytes().data(), fileKey.size()));
    checkCrypto(gcry_cipher_gettag(cipher.get(), slot.wrapTag.data(), slot.wrapTag.size()));
}

std::optional<SecureBytes> openSlot(const Slot& slot, const Key& key, DerivationCache& cache)
{
    const KeyMaterial& material = key.material();
    if (!mayFit(slot, material))
        return std::nullopt;
    const SecureBytes& slotKey = cache.remember(key, derivationInput(slot), [&] { return slotKeyFor(material, slot); });
    if (sameSecret(checkOf(slotKey), slot.check))
        return unwrapFileKey(slot, slotKey);
    // The mark said that an RSA key fits, so the rest of its slot was changed.
    if (slot.kind == SlotKind::Rsa)
        throwDamaged();
    return std::nullopt;
}

} // namespace VaultCore
