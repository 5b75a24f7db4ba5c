#include "sfxstub/unpack_run.h"

#include "platform/utf8.h"
#include "vaultcore/file_failure.h"
#include "vaultcore/package/package_unpacking.h"

#include <filesystem>
#include <new>

namespace SfxStub
{

using namespace VaultCore;

namespace
{

/// The user wants no more.
struct Stop
{
};

class Run
{
public:
    Run(IFileSystem& files, PackageReader& package, const Place& folder, IUser& user)
        : package_(package), user_(user), unpacking_(files, package, folder, 0)
    {
        for (const PackageEntry& entry : package.entries())
            total_ += entry.contentSize;
    }

    Outcome all()
    {
        try
        {
            for (std::size_t index = 0; index < package_.entries().size(); ++index)
            {
                complete_ = one(index) && complete_;
                before_ += package_.entries()[index].contentSize;
                report(0);
            }
        }
        catch (const Stop&)
        {
            return Outcome::Stopped;
        }
        return complete_ ? Outcome::Complete : Outcome::Incomplete;
    }

private:
    bool one(std::size_t index)
    {
        for (;;)
        {
            declined_ = false;
            const std::optional<std::wstring> reason = attempt(index);
            if (!reason || declined_)
                return !reason;
            const std::wstring name = Platform::fromUtf8(package_.entries()[index].name);
            const FailureAnswer answer = user_.failed(name, *reason);
            if (answer == FailureAnswer::Stop)
                throw Stop();
            if (answer == FailureAnswer::Skip)
                return false;
        }
    }

    /// Why it failed, or nothing.
    std::optional<std::wstring> attempt(std::size_t index)
    {
        try
        {
            unpacking_.unpack(
                index, [this](std::uint64_t done) { report(done); },
                [this](const std::wstring& path)
                {
                    declined_ = !user_.mayReplace(path);
                    return !declined_;
                });
            return std::nullopt;
        }
        catch (const FileFailure& failure)
        {
            return failure.text();
        }
        catch (const ContainerFailure& failure)
        {
            return failure.message;
        }
    }

    void report(std::uint64_t done)
    {
        if (!user_.progress(before_ + done, total_))
            throw Stop();
    }

    PackageReader& package_;
    IUser& user_;
    PackageUnpacking unpacking_;
    std::uint64_t before_ = 0;
    std::uint64_t total_ = 0;
    bool complete_ = true;
    bool declined_ = false;
};

Outcome unpackOrThrow(IPackageSource& source, const Key& key, const std::wstring& folder, IUser& user)
{
    const auto derivations = createDerivationCache();
    PackageReader package(source);
    if (!package.unlock(key, *derivations))
        return Outcome::WrongKey;
    const auto files = createFileSystem();
    const Place place = files->locateFolder(folder);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!std::filesystem::is_directory(folder, error))
        throw FileFailure(FailureCause::Content, 0, L"The folder cannot be made.");
    return Run(*files, package, place, user).all();
}

} // namespace

RunResult unpackAll(IPackageSource& source, const Key& key, const std::wstring& folder, IUser& user)
{
    try
    {
        return {unpackOrThrow(source, key, folder, user), L""};
    }
    catch (const FileFailure& failure)
    {
        return {Outcome::Refused, failure.text()};
    }
    catch (const ContainerFailure& failure)
    {
        if (failure.fault == ContainerFault::WrongKey)
            return {Outcome::WrongKey, failure.message};
        return {Outcome::Refused, failure.message};
    }
    catch (const std::bad_alloc&)
    {
        return {Outcome::Refused, L"There is not enough memory."};
    }
}

} // namespace SfxStub
