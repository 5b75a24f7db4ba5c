#include "sfxstub/quiet_run.h"

#include "interfaces/vaultcore/exception.h"
#include "platform/utf8.h"
#include "sfxstub/own_package.h"
#include "sfxstub/unpack_run.h"
#include "vaultcore/file_failure.h"

namespace SfxStub
{
namespace
{

constexpr std::size_t LongestPassword = 4096;

void tell(const std::wstring& text)
{
    const std::string line = Platform::toUtf8(text) + "\r\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

std::unique_ptr<VaultCore::Key> keyFromInput()
{
    std::string line;
    line.reserve(LongestPassword); // no copies of it are left behind by growing
    char letter = 0;
    DWORD count = 0;
    while (line.size() < LongestPassword && ReadFile(GetStdHandle(STD_INPUT_HANDLE), &letter, 1, &count, nullptr) &&
           count == 1 && letter != '\n')
        line.push_back(letter);
    if (line.ends_with('\r'))
        line.pop_back();
    std::wstring password = Platform::fromUtf8(line);
    auto key = VaultCore::createPasswordKey(password);
    SecureZeroMemory(line.data(), line.size());
    SecureZeroMemory(password.data(), password.size() * sizeof(wchar_t));
    return key;
}

class SilentUser final : public IUser
{
public:
    bool progress(std::uint64_t, std::uint64_t) override { return true; }
    bool mayReplace(const std::wstring& path) override
    {
        tell(path + L": exists already and is not replaced.");
        return false;
    }
    FailureAnswer failed(const std::wstring& name, const std::wstring& reason) override
    {
        tell(name + L": " + reason);
        return FailureAnswer::Skip;
    }
};

int unpack(const QuietOrder& order)
{
    OwnPackage package;
    const auto key = order.keyFile.empty() ? keyFromInput() : VaultCore::loadKeyFile(order.keyFile);
    SilentUser user;
    const RunResult result = unpackAll(package, *key, order.folder, user);
    if (result.outcome == Outcome::Complete)
        return ExitComplete;
    if (result.outcome == Outcome::WrongKey)
        tell(L"The password or key file does not fit.");
    else if (!result.reason.empty())
        tell(result.reason);
    return result.outcome == Outcome::WrongKey ? ExitWrongKey : ExitFailed;
}

} // namespace

int runQuietly(const QuietOrder& order)
{
    try
    {
        return unpack(order);
    }
    catch (const VaultCore::FileFailure& failure)
    {
        tell(failure.text());
    }
    catch (const VaultCore::Exception& failure)
    {
        tell(failure.GetText());
    }
    return ExitFailed;
}

} // namespace SfxStub
