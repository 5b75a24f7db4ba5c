#include "sfxstub/own_package.h"

namespace SfxStub
{
namespace
{

HANDLE openOwn()
{
    return CreateFileW(VaultCore::extended(ownPath()).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
}

} // namespace

std::wstring ownPath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

OwnPackage::OwnPackage() : file_(openOwn())
{
    LARGE_INTEGER size = {};
    VaultCore::checked(file_.get() != INVALID_HANDLE_VALUE && GetFileSizeEx(file_.get(), &size));
    size_ = static_cast<std::uint64_t>(size.QuadPart);
}

std::size_t OwnPackage::read(std::uint64_t offset, std::span<std::uint8_t> bytes)
{
    LARGE_INTEGER position = {};
    position.QuadPart = static_cast<LONGLONG>(offset);
    VaultCore::checked(SetFilePointerEx(file_.get(), position, nullptr, FILE_BEGIN));
    std::size_t total = 0;
    while (total < bytes.size())
    {
        DWORD count = 0;
        const auto room = static_cast<DWORD>(bytes.size() - total);
        VaultCore::checked(ReadFile(file_.get(), bytes.data() + total, room, &count, nullptr));
        if (count == 0)
            break;
        total += count;
    }
    return total;
}

} // namespace SfxStub
