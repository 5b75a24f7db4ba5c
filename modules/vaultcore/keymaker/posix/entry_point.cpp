#include "vaultcore/keymaker/key_maker.h"

#include "platform/utf8.h"

#include <iostream>

int main(int count, char** values)
{
    std::vector<std::wstring> arguments;
    for (int index = 1; index < count; ++index)
        arguments.push_back(Platform::fromUtf8(values[index]));
    std::wstring message;
    const int code = VaultCore::makeKeys(arguments, message);
    (code == 0 ? std::cout : std::cerr) << Platform::toUtf8(message) << std::flush;
    return code;
}
