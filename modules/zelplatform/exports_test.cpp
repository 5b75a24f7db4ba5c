#include "interfaces/release_ptr.h"
#include "interfaces/zelplatform/factory.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "zelplatform/scratch_folder.h"

namespace ZelPlatform
{
namespace
{

/// The module as the program gets it: by its exports alone.
class Exports : public ScratchFolder
{
protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        auto& modules = Platform::nativeSystem().modules;
        const std::filesystem::path program = modules.fileName(nullptr);
        const auto module = program.parent_path().parent_path() / "bin" / modules.moduleFileName(L"zelplatform");
        module_ = modules.load(module.wstring());
        ASSERT_TRUE(module_) << module;
    }
    void TearDown() override
    {
        if (module_)
            Platform::nativeSystem().modules.unload(module_);
        ScratchFolder::TearDown();
    }
    template <class Function> Function find(const char* name)
    {
        return reinterpret_cast<Function>(Platform::nativeSystem().modules.findExport(module_, name));
    }

private:
    Platform::ModuleHandle module_ = nullptr;
};

TEST_F(Exports, serveAWholeRun)
{
    const auto initialize = find<InitializeFunction>("initialize");
    const auto createFactory = find<CreateFactoryFunction>("createFactory");
    const auto uninitialize = find<UninitializeFunction>("uninitialize");
    ASSERT_TRUE(initialize && createFactory && uninitialize);
    ASSERT_TRUE(initialize(L"engine"));
    write(file("job"), R"({"kind": "encrypt", "files": ["a"], "algorithm": 5})");
    ReleasePtr<IFactory> factory(createFactory());
    ReleasePtr<IJobDocumentStore> store(factory->CreateJobDocumentStore());
    const ReleasePtr<IJobRunnerDocument> document(store->LoadJobDocument(file("job").wstring().c_str()));
    store.reset();
    factory.reset();

    ASSERT_TRUE(document);
    EXPECT_TRUE(document->IsEncryption());
    auto* encryption = dynamic_cast<IEncryptorThreadDocument*>(document.get());
    ASSERT_TRUE(encryption);
    EXPECT_EQ(encryption->GetAlgorithm(), 5U);
    EXPECT_EQ(dynamic_cast<IDeleterThreadDocument*>(document.get()), nullptr);
    uninitialize();
}

TEST_F(Exports, giveAFactoryOfItsOwnOnEachCall)
{
    const auto createFactory = find<CreateFactoryFunction>("createFactory");
    const ReleasePtr<IFactory> first(createFactory());
    const ReleasePtr<IFactory> second(createFactory());
    EXPECT_NE(first.get(), second.get());
}

TEST_F(Exports, refuseToStartWithoutAFolderOfTheEngine)
{
    EXPECT_FALSE(find<InitializeFunction>("initialize")(nullptr));
    // The folder of the program itself may be an empty text.
    EXPECT_TRUE(find<InitializeFunction>("initialize")(L""));
}

TEST_F(Exports, areTheOnlyOnes)
{
    EXPECT_FALSE(find<void*>("toUtf8"));
    EXPECT_FALSE(find<void*>("_ZN8Platform6toUtf8ESt17basic_string_viewIwSt11char_traitsIwEE"));
    EXPECT_FALSE(find<void*>("_ZN11ZelPlatform15userCommentFileB5cxx11Ev"));
}

} // namespace
} // namespace ZelPlatform
