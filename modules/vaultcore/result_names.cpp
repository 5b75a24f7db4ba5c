#include "vaultcore/result_names.h"

#include "vaultcore/content_digest.h"

#include <algorithm>
#include <string_view>

namespace VaultCore
{
namespace
{

constexpr std::string_view EncryptedEnding = ".zel";
constexpr std::string_view TemporaryStart = ".~";
constexpr std::string_view TemporaryEnding = ".zel-part";
/// With start, letters and ending this stays below the 255 units that file systems give a name.
constexpr std::size_t LongestTold = 200;
constexpr std::size_t DigestLetters = 32;

NativeText native(std::string_view text)
{
    return NativeText(text.begin(), text.end());
}

bool isSmallLetter(NativeText::value_type unit)
{
    return unit >= 'a' && unit <= 'z';
}

NativeText::value_type lowered(NativeText::value_type unit)
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<NativeText::value_type>(unit - 'A' + 'a') : unit;
}

} // namespace

NativeText encryptedName(const NativeText& name)
{
    return name + native(EncryptedEnding);
}

bool isEncryptedName(const NativeText& name)
{
    if (name.size() <= EncryptedEnding.size())
        return false;
    const auto begin = name.end() - static_cast<std::ptrdiff_t>(EncryptedEnding.size());
    return std::equal(begin, name.end(), EncryptedEnding.begin(),
                      [](auto unit, char letter) { return lowered(unit) == letter; });
}

NativeText plainName(const NativeText& encrypted)
{
    if (isEncryptedName(encrypted))
        return encrypted.substr(0, encrypted.size() - EncryptedEnding.size());
    return encrypted + native(".decrypted");
}

NativeText temporaryStem(const NativeText& source)
{
    if (source.size() <= LongestTold)
        return native(TemporaryStart) + source;
    ContentDigest digest;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(source.data());
    digest.add({bytes, source.size() * sizeof(NativeText::value_type)});
    return native(TemporaryStart) + native(hexOf(digest.finish()).substr(0, DigestLetters));
}

NativeText temporaryName(const NativeText& stem, const std::string& letters)
{
    return stem + native(".") + native(letters) + native(TemporaryEnding);
}

NativeText stemOf(const NativeText& name)
{
    const std::size_t tail = 1 + TemporaryLetters + TemporaryEnding.size();
    if (name.size() <= TemporaryStart.size() + tail || !name.starts_with(native(TemporaryStart)) ||
        !name.ends_with(native(TemporaryEnding)))
        return {};
    const std::size_t dot = name.size() - tail;
    const auto letters = name.begin() + static_cast<std::ptrdiff_t>(dot + 1);
    const bool ours = name[dot] == '.' && std::all_of(letters, letters + TemporaryLetters, isSmallLetter);
    return ours ? name.substr(0, dot) : NativeText();
}

} // namespace VaultCore
