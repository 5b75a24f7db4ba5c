#include "fuzz/container_keys.h"
#include "fuzz/whole_text.h"
#include "platform/utf8.h"
#include "vaultcore/file_system.h"
#include "vaultcore/package/package_names.h"
#include "vaultcore/package/package_unpacking.h"
#include "vaultcore/package/testing_package.h"

#include <set>

// A package that is sealed under the right key with whatever the input says: names, numbers and digests in the
// directory, the containers behind them, the trailer. Nobody else than its maker can make such a one; a package may
// come from anybody who tells a password for it.

namespace Fuzz
{
namespace
{

using namespace VaultCore;

constexpr std::size_t MostFiles = 6;

class Script
{
public:
    explicit Script(ByteView input) : script_(input) {}

    MemoryPackage package()
    {
        const std::string comment = takeText(script_.u8());
        const unsigned count = script_.u8() % (MostFiles + 1);
        for (unsigned index = 0; index < count; ++index)
            addFile();
        const bool isForeign = script_.u8() == 1;
        bad_.directory.comment = sha256(viewOf(isForeign ? comment + "!" : comment));
        Bytes directory = encodeDirectory(bad_.directory);
        const std::string name = script_.u8() == 1 ? "directory" : DirectoryName;
        change(directory);
        return bad_.finishWith(directory, comment, name);
    }

    /// What stands in the containers, by the names in them.
    std::multimap<std::string, std::string> contents;

private:
    std::string takeText(std::size_t size)
    {
        const ByteView taken = script_.take(std::min(size, script_.left()));
        return textOfBytes(taken);
    }

    void addFile()
    {
        const std::string name = takeText(script_.u16() % (LongestPackageName + 16));
        const std::string inside = script_.u8() == 1 ? takeText(script_.u8()) : name;
        const std::string content = takeText(script_.u8());
        PackageEntry& entry = bad_.add(name, content, inside);
        contents.emplace(inside, content);
        const unsigned field = script_.u8();
        if (field > 4)
            return;
        const std::uint64_t change = script_.u32();
        entry.offset += field == 1 ? change : 0;
        entry.size += field == 2 ? change : 0;
        entry.contentSize += field == 3 ? change : 0;
        entry.startSize += field == 4 ? static_cast<std::uint32_t>(change) : 0;
    }

    /// Single bytes of the directory, and its end.
    void change(Bytes& directory)
    {
        while (script_.ok() && script_.left() >= 3)
        {
            const std::size_t at = script_.u16();
            const std::uint8_t with = script_.u8();
            if (at < directory.size())
                directory[at] ^= with;
            else if (with < 128)
                directory.resize(directory.size() - std::min<std::size_t>(with, directory.size()));
            else
                directory.resize(directory.size() + with - 127);
        }
    }

    ByteReader script_;
    BadPackage bad_;
};

void checkName(const std::string& name)
{
    const std::wstring text = Platform::fromUtf8(name);
    expect(!name.empty() && name.size() <= LongestPackageName, "a name has a length within its limit");
    expect(isWholeText(text), "a name is a text");
    expect(text.find_first_of(L"\\:*?\"<>|") == std::wstring::npos, "a name has no sign of a path of another system");
    const std::wstring framed = L"/" + text + L"/";
    for (const wchar_t* way : {L"//", L"/./", L"/../", L"./", L" /"})
        expect(framed.find(way) == std::wstring::npos, "a name leads nowhere else");
}

/// Names that the system takes as one are caught when the files are made; these are the same on every system.
void checkNames(const std::vector<PackageEntry>& entries)
{
    std::set<std::wstring> files, folders;
    for (const PackageEntry& entry : entries)
    {
        checkName(entry.name);
        const std::wstring name = foldedName(Platform::fromUtf8(entry.name));
        expect(files.insert(name).second, "no two files have one name");
        for (std::size_t end = name.find(L'/'); end != std::wstring::npos; end = name.find(L'/', end + 1))
            folders.insert(name.substr(0, end));
    }
    for (const std::wstring& file : files)
        expect(!folders.contains(file), "no file is the folder of another");
}

void checkPlace(PackageReader& reader, std::size_t index)
{
    static const std::unique_ptr<IFileSystem> system = createFileSystem();
    const NativeText root{'/', 'o', 'u', 't'};
    const Place place = PackageUnpacking(*system, reader, {root, {}}, 0).placeOf(index);
    const std::string& name = reader.entries()[index].name;
    expect(place.root == root, "a file is put below the folder");
    expect(std::ranges::count(place.below, NativeSeparator) == std::ranges::count(name, '/'),
           "a file lies as deep as its name tells");
    expect(!place.below.empty() && place.below.front() != NativeSeparator, "a file's place is told from the folder on");
}

void checkFile(const Script& script, PackageReader& reader, std::size_t index)
{
    ContainerReader& file = reader.open(index);
    std::string content;
    for (ByteView piece = file.read(); !piece.empty(); piece = file.read())
        content += textOfBytes(piece);
    const auto [begin, end] = script.contents.equal_range(reader.entries()[index].name);
    expect(std::any_of(begin, end, [&](const auto& packed) { return packed.second == content; }),
           "what comes out was packed under this name");
}

bool readSealed(ByteView input)
{
    Script script(input);
    MemoryPackage package = script.package();
    CheapDerivations derivations;
    try
    {
        PackageReader reader(package);
        if (!reader.unlock(*containerKeys()[0], derivations))
            return false;
        checkNames(reader.entries());
        for (std::size_t index = 0; index < reader.entries().size(); ++index)
        {
            checkPlace(reader, index);
            checkFile(script, reader, index);
        }
        return true;
    }
    catch (const ContainerFailure& failure)
    {
        expect(!failure.message.empty(), "a refusal tells why");
        return false;
    }
}

void putName(Bytes& script, const std::string& name)
{
    script.push_back(static_cast<std::uint8_t>(name.size() & 0xFF));
    script.push_back(static_cast<std::uint8_t>(name.size() >> 8));
    script.insert(script.end(), name.begin(), name.end());
}

Bytes scriptOf(const std::vector<std::string>& names)
{
    Bytes script = bytesOfText("\x02hi");
    script.push_back(static_cast<std::uint8_t>(names.size()));
    for (const std::string& name : names)
    {
        putName(script, name);
        for (const unsigned byte : {0u, 3u, 97u, 98u, 99u, 9u})
            script.push_back(static_cast<std::uint8_t>(byte));
    }
    script.insert(script.end(), {0, 0});
    return script;
}

std::vector<Bytes> sealedSeeds()
{
    std::string deep(2 * 60 + 1, 'a');
    for (std::size_t index = 1; index < deep.size(); index += 2)
        deep[index] = '/';
    std::vector<Bytes> seeds{scriptOf({}),
                             scriptOf({"a.txt"}),
                             scriptOf({"a/b", "a/c", "\xC3\x84.txt", "\xF0\x9F\x94\x91"}),
                             scriptOf({"a/b/c", "A/B"}),
                             scriptOf({"nul.txt", "b"}),
                             scriptOf({"../a"}),
                             scriptOf({deep})};
    seeds.push_back(scriptOf({"a", "b"}));
    seeds.back().insert(seeds.back().end(), {44, 0, 1});
    return seeds;
}

const Registered registered({"sealed_package", readSealed, sealedSeeds});

} // namespace
} // namespace Fuzz
