#include "engine/faulty_file_system.h"

#include <new>

namespace Faults
{

using namespace VaultCore;

class FaultyFileSystem::WipeFile final : public IWipeFile
{
public:
    WipeFile(FaultyFileSystem& owner, std::unique_ptr<IWipeFile> real) : owner_(owner), real_(std::move(real)) {}
    FileInfo info() override
    {
        owner_.step("wipe: info");
        return real_->info();
    }
    std::vector<Extent> extents() override
    {
        owner_.step("wipe: extents");
        return real_->extents();
    }
    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override
    {
        owner_.step("wipe: write");
        real_->write(offset, bytes);
    }
    void flush() override
    {
        owner_.step("wipe: flush");
        real_->flush();
    }
    void truncate() override
    {
        owner_.step("wipe: truncate");
        real_->truncate();
    }
    void rename(const NativeText& name) override
    {
        owner_.step("wipe: rename");
        real_->rename(name);
    }
    void remove() override
    {
        owner_.step("wipe: remove");
        real_->remove();
    }

private:
    FaultyFileSystem& owner_;
    const std::unique_ptr<IWipeFile> real_;
};

class FaultyFileSystem::ReadFile final : public IReadFile
{
public:
    ReadFile(FaultyFileSystem& owner, std::unique_ptr<IReadFile> real) : owner_(owner), real_(std::move(real)) {}
    FileInfo info() override
    {
        owner_.step("read: info");
        return real_->info();
    }
    std::size_t read(std::span<std::uint8_t> bytes) override
    {
        owner_.step("read: read");
        return real_->read(bytes);
    }
    void seek(std::uint64_t offset) override
    {
        owner_.step("read: seek");
        real_->seek(offset);
    }
    void forgetMemory() override { real_->forgetMemory(); }

private:
    FaultyFileSystem& owner_;
    const std::unique_ptr<IReadFile> real_;
};

class FaultyFileSystem::NewFile final : public INewFile
{
public:
    NewFile(FaultyFileSystem& owner, std::unique_ptr<INewFile> real) : owner_(owner), real_(std::move(real)) {}
    void write(std::span<const std::uint8_t> bytes) override
    {
        owner_.step("new: write");
        real_->write(bytes);
    }
    void cutTo(std::uint64_t size) override
    {
        owner_.step("new: cut");
        real_->cutTo(size);
    }
    void takeOver(const FileInfo& like) override
    {
        owner_.step("new: take over");
        real_->takeOver(like);
    }
    FileInfo publish(const NativeText& name) override
    {
        owner_.step("new: publish");
        return real_->publish(name);
    }
    FileInfo rename(const NativeText& name) override
    {
        owner_.step("new: rename");
        return real_->rename(name);
    }
    INewFile* real() const { return real_.get(); }

private:
    FaultyFileSystem& owner_;
    const std::unique_ptr<INewFile> real_;
};

std::vector<std::string> FaultyFileSystem::operations() const
{
    const std::lock_guard lock(mutex_);
    return operations_;
}

void FaultyFileSystem::step(const char* operation)
{
    const std::lock_guard lock(mutex_);
    operations_.emplace_back(operation);
    const auto number = static_cast<long>(operations_.size());
    if (fault_.step == 0 || number < fault_.step || (number > fault_.step && !fault_.fromThereOn))
        return;
    if (!fault_.cause)
        throw std::bad_alloc();
    throw FileFailure(*fault_.cause, 0);
}

FileInfo FaultyFileSystem::inspect(const Place& place)
{
    step("inspect");
    return real_.inspect(place);
}

FileIdentity FaultyFileSystem::inspectParent(const Place& place)
{
    step("inspect parent");
    return real_.inspectParent(place);
}

std::vector<NativeText> FaultyFileSystem::list(const Place& folder)
{
    step("list");
    return real_.list(folder);
}

std::unique_ptr<IWipeFile> FaultyFileSystem::openForWipe(const Place& place)
{
    step("open for wipe");
    return std::make_unique<WipeFile>(*this, real_.openForWipe(place));
}

void FaultyFileSystem::renameFolder(const Place& folder, const NativeText& name)
{
    step("rename folder");
    real_.renameFolder(folder, name);
}

void FaultyFileSystem::remove(const Place& place, FileKind kind)
{
    step("remove");
    real_.remove(place, kind);
}

void FaultyFileSystem::removeUnchanged(const Place& place, const FileInfo& expected)
{
    step("remove unchanged");
    real_.removeUnchanged(place, expected);
}

std::unique_ptr<IReadFile> FaultyFileSystem::openForReading(const Place& place)
{
    step("open for reading");
    return std::make_unique<ReadFile>(*this, real_.openForReading(place));
}

std::unique_ptr<INewFile> FaultyFileSystem::createNew(const Place& place)
{
    step("create");
    return std::make_unique<NewFile>(*this, real_.createNew(place));
}

void FaultyFileSystem::flush(const std::vector<INewFile*>& files)
{
    step("flush");
    std::vector<INewFile*> real;
    for (INewFile* file : files)
        real.push_back(static_cast<NewFile*>(file)->real());
    real_.flush(real);
}

void FaultyFileSystem::createFolder(const Place& place)
{
    step("create folder");
    real_.createFolder(place);
}

bool FaultyFileSystem::removeAbandoned(const Place& place)
{
    step("remove abandoned");
    return real_.removeAbandoned(place);
}

} // namespace Faults
