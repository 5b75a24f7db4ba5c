#include "vaultcore/keymaker/key_maker.h"

#include "platform/utf8.h"

#include <iostream>

extern "C" int wmain(int count, wchar_t** values)
{
    const std::vector<std::wstring> arguments(values + (count > 0 ? 1 : 0), values + count);
    std::wstring message;
    const int code = VaultCore::makeKeys(arguments, message);
    (code == 0 ? std::cout : std::cerr) << Platform::toUtf8(message) << std::flush;
    return code;
}
