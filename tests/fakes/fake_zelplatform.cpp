#include "fakes/fake_documents.h"

namespace Fakes
{

namespace
{

FakeZelPlatform* current = nullptr;

class FakeDocumentStore final : public ZelPlatform::IJobDocumentStore
{
public:
    explicit FakeDocumentStore(FakeZelPlatform& module) : module_(module) {}
    virtual ~FakeDocumentStore() = default;

    void Release() override
    {
        module_.log().add(L"store.Release");
        delete this;
    }

    ZelPlatform::IJobRunnerDocument* LoadJobDocument(const wchar_t* path) override
    {
        module_.log().add(std::wstring(L"store.LoadJobDocument(") + path + L")");
        const auto found = module_.documents.find(path);
        return found == module_.documents.end() ? nullptr : new FakeDocument(module_.log(), found->second);
    }

    void notCalled1() override { module_.log().add(L"store.notCalled1"); }

    void SaveSfxComment(const wchar_t* comment) override
    {
        module_.log().add(std::wstring(L"store.SaveSfxComment(") + comment + L")");
    }

private:
    FakeZelPlatform& module_;
};

class FakeZelPlatformFactory final : public ZelPlatform::IFactory
{
public:
    explicit FakeZelPlatformFactory(FakeZelPlatform& module) : module_(module) {}
    virtual ~FakeZelPlatformFactory() = default;

    void Release() override
    {
        module_.log().add(L"zelplatform.Release");
        delete this;
    }

    void notCalled1() override { module_.log().add(L"zelplatform.notCalled1"); }

    ZelPlatform::IJobDocumentStore* CreateJobDocumentStore() override
    {
        module_.log().add(L"zelplatform.CreateJobDocumentStore");
        return new FakeDocumentStore(module_);
    }

private:
    FakeZelPlatform& module_;
};

} // namespace

FakeZelPlatform::FakeZelPlatform(CallLog& log) : log_(log)
{
    current = this;
}

FakeZelPlatform::~FakeZelPlatform()
{
    current = nullptr;
}

ZelPlatform::IFactory* FakeZelPlatform::createFactory()
{
    current->log_.add(L"zelplatform.createFactory");
    return new FakeZelPlatformFactory(*current);
}

} // namespace Fakes
