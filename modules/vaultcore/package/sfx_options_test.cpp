#include "vaultcore/package/sfx_options.h"

#include "interfaces/release_ptr.h"
#include "interfaces/vaultcore/exception.h"
#include "vaultcore/factory.h"
#include "vaultcore/package/package_program.h"
#include "vaultcore/package/testing_sfx.h"

#include <thread>

// The whole way through the factory's objects, on the engine's own thread.

namespace VaultCore
{
namespace
{

class SfxOptionsTest : public SfxTest
{
protected:
    SfxOptionsTest()
    {
        events->SetFileListBuilderEvents(&recorder);
        events->SetOverallProgressEvents(&recorder);
        events->SetFileProgressEvents(&recorder);
        events->SetFileConflictEvents(&recorder);
        // The tests have a module folder of their own, without the program.
        fs::rename(beside(), away(), ignored);
    }
    ~SfxOptionsTest() override
    {
        fs::remove(beside(), ignored);
        fs::rename(away(), beside(), ignored);
    }

    static fs::path beside()
    {
        const Place place = createFileSystem()->locate(packageProgram());
        return fs::path(place.root) / place.below;
    }
    static fs::path away() { return beside() += ".kept"; }

    void run()
    {
        list->Add(wide(put(inside / "a", "abc")).c_str());
        options->SetAlgorithm(3);
        options->SetKey(testKey('k').get());
        options->SetRiddle(L"what opens");
        options->SetExtraText(L"not packed");
        options->SetSfxComment(L"About \u00e4");
        encryptor->StartSfx(list.get(), options.get(), events.get());
        while (!encryptor->IsFinished())
            std::this_thread::yield();
    }

    std::error_code ignored;
    ReleasePtr<IFactory> factory{new Factory};
    ReleasePtr<IFileList> list{factory->CreateFileList()};
    ReleasePtr<ISfxOptions> options{factory->CreateSfxOptions()};
    ReleasePtr<IOperationEvents> events{factory->CreateOperationEvents()};
    ReleasePtr<IEncryptor> encryptor{factory->CreateEncryptor()};
};

TEST_F(SfxOptionsTest, packsWithTheProgramBesideTheModule)
{
    put(beside(), "MZ of the module");
    run();
    EXPECT_EQ(recorder.succeeded, 1);
    const std::string package = content(inside / "a.exe");
    EXPECT_TRUE(package.starts_with("MZ of the module"));
    EXPECT_NE(package.find("what opens"), std::string::npos);
    EXPECT_NE(package.find("About \xc3\xa4"), std::string::npos);
    unpack(inside / "a.exe");
    EXPECT_EQ(content(into / "a"), "abc");
}

TEST_F(SfxOptionsTest, saysWhenTheProgramIsMissing)
{
    run();
    EXPECT_EQ(recorder.failed, 1);
    ASSERT_EQ(recorder.messages.size(), 1U);
    EXPECT_NE(recorder.messages[0].find(L"package.stub, cannot be used"), std::wstring::npos);
    EXPECT_EQ(countIn(inside), 1U);
}

TEST_F(SfxOptionsTest, refusesWhatItCannotStartWith)
{
    EXPECT_THROW(encryptor->StartSfx(list.get(), options.get(), events.get()), Exception); // no key
    options->SetKey(testKey('k').get());
    EXPECT_THROW(encryptor->StartSfx(nullptr, options.get(), events.get()), Exception);
    EXPECT_THROW(encryptor->StartSfx(list.get(), nullptr, events.get()), Exception);
    EXPECT_THROW(encryptor->StartSfx(list.get(), options.get(), nullptr), Exception);
    encryptor->StartSfx(list.get(), options.get(), events.get());
    EXPECT_THROW(encryptor->StartSfx(list.get(), options.get(), events.get()), Exception);
}

} // namespace
} // namespace VaultCore
