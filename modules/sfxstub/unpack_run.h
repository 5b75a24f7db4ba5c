#pragma once

#include "vaultcore/container/key.h"
#include "vaultcore/package/package_reader.h"

#include <cstdint>
#include <string>

namespace SfxStub
{

enum class FailureAnswer
{
    Repeat,
    Skip,
    Stop,
};

/// Who is asked and told while a package is unpacked. On the thread that unpacks.
class IUser
{
public:
    virtual ~IUser() = default;
    /// Bytes of all files together. False to stop.
    virtual bool progress(std::uint64_t done, std::uint64_t total) = 0;
    /// May the existing file be replaced? With no, the file stays and the one in the package is left out.
    virtual bool mayReplace(const std::wstring& path) = 0;
    virtual FailureAnswer failed(const std::wstring& name, const std::wstring& reason) = 0;
};

enum class Outcome
{
    Complete,
    /// One or more files were left out.
    Incomplete,
    Stopped,
    WrongKey,
    /// Nothing was unpacked; `reason` tells why.
    Refused,
};

struct RunResult
{
    Outcome outcome = Outcome::Refused;
    std::wstring reason;
};

/// Unpacks all files of a package below a folder, which is made when it is not there. Files that stand already stay
/// when it is stopped.
RunResult unpackAll(VaultCore::IPackageSource& source, const VaultCore::Key& key, const std::wstring& folder,
                    IUser& user);

} // namespace SfxStub
