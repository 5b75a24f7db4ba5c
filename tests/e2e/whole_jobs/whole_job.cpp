#include "whole_jobs/whole_job.h"
#include "platform/system_with.h"

#include "jobprocess/program.h"
#include "platform/messages.h"
#include "platform/utf8.h"
#include "vaultcore/keymaker/key_maker.h"
#include "windows/framework/view_factory.h"

namespace EndToEnd
{
namespace
{

class ImpatientView final : public Fakes::FakeProgressWindowView
{
public:
    using FakeProgressWindowView::FakeProgressWindowView;
    void create() override
    {
        FakeProgressWindowView::create();
        onCancel();
    }
};

} // namespace

void* ModulesOfProgram::findExport(Platform::ModuleHandle module, const char* name)
{
    void* const found = native_.findExport(module, name);
    const bool isEngine = native_.fileName(module).find(L"vaultcore") != std::wstring::npos;
    if (!replaceEngine || !isEngine || std::string_view(name) != "createFactory")
        return found;
    return reinterpret_cast<void*>(replaceEngine(reinterpret_cast<VaultCore::CreateFactoryFunction>(found)));
}

std::unique_ptr<JobRunner::IProgressWindowView> PlayedViews::createProgressWindowView(int operation)
{
    auto patient = FakeViewFactory::createProgressWindowView(operation);
    if (!cancelsAtOnce)
        return patient;
    return std::make_unique<ImpatientView>(progressViews.back());
}

std::unique_ptr<JobRunner::IFileErrorWindowView> PlayedViews::createFileErrorWindowView()
{
    if (onFileError)
        onFileError();
    return FakeViewFactory::createFileErrorWindowView();
}

WholeJob::WholeJob() : system_(Platform::systemWith(Platform::nativeSystem(), modules, boxes, shell))
{
    Platform::setPlatform(&system_);
    JobRunner::setViewFactory(&views);
}

WholeJob::~WholeJob()
{
    JobRunner::setViewFactory(nullptr);
    Platform::setPlatform(nullptr);
}

std::string WholeJob::run(const Path& job, int exitCode)
{
    tracker->clear();
    shell.arguments = {programUnderTest().wstring(), job.wstring()};
    EXPECT_EQ(JobRunner::runJobProcess(tracker), exitCode);
    // A process does one job, so the class stays until its end; the next job here needs it anew.
    system_.messages.unregisterClass(L"JobRunner_MessageWindow");
    std::string told = "\n";
    for (const std::wstring& call : tracker->calls())
        told += Platform::toUtf8(call) + "\n";
    return told;
}

void WholeJob::typeNewPassword(const std::function<void(Fakes::EncryptionPasswordRecord&)>& before)
{
    views.encryptionUsers.push_back(
        [before](Fakes::FakeEncryptionPasswordView& view)
        {
            if (before)
                before(view.fields());
            view.type(Password, Password);
            return view.proceed();
        });
}

void WholeJob::chooseKeyFileForEncryption(const Path& key)
{
    views.encryptionUsers.push_back(
        [path = key.wstring()](Fakes::FakeEncryptionPasswordView& view)
        {
            view.chooseKeyFile(path);
            return view.proceed();
        });
}

void WholeJob::typePassword(const std::wstring& password)
{
    views.decryptionUsers.push_back(
        [password](Fakes::FakeDecryptionPasswordView& view)
        {
            view.fields().passwordMode = true;
            view.fields().keyFile.clear();
            view.fields().password = password;
            EXPECT_TRUE(view.proceed());
        });
}

void WholeJob::chooseKeyFileForDecryption(const Path& key)
{
    views.decryptionUsers.push_back(
        [path = key.wstring()](Fakes::FakeDecryptionPasswordView& view)
        {
            view.fields().passwordMode = false;
            view.fields().password.clear();
            view.fields().keyFile = path;
            EXPECT_TRUE(view.proceed());
        });
}

Path WholeJob::key(const char* kind)
{
    // Making a pair takes a while, so the tests share one set.
    static const SampleFolder keys;
    static const bool made = []
    {
        const auto named = [](const char* name) { return (keys.path() / name).wstring(); };
        std::wstring message;
        return VaultCore::makeKeys({L"symmetric", named("symmetric")}, message) == 0 &&
               VaultCore::makeKeys({L"rsa", named("public"), named("private"), named("pair")}, message,
                                   VaultCore::RsaSmallModulus) == 0;
    }();
    EXPECT_TRUE(made);
    return keys.path() / kind;
}

} // namespace EndToEnd
