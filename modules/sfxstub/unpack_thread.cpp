#include "sfxstub/unpack_thread.h"

namespace SfxStub
{
namespace
{

constexpr std::uint64_t Thousand = 1000;

LPARAM pointerTo(const std::wstring& text)
{
    return reinterpret_cast<LPARAM>(text.c_str());
}

} // namespace

UnpackThread::UnpackThread(HWND dialog, VaultCore::IPackageSource& source, std::unique_ptr<VaultCore::Key> key,
                           std::wstring folder)
    : dialog_(dialog), thread_(
                           [this, &source, ownKey = std::move(key), ownFolder = std::move(folder)]
                           {
                               result_ = unpackAll(source, *ownKey, ownFolder, *this);
                               PostMessageW(dialog_, MessageFinished, 0, 0);
                           })
{
}

bool UnpackThread::progress(std::uint64_t done, std::uint64_t total)
{
    const std::uint64_t part = total == 0
                                   ? Thousand
                                   : static_cast<std::uint64_t>(static_cast<double>(done) / static_cast<double>(total) *
                                                                static_cast<double>(Thousand));
    if (part != shown_)
        PostMessageW(dialog_, MessageProgress, static_cast<WPARAM>(part), 0);
    shown_ = part;
    return !stopped_.load();
}

bool UnpackThread::mayReplace(const std::wstring& path)
{
    return SendMessageW(dialog_, MessageMayReplace, 0, pointerTo(path)) != 0;
}

FailureAnswer UnpackThread::failed(const std::wstring& name, const std::wstring& reason)
{
    const auto nameText = static_cast<WPARAM>(pointerTo(name));
    return static_cast<FailureAnswer>(SendMessageW(dialog_, MessageFailed, nameText, pointerTo(reason)));
}

} // namespace SfxStub
