// Encrypts or decrypts with the engine alone, without the process around it: the same calls with the same values, and
// events that do nothing. It loads the module beside which it finds itself, in the folder "timed".
//
//   engine_benchmark encrypt|decrypt PATH PASSWORD

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/exception.h"
#include "interfaces/vaultcore/factory.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "scenarios/own_path.h"

#include <cstdio>
#include <filesystem>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Benchmarks
{

namespace
{

using namespace VaultCore;

/// What the program starts with as well.
constexpr std::uint32_t Aes256 = 3;

template <class Function> Function* exportOf(Platform::ModuleHandle module, const char* name)
{
    void* const found = Platform::nativeSystem().modules.findExport(module, name);
    if (found == nullptr)
        throw std::runtime_error("the engine's module is not whole");
    return reinterpret_cast<Function*>(found);
}

class Engine
{
public:
    Engine()
    {
        Platform::Modules& modules = Platform::nativeSystem().modules;
        const auto file = EndToEnd::ownPath().parent_path() / "timed" / modules.moduleFileName(L"vaultcore");
        module_ = modules.load(file.wstring());
        if (module_ == nullptr || exportOf<int()>(module_, "initialize")() == 0)
            throw std::runtime_error("the engine does not start");
        factory_.reset(exportOf<IFactory*()>(module_, "createFactory")());
    }
    IFactory& factory() { return *factory_; }

private:
    Platform::ModuleHandle module_ = nullptr; // stays loaded until the process ends
    ReleasePtr<IFactory> factory_;
};

/// Goes on whatever comes, gives the password once, and keeps the key. A file that fails ends the benchmark.
class Receiver final : public IFileListBuilderEvents,
                       public IOverallProgressEvents,
                       public IFileProgressEvents,
                       public IFileConflictEvents,
                       public IPasswordProvider
{
public:
    Receiver(IFactory& factory, std::wstring password) : factory_(factory), password_(std::move(password)) {}

    template <class Events> void attach(Events& events)
    {
        events.SetFileListBuilderEvents(this);
        events.SetOverallProgressEvents(this);
        events.SetFileProgressEvents(this);
        events.SetDestinyProgressEvents(this);
        events.SetFileConflictEvents(this);
    }

    /// Returns once the engine has finished; false if a file failed.
    template <class Runner> bool wait(Runner& runner)
    {
        finished_.acquire();
        while (!runner.IsFinished())
            std::this_thread::yield();
        return failed_ == 0 && done_ > 0;
    }

    void OnFileListBuilt(std::uint32_t, std::uint64_t) override {}
    int OnFileListEntry(std::uint32_t, std::uint32_t, std::uint32_t) override { return 1; }
    void OnOperationStarted() override {}
    void OnFileStarted(const wchar_t*) override {}
    void OnFileFinished(const void*, const wchar_t*, std::uint32_t error) override { ++(error == 0 ? done_ : failed_); }
    void OnOperationFinished() override { finished_.release(); }
    int OnFileProgress(std::uint64_t, std::uint64_t) override { return 1; }
    int OnFileConflict(std::uint32_t, std::uint32_t) override { return 1; }
    int OnFileError(const wchar_t* source, const wchar_t*, const wchar_t* message) override
    {
        std::fprintf(stderr, "benchmark: %ls: %ls\n", source, message);
        return FileErrorAbort;
    }

    int ProvideKey(const wchar_t*, IKey** key) override
    {
        if (asked_)
            return KeyCancelJob;
        asked_ = true;
        *key = factory_.CreatePasswordKey(password_.c_str());
        return KeyProvided;
    }
    IKey* GetStoredKey(int index) override { return keys_[static_cast<std::size_t>(index)].get(); }
    int GetStoredKeyCount() override { return static_cast<int>(keys_.size()); }
    bool AddStoredKey(IKey* key) override
    {
        keys_.emplace_back(key);
        return true;
    }

private:
    IFactory& factory_;
    const std::wstring password_;
    bool asked_ = false;
    std::vector<ReleasePtr<IKey>> keys_;
    int done_ = 0;
    int failed_ = 0;
    std::binary_semaphore finished_{0};
};

bool encrypt(IFactory& factory, IFileList& files, const std::wstring& password)
{
    const ReleasePtr<IEncryptor> encryptor(factory.CreateEncryptor());
    const ReleasePtr<IOperationEvents> events(factory.CreateOperationEvents());
    const ReleasePtr<IEncryptionOptions> options(factory.CreateEncryptionOptions());
    const ReleasePtr<IKey> key(factory.CreatePasswordKey(password.c_str()));
    options->SetKey(key.get());
    options->SetAlgorithm(Aes256);
    options->SetDestiny(DestinyKeep);
    options->SetRiddle(L"");
    options->SetExtraText(L"");
    Receiver receiver(factory, password);
    receiver.attach(*events);
    encryptor->Start(&files, options.get(), events.get());
    return receiver.wait(*encryptor);
}

bool decrypt(IFactory& factory, IFileList& files, const std::wstring& password)
{
    const ReleasePtr<IDecryptor> decryptor(factory.CreateDecryptor());
    const ReleasePtr<IDecryptionEvents> events(factory.CreateDecryptionEvents());
    const ReleasePtr<IDecryptionOptions> options(factory.CreateDecryptionOptions());
    options->SetMode(0);
    options->SetPath(L"");
    Receiver receiver(factory, password);
    receiver.attach(*events);
    events->SetPasswordProvider(&receiver);
    decryptor->Start(&files, options.get(), events.get());
    return receiver.wait(*decryptor);
}

int run(const std::string& kind, const std::filesystem::path& path, const std::filesystem::path& password)
{
    Engine engine;
    const ReleasePtr<IFileList> files(engine.factory().CreateFileList());
    files->Add(path.wstring().c_str());
    const auto work = kind == "encrypt" ? encrypt : decrypt;
    if (work(engine.factory(), *files, password.wstring()))
        return 0;
    std::fprintf(stderr, "benchmark: the engine did not %s every file\n", kind.c_str());
    return 1;
}

} // namespace

} // namespace Benchmarks

int main(int count, char** arguments)
{
    try
    {
        if (count == 4)
            return Benchmarks::run(arguments[1], arguments[2], arguments[3]);
        std::fprintf(stderr, "Usage: engine_benchmark encrypt|decrypt PATH PASSWORD\n");
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "benchmark: %s\n", failure.what());
    }
    return 1;
}
