#include "vaultcore/keymaker/key_maker.h"

#include "vaultcore/container/key_file.h"
#include "vaultcore/container/new_key.h"
#include "vaultcore/container/small_file.h"
#include "vaultcore/file_failure.h"

namespace VaultCore
{
namespace
{

constexpr const wchar_t* Usage = L"make_key symmetric FILE.zelkey\n"
                                 L"make_key rsa PUBLIC.zelkey PRIVATE.zelkey PAIR.zelkey\n"
                                 L"Makes new keys and writes them to files that do not exist yet.\n";

/// Writes a key file, and a line about it to `message`.
bool write(const std::wstring& path, const KeyMaterial& key, std::wstring& message)
try
{
    writeSecretFile(path, encodeKeyFile(key).bytes());
    message += L"Written: " + path + L"\n";
    return true;
}
catch (const FileFailure& failure)
{
    const bool taken = failure.cause() == FailureCause::NameTaken;
    message += L"Cannot write " + path + L": " + (taken ? L"There is such a file already." : failure.text()) + L"\n";
    return false;
}

int makePair(const std::vector<std::wstring>& arguments, std::wstring& message, std::size_t modulusSize)
{
    const KeyMaterial pair = newRsaPair(modulusSize);
    // The pair first: when a later file cannot be written, the key is still of use.
    const bool written = write(arguments[3], pair, message) &&
                         write(arguments[2], halfOf(pair, KeyTypePrivateRsa), message) &&
                         write(arguments[1], halfOf(pair, KeyTypePublicRsa), message);
    return written ? 0 : 1;
}

} // namespace

int makeKeys(const std::vector<std::wstring>& arguments, std::wstring& message, std::size_t modulusSize)
{
    if (arguments.size() == 2 && arguments[0] == L"symmetric")
        return write(arguments[1], newSymmetricKey(), message) ? 0 : 1;
    if (arguments.size() == 4 && arguments[0] == L"rsa")
        return makePair(arguments, message, modulusSize);
    message = Usage;
    return 2;
}

} // namespace VaultCore
