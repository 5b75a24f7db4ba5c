#include "crashing_modules/crash_here.h"
#include "interfaces/release_ptr.h"
#include "zelplatform/files.h"
#include "zelplatform/module_factory.h"

// The module of the job files; it crashes on the first thread, while a job file is read.

namespace
{

using namespace ZelPlatform;

class CrashingStore final : public IJobDocumentStore
{
public:
    explicit CrashingStore(IJobDocumentStore* store) : store_(store) {}
    void Release() override { delete this; }
    void notCalled1() override { store_->notCalled1(); }
    IJobRunnerDocument* LoadJobDocument(const wchar_t* path) override
    {
        CrashingModules::crashIfWanted("first");
        return store_->LoadJobDocument(path);
    }
    void SaveSfxComment(const wchar_t* comment) override { store_->SaveSfxComment(comment); }

private:
    const ReleasePtr<IJobDocumentStore> store_;
};

class CrashingFactory final : public IFactory
{
public:
    explicit CrashingFactory(IFactory* factory) : factory_(factory) {}
    void Release() override { delete this; }
    void notCalled1() override { factory_->notCalled1(); }
    IJobDocumentStore* CreateJobDocumentStore() override
    {
        return new CrashingStore(factory_->CreateJobDocumentStore());
    }

private:
    const ReleasePtr<IFactory> factory_;
};

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED bool initialize(const wchar_t* engineFolder)
{
    return engineFolder != nullptr;
}

EXPORTED IFactory* createFactory()
{
    return new CrashingFactory(createModuleFactory(SfxComment(userCommentFile())));
}

EXPORTED void uninitialize() {}
