#include "vaultcore/package/testing_package.h"

namespace VaultCore
{
namespace
{

MemoryPackage goodPackage()
{
    return packageOf({{"a", contentOf(50)}, {"b", contentOf(70)}}, "comment");
}

TEST(HostilePackage, theKitItselfMakesGoodPackages)
{
    BadPackage kit;
    kit.add("a");
    kit.add("b/c");
    MemoryPackage package = kit.finish("comment");
    EXPECT_EQ(filesOf(package), (Files{{"a", bytesOf("content of a")}, {"b/c", bytesOf("content of b/c")}}));
}

TEST(HostilePackage, everyChangedByteBehindTheProgramIsFound)
{
    const MemoryPackage good = goodPackage();
    for (std::size_t index = TestProgram.size(); index < good.bytes.size(); ++index)
    {
        MemoryPackage bad = good;
        bad.bytes[index] ^= 0x40;
        EXPECT_TRUE(faultOf([&] { filesOf(bad); })) << index;
    }
}

TEST(HostilePackage, everyShortenedPackageIsRefused)
{
    const MemoryPackage good = goodPackage();
    for (std::size_t size = 0; size < good.bytes.size(); ++size)
    {
        MemoryPackage bad = good;
        bad.bytes.resize(size);
        EXPECT_EQ(faultOf([&] { filesOf(bad); }), ContainerFault::NotAContainer) << size;
    }
}

TEST(HostilePackage, whatIsAppendedOrPutInFrontIsRefused)
{
    MemoryPackage appended = goodPackage();
    appended.bytes.push_back(0);
    EXPECT_EQ(faultOf([&] { filesOf(appended); }), ContainerFault::NotAContainer);
    MemoryPackage moved = goodPackage();
    moved.bytes.insert(moved.bytes.begin(), 0);
    EXPECT_EQ(faultOf([&] { filesOf(moved); }), ContainerFault::Damaged);
}

TEST(HostilePackage, anotherProgramDoesNotDisturb)
{
    // Known and told: the program in front is not protected by what stands behind it.
    MemoryPackage package = goodPackage();
    package.bytes[3] ^= 1;
    EXPECT_EQ(filesOf(package).size(), 2U);
}

TEST(HostilePackage, badNamesAreRefusedBeforeAnyFileIsOpened)
{
    for (const char* name : {"../a", "a/../../b", "/etc/a", "C:\\a", "c:a", "a\\b", "nul", "a:b", "a.", "a ", "a\nb",
                             "", "a//b", ".", "//directory", "\xff"})
    {
        BadPackage kit;
        kit.add("good");
        kit.add(name);
        MemoryPackage package = kit.finish();
        PackageReader reader(package);
        const auto cache = createDerivationCache();
        EXPECT_EQ(faultOf([&] { reader.unlock(*symmetricKey(), *cache); }), ContainerFault::Damaged) << name;
        EXPECT_TRUE(reader.entries().empty());
    }
}

TEST(HostilePackage, namesThatAreTheSameFileAreRefused)
{
    const std::pair<const char*, const char*> pairs[] = {{"a", "a"},   {"a", "A"},   {"\xc3\xa4", "\xc3\x84"},
                                                         {"a", "a/b"}, {"A/b", "a"}, {"x/y", "X/Y/z"}};
    for (const auto& [first, second] : pairs)
    {
        BadPackage kit;
        kit.add(first);
        kit.add(second);
        MemoryPackage package = kit.finish();
        EXPECT_EQ(refusalOf(package), L"The package holds two files of the same name.");
    }
}

TEST(HostilePackage, filesThatWereDroppedSwappedOrRepeatedAreFound)
{
    const auto refused = [](const std::function<void(std::vector<PackageEntry>&)>& change)
    {
        BadPackage kit;
        kit.add("a", "same size", "a");
        kit.add("b", "same size", "b");
        change(kit.directory.entries);
        MemoryPackage package = kit.finish();
        return faultOf([&] { filesOf(package); }).has_value();
    };
    EXPECT_FALSE(refused([](auto&) {}));
    EXPECT_TRUE(refused([](auto& entries) { entries.pop_back(); }));
    EXPECT_TRUE(refused([](auto& entries) { entries.erase(entries.begin()); }));
    EXPECT_TRUE(refused([](auto& entries) { std::swap(entries[0], entries[1]); }));
    EXPECT_TRUE(refused([](auto& entries) { std::swap(entries[0].start, entries[1].start); }));
    EXPECT_TRUE(refused([](auto& entries) { entries.push_back(entries[1]); }));
    EXPECT_TRUE(refused(
        [](auto& entries)
        {
            entries[1].offset = entries[0].offset;
            entries[1].start = entries[0].start;
        }));
}

TEST(HostilePackage, containersOfTheSameKeyExchangedInTheFileAreFound)
{
    BadPackage kit;
    const PackageEntry a = kit.add("a", "same size", "a");
    const PackageEntry b = kit.add("b", "same size", "b");
    ASSERT_EQ(a.size, b.size);
    MemoryPackage package = kit.finish();
    const auto first = package.bytes.begin() + static_cast<std::ptrdiff_t>(a.offset);
    const auto second = package.bytes.begin() + static_cast<std::ptrdiff_t>(b.offset);
    std::swap_ranges(first, second, second);
    EXPECT_EQ(refusalOf(package), L"The package is damaged or incomplete: a file in it was changed or exchanged.");
}

TEST(HostilePackage, aContainerThatTellsAnotherNameOrSizeIsRefused)
{
    BadPackage named;
    named.add("a", "content", "../a");
    MemoryPackage package = named.finish();
    EXPECT_EQ(refusalOf(package),
              L"The package is damaged or incomplete: a file in it is not the one that its directory tells of.");
    BadPackage sized;
    sized.add("a").contentSize = 1;
    MemoryPackage other = sized.finish();
    EXPECT_EQ(faultOf([&] { filesOf(other); }), ContainerFault::Damaged);
}

TEST(HostilePackage, aFileInTheDirectorysPlaceIsRefused)
{
    // What a file holds is not the packer's own word, even when it looks like a directory.
    BadPackage kit;
    kit.add("a");
    MemoryPackage package = kit.finishWith(encodeDirectory(kit.directory), "", "a");
    EXPECT_EQ(refusalOf(package),
              L"The package is damaged or incomplete: another file stands in the place of its directory.");
}

TEST(HostilePackage, theCommentOfAnotherPackageIsRefused)
{
    MemoryPackage package = goodPackage();
    const auto at = package.bytes.end() - static_cast<std::ptrdiff_t>(TrailerSize) - 7;
    ASSERT_EQ(std::string(at, at + 7), "comment");
    *at = 'C';
    EXPECT_EQ(PackageReader(package).comment(), "Comment");
    EXPECT_EQ(refusalOf(package), L"The package is damaged or incomplete: its comment was changed.");
}

TEST(HostilePackage, aTrailerWhosePartsDoNotFillTheFileIsRefused)
{
    const MemoryPackage good = goodPackage();
    const std::uint64_t size = good.bytes.size();
    const Trailer trailer = decodeTrailer(ByteView(good.bytes).last(TrailerSize), size);
    const auto faultWith = [&](const std::function<void(Trailer&)>& change)
    {
        MemoryPackage bad = good;
        Trailer changed = trailer;
        change(changed);
        bad.bytes.resize(bad.bytes.size() - TrailerSize);
        bad.write(encodeTrailer(changed));
        return faultOf([&] { PackageReader reader(bad); });
    };
    constexpr std::uint64_t Huge = ~std::uint64_t{0};
    EXPECT_EQ(faultWith([](Trailer&) {}), std::nullopt);
    for (const std::uint64_t value : {std::uint64_t{0}, std::uint64_t{1}, size, size + 1, Huge, Huge - size})
    {
        EXPECT_EQ(faultWith([&](Trailer& bad) { bad.directoryOffset = value; }), ContainerFault::Damaged) << value;
        EXPECT_EQ(faultWith([&](Trailer& bad) { bad.directorySize = value; }), ContainerFault::Damaged) << value;
        EXPECT_EQ(faultWith([&](Trailer& bad) { bad.commentOffset = value; }), ContainerFault::Damaged) << value;
    }
    EXPECT_EQ(faultWith([&](Trailer& bad) { bad.programSize = size; }), ContainerFault::Damaged);
    EXPECT_EQ(faultWith([&](Trailer& bad) { bad.commentSize = 1; }), ContainerFault::Damaged);
    EXPECT_EQ(faultWith([&](Trailer& bad) { bad.commentSize = 0xFFFFFFFF; }), ContainerFault::AbsurdParameters);
}

TEST(HostilePackage, entriesOutsideTheFileAreRefused)
{
    constexpr std::uint64_t Huge = ~std::uint64_t{0};
    const auto faultWith = [](const std::function<void(PackageEntry&)>& change)
    {
        BadPackage kit;
        change(kit.add("a"));
        MemoryPackage package = kit.finish();
        return faultOf([&] { filesOf(package); });
    };
    for (const std::uint64_t value : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1} << 40, Huge})
    {
        EXPECT_EQ(faultWith([&](PackageEntry& entry) { entry.offset = value; }), ContainerFault::Damaged);
        EXPECT_EQ(faultWith([&](PackageEntry& entry) { entry.size = value; }), ContainerFault::Damaged);
    }
    EXPECT_EQ(faultWith([&](PackageEntry& entry) { entry.contentSize = Huge; }), ContainerFault::Damaged);
    EXPECT_EQ(faultWith([&](PackageEntry& entry) { entry.startSize = 0xFFFFFFFF; }), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith([&](PackageEntry& entry) { entry.startSize = 100'000; }), ContainerFault::Damaged);
    EXPECT_EQ(faultWith([&](PackageEntry& entry) { entry.startSize = 1; }), ContainerFault::Damaged);
}

TEST(HostilePackage, absurdCountsAndLengthsAreRefusedBeforeMemoryIsTaken)
{
    BadPackage kit;
    kit.add("a");
    kit.directory.comment = sha256({});
    const Bytes good = encodeDirectory(kit.directory);
    const auto faultWith = [&](std::size_t at, std::uint8_t value)
    {
        BadPackage bad;
        bad.add("a");
        Bytes content = good;
        content[at] = value;
        MemoryPackage package = bad.finishWith(content);
        return faultOf([&] { filesOf(package); });
    };
    constexpr std::size_t Count = 40;
    constexpr std::size_t NameSize = 44 + 28;
    EXPECT_EQ(faultWith(Count + 3, 0xFF), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith(Count, 2), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith(NameSize + 3, 0xFF), ContainerFault::AbsurdParameters);
    EXPECT_EQ(faultWith(NameSize, 2), ContainerFault::Damaged);
    EXPECT_EQ(faultWith(Count, 0), ContainerFault::Damaged);
}

TEST(HostilePackage, anUnknownVersionIsToldByItsNumber)
{
    MemoryPackage package = goodPackage();
    package.bytes[package.bytes.size() - TrailerSize + 8] = 7;
    EXPECT_EQ(faultOf([&] { filesOf(package); }), ContainerFault::UnknownVersion);
    EXPECT_NE(refusalOf(package).find(L"version 7"), std::wstring::npos);
    EXPECT_TRUE(isPackage(package));
}

TEST(HostilePackage, aPackageIsToldByItsEnd)
{
    MemoryPackage package = goodPackage();
    EXPECT_TRUE(isPackage(package));
    package.bytes.pop_back();
    EXPECT_FALSE(isPackage(package));
    MemoryPackage nothing;
    EXPECT_FALSE(isPackage(nothing));
    MemoryPackage program(bytesOf(TestProgram));
    EXPECT_FALSE(isPackage(program));
}

} // namespace
} // namespace VaultCore
