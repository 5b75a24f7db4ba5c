#include "zelplatform/module_factory.h"

#include "zelplatform/document.h"
#include "zelplatform/files.h"
#include "zelplatform/job_file.h"

#include <exception>
#include <utility>

namespace ZelPlatform
{
namespace
{

IJobRunnerDocument* loadDocument(const std::wstring& path, const SfxComment& userComment)
{
    const auto text = readFile(path, MaximumJobFileBytes);
    if (!text)
        return nullptr;
    auto job = parseJobFile(*text);
    return job ? createDocument(std::move(*job), userComment) : nullptr;
}

class Store final : public IJobDocumentStore
{
public:
    explicit Store(SfxComment userComment) : userComment_(std::move(userComment)) {}

    void Release() override { delete this; }
    void notCalled1() override {}

    // Out of memory is one more reason for null or for silence: neither operation has a way to tell more.
    IJobRunnerDocument* LoadJobDocument(const wchar_t* path) override
    try
    {
        return path ? loadDocument(path, userComment_) : nullptr;
    }
    catch (const std::exception&)
    {
        return nullptr;
    }

    void SaveSfxComment(const wchar_t* comment) override
    try
    {
        userComment_.save(comment);
    }
    catch (const std::exception&)
    {
        return;
    }

private:
    SfxComment userComment_;
};

class Factory final : public IFactory
{
public:
    explicit Factory(SfxComment userComment) : userComment_(std::move(userComment)) {}

    void Release() override { delete this; }
    void notCalled1() override {}
    IJobDocumentStore* CreateJobDocumentStore() override { return new Store(userComment_); }

private:
    SfxComment userComment_;
};

} // namespace

IFactory* createModuleFactory(SfxComment userComment)
{
    return new Factory(std::move(userComment));
}

} // namespace ZelPlatform
