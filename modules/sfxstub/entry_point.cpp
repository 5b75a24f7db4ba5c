#include "sfxstub/quiet_run.h"
#include "sfxstub/stub_dialog.h"
#include "sfxstub/system_libraries.h"
#include "vaultcore/crypto_library.h"

#include <optional>
#include <string_view>

namespace SfxStub
{
namespace
{

constexpr std::wstring_view FolderArgument = L"/folder:";
constexpr std::wstring_view KeyFileArgument = L"/keyfile:";

/// `/stdin /folder:FOLDER` or `/keyfile:FILE /folder:FOLDER`. Nothing for any other command line.
std::optional<QuietOrder> orderOf(int count, wchar_t** arguments)
{
    QuietOrder order;
    bool fromInput = false;
    for (int index = 1; index < count; ++index)
    {
        const std::wstring_view argument = arguments[index];
        if (argument == L"/stdin")
            fromInput = true;
        else if (argument.starts_with(FolderArgument))
            order.folder = argument.substr(FolderArgument.size());
        else if (argument.starts_with(KeyFileArgument))
            order.keyFile = argument.substr(KeyFileArgument.size());
        else
            return std::nullopt;
    }
    if (order.folder.empty() || fromInput != order.keyFile.empty())
        return std::nullopt;
    return order;
}

} // namespace
} // namespace SfxStub

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int)
{
    using namespace SfxStub;
    keepForeignLibrariesOut();
    if (!VaultCore::prepareCryptoLibrary())
        return ExitFailed;
    if (__argc <= 1)
        return showDialog(instance);
    const auto order = orderOf(__argc, __wargv);
    return order ? runQuietly(*order) : ExitBadArguments;
}
