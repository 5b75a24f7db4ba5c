#pragma once

#include "vaultcore/package/package_reader.h"
#include "vaultcore/win32/win32_files.h"

#include <string>

namespace SfxStub
{

/// Path of this program.
std::wstring ownPath();

/// This program as a package. Only read, never written.
class OwnPackage final : public VaultCore::IPackageSource
{
public:
    /// Throws `VaultCore::FileFailure`.
    OwnPackage();
    std::uint64_t size() override { return size_; }
    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> bytes) override;

private:
    VaultCore::FileHandle file_;
    std::uint64_t size_;
};

} // namespace SfxStub
