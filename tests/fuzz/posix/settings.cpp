#include "fuzz/reader.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/registry_file.h"
#include "platform/posix/registry_format.h"
#include "platform/registry.h"
#include "platform/registry_names.h"

#include <sys/mman.h>
#include <unistd.h>

namespace Fuzz
{
namespace
{

using namespace Platform;

/// As it comes out of a file.
std::string throughFile(const std::string& text)
{
    const Descriptor file(::memfd_create("settings", MFD_CLOEXEC));
    expect(file && ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
               ::lseek(file.get(), 0, SEEK_SET) == 0,
           "there is a file");
    std::string content;
    expect(readOwnFile(file.get(), content) == ErrorSuccess && content == text, "a file is read as it is");
    return content;
}

/// Everything below a key, each as its parent knows it.
void checkKeys(const RegistryTree& tree, RegistryKeyId id, const std::u16string& path)
{
    const RegistryTreeKey* const key = tree.find(id);
    expect(key != nullptr && id <= tree.newest(), "a key has a number that was given out");
    RegistryKeyId found = 0;
    // A link on the way would lead elsewhere.
    expect(tree.open(RegistryTree::Root, path, true, found) == ErrorSuccess && found == id,
           "a key is found by its path");
    expect(!key->isLink || (key->keys.empty() && key->values.size() <= 1), "a link holds where it leads alone");
    tree.open(RegistryTree::Root, path, false, found);
    for (const RegistryValue& value : key->values)
    {
        const RegistryValue* const named = tree.findValue(id, value.name);
        expect(named != nullptr && *named == value, "a value is found by its name");
        expect(value.name.size() <= LongestValueName, "a value's name is within its limit");
    }
    for (const auto& [name, child] : key->keys)
    {
        const RegistryTreeKey& below = *tree.find(child);
        expect(below.parent == id && foldedName(below.name) == name && !below.name.empty() &&
                   below.name.size() <= LongestKeyName && below.name.find(u'\\') == below.name.npos,
               "a key knows its parent and its name");
        checkKeys(tree, child, path.empty() ? below.name : path + u'\\' + below.name);
    }
}

bool readSettings(ByteView input)
{
    const auto tree = parseRegistry(throughFile(textOfBytes(input)));
    if (!tree)
        return false;
    checkKeys(*tree, RegistryTree::Root, u"");
    const std::string written = formatRegistry(*tree);
    expect(written.size() <= input.size() + 9, "a tree takes no more room than it had");
    auto again = parseRegistry(written);
    expect(again && *again == *tree, "a tree that is written again is the same");
    RegistryKeyId made = 0;
    expect(again->create(RegistryTree::Root, u"new\u0001", 0, made) != ErrorSuccess || made > RegistryTree::Root,
           "a new key has a number of its own");
    expect(parseRegistry(formatRegistry(*again)).has_value(), "a tree with a new key can be read");
    return true;
}

Bytes byHand(const std::string& lines)
{
    return bytesOfText("JobRunner registry 1\nnewest 9\nkey 1 \"\"\n" + lines + "end\n");
}

std::vector<Bytes> settingsSeeds()
{
    RegistryTree tree;
    RegistryKeyId key = 0, link = 0;
    tree.create(RegistryTree::Root, u"Software\\Halden\\ZEL", 0, key);
    tree.setValue(key, {u"SendCrashReports", ValueDword, {0, 0, 0, 0}});
    tree.setValue(key, {u"text \u00E4%", ValueText, {'a', 0, 0x3D, 0xD8, 0, 0}});
    tree.setValue(key, {u"", ValueQword, Bytes(8, 0xFF)});
    tree.setValue(key, {u"data", 3, {1, 2}});
    tree.setValue(key, {u"odd", ValueExpandText, {1}});
    tree.create(RegistryTree::Root, u"Link", OptionCreateLink, link);
    tree.setValue(link, {LinkValueName, ValueLink, {'\\', 0, 'R', 0}});
    return {bytesOfText(formatRegistry({})), bytesOfText(formatRegistry(tree)), byHand(""),
            byHand("key 2 \"a\"\ndword \"n\" 5\ntext \"t\" \"x%000A\"\nexpand \"e\" \"\"\nkey 3 \"a\\b\"\n"),
            byHand("link 2 \"l\"\ntarget \"SymbolicLinkValue\" \"\\REGISTRY\\USER\\Current\\l\"\nkey 4 \"m\"\n"
                   "qword \"q\" 18446744073709551615\ndata 11 \"d\" 00FF\n")};
}

const Registered registered({"settings", readSettings, settingsSeeds});

} // namespace
} // namespace Fuzz
