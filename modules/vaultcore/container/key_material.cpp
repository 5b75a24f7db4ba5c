#include "vaultcore/container/key_material.h"

#include "platform/utf8.h"

namespace VaultCore
{
namespace
{

class MaterialKey final : public Key
{
public:
    explicit MaterialKey(KeyMaterial material) : material_(std::move(material)) {}
    int GetKeyType() override { return material_.type; }
    std::unique_ptr<Key> clone() const override { return std::make_unique<MaterialKey>(material_.copy()); }
    const KeyMaterial& material() const override { return material_; }

private:
    KeyMaterial material_;
};

/// Units of the character at `index`: a surrogate pair is converted as one.
std::size_t unitsAt(const std::wstring& text, std::size_t index)
{
    const bool high = text[index] >= 0xD800 && text[index] <= 0xDBFF;
    return sizeof(wchar_t) == 2 && high && index + 1 < text.size() ? 2 : 1;
}

} // namespace

RsaNumbers RsaNumbers::copy() const
{
    return {modulus, exponent, privateExponent.copy(), prime1.copy(), prime2.copy()};
}

KeyMaterial KeyMaterial::copy() const
{
    return {type, secret.copy(), rsa.copy()};
}

std::unique_ptr<Key> createKey(KeyMaterial material)
{
    return std::make_unique<MaterialKey>(std::move(material));
}

std::unique_ptr<Key> createPasswordKey(const std::wstring& password)
{
    // Character by character, so that no text of the whole password is left behind in memory.
    constexpr std::size_t LongestCharacter = 4;
    SecureBytes room(password.size() * LongestCharacter);
    ByteWriter writer(room.bytes());
    for (std::size_t index = 0; index < password.size();)
    {
        const std::size_t units = unitsAt(password, index);
        writer.put(viewOf(Platform::toUtf8(std::wstring_view(password).substr(index, units))));
        index += units;
    }
    KeyMaterial material;
    material.secret = SecureBytes(room.bytes().first(room.size() - writer.left()));
    return createKey(std::move(material));
}

} // namespace VaultCore
