#include "vaultcore/package/testing_package.h"

#include "vaultcore/container/testing_rsa.h"

namespace VaultCore
{
namespace
{

TEST(Package, givesBackWhatWasPacked)
{
    const Files files{{"a.txt", bytesOf("some text")},
                      {"folder/empty", {}},
                      {"folder/b.bin", contentOf(100'000)},
                      {"\xc3\xa4/\xe6\x97\xa5", bytesOf("x")}};
    MemoryPackage package = packageOf(files);
    EXPECT_EQ(filesOf(package), files);
}

TEST(Package, beginsWithTheProgram)
{
    const MemoryPackage package = packageOf({{"a", bytesOf("x")}});
    EXPECT_TRUE(std::equal(TestProgram.begin(), TestProgram.end(), package.bytes.begin()));
}

TEST(Package, tellsCommentAndRiddleWithoutTheKey)
{
    MemoryPackage package = packageOf({{"a", bytesOf("x")}}, "gr\xc3\xbc\xc3\x9f");
    const PackageReader reader(package);
    EXPECT_EQ(reader.comment(), "gr\xc3\xbc\xc3\x9f");
    EXPECT_EQ(reader.riddle(), "riddle");
    EXPECT_EQ(reader.algorithm(), Aes256);
    EXPECT_TRUE(reader.entries().empty());
}

TEST(Package, namesAreNotReadableWithoutTheKey)
{
    const MemoryPackage package = packageOf({{"secretname.txt", bytesOf("x")}});
    const std::string name = "secretname";
    EXPECT_EQ(std::search(package.bytes.begin(), package.bytes.end(), name.begin(), name.end()), package.bytes.end());
}

TEST(Package, anotherKeyCanBeTriedUntilOneFits)
{
    MemoryPackage package = packageOf({{"a", bytesOf("x")}});
    const auto cache = createDerivationCache();
    PackageReader reader(package);
    EXPECT_FALSE(reader.unlock(*symmetricKey(1), *cache));
    EXPECT_FALSE(reader.unlock(*createPasswordKey(L"guess"), *cache));
    EXPECT_TRUE(reader.unlock(*symmetricKey(), *cache));
    EXPECT_EQ(reader.entries().size(), 1U);
    // Unlocked stays unlocked.
    EXPECT_TRUE(reader.unlock(*symmetricKey(1), *cache));
}

TEST(Package, oneDerivationServesAllFilesOfAPassword)
{
    MemoryPackage package(bytesOf(TestProgram));
    const auto key = createPasswordKey(L"sesam");
    const auto session = startEncryptionWith(*key, Aes256, cheapParameters());
    PackageWriter writer(package, package.size(), *session, "");
    for (int index = 0; index < 20; ++index)
        addFile(writer, std::to_string(index), bytesOf("x"));
    writer.finish("");

    class CountingCache final : public DerivationCache
    {
    public:
        const SecureBytes& remember(const Key& asked, ByteView salt,
                                    const std::function<SecureBytes()>& derive) override
        {
            return real_->remember(asked, salt,
                                   [&]
                                   {
                                       ++derivations;
                                       return derive();
                                   });
        }
        int derivations = 0;

    private:
        std::unique_ptr<DerivationCache> real_ = createDerivationCache();
    } cache;
    EXPECT_EQ(filesOf(package, *key, cache).size(), 20U);
    EXPECT_EQ(cache.derivations, 1);
}

TEST(Package, aPublicKeyPacksAndThePrivateOneUnpacks)
{
    MemoryPackage package(bytesOf(TestProgram));
    const auto session = startEncryptionWith(*rsaKey(KeyTypePublicRsa), Aes256, cheapParameters());
    PackageWriter writer(package, package.size(), *session, "");
    addFile(writer, "a", bytesOf("x"));
    writer.finish("");
    const auto cache = createDerivationCache();
    EXPECT_EQ(filesOf(package, *rsaKey(KeyTypePrivateRsa), *cache), (Files{{"a", bytesOf("x")}}));
}

TEST(PackageWriter, aFileThatFailsHalfWayLeavesNothing)
{
    MemoryPackage package(bytesOf(TestProgram));
    const auto session = startEncryptionWith(*symmetricKey(), Aes256, cheapParameters());
    PackageWriter writer(package, package.size(), *session, "");
    addFile(writer, "first", contentOf(5000));
    const std::size_t before = package.bytes.size();
    const auto failing = [](ContainerWriter& container)
    {
        container.write(contentOf(50'000));
        throw ContainerFailure{ContainerFault::WrongSize, L"gone"};
    };
    EXPECT_EQ(faultOf([&] { writer.add({"second", 60'000, 0, 0, ""}, failing); }), ContainerFault::WrongSize);
    EXPECT_EQ(package.bytes.size(), before);
    // Less than announced is a failure as well.
    const auto tooShort = [](ContainerWriter& container) { container.write(contentOf(10)); };
    EXPECT_EQ(faultOf([&] { writer.add({"third", 11, 0, 0, ""}, tooShort); }), ContainerFault::WrongSize);
    EXPECT_EQ(package.bytes.size(), before);
    EXPECT_EQ(writer.count(), 1U);
    addFile(writer, "fourth", contentOf(3));
    writer.finish("");
    EXPECT_EQ(filesOf(package), (Files{{"first", contentOf(5000)}, {"fourth", contentOf(3)}}));
}

TEST(PackageWriter, theEndCanBeTriedAgain)
{
    MemoryPackage package(bytesOf(TestProgram));
    const auto session = startEncryptionWith(*symmetricKey(), Aes256, cheapParameters());
    PackageWriter writer(package, package.size(), *session, "");
    addFile(writer, "a", contentOf(5000));
    package.room = package.bytes.size() + 500;
    EXPECT_TRUE(faultOf([&] { writer.finish("comment"); }));
    package.room = std::size_t{1} << 30;
    writer.finish("comment");
    EXPECT_EQ(filesOf(package), (Files{{"a", contentOf(5000)}}));
}

TEST(PackageWriter, refusesWhatHasNoPlaceInAPackage)
{
    MemoryPackage package(bytesOf(TestProgram));
    const auto session = startEncryptionWith(*symmetricKey(), Aes256, cheapParameters());
    PackageWriter writer(package, package.size(), *session, "");
    const auto never = [](ContainerWriter&) { FAIL() << "no content is asked for"; };
    EXPECT_EQ(faultOf([&] { writer.add({"../a", 1, 0, 0, ""}, never); }), ContainerFault::AbsurdParameters);
    const std::uint64_t tooLarge[] = {LargestPackage - (std::uint64_t{4} << 20), LargestPackage, LargestPackage + 1,
                                      ~std::uint64_t{0}};
    for (const std::uint64_t size : tooLarge)
        EXPECT_EQ(faultOf([&] { writer.add({"a", size, 0, 0, ""}, never); }), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultOf([&] { writer.finish(std::string(LargestComment + 1, 'x')); }), ContainerFault::AbsurdParameters);
    EXPECT_EQ(package.bytes, bytesOf(TestProgram));
}

} // namespace
} // namespace VaultCore
