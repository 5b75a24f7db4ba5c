#include "fuzz/reader.h"
#include "fuzz/whole_text.h"
#include "platform/utf8.h"
#include "vaultcore/file_system.h"
#include "vaultcore/package/package_names.h"

#include <algorithm>

// A name from inside of a container or a package, as bytes.

namespace Fuzz
{
namespace
{

using namespace VaultCore;

IFileSystem& files()
{
    static const std::unique_ptr<IFileSystem> system = createFileSystem();
    return *system;
}

bool isControl(wchar_t letter)
{
    return letter < L' ' || (letter >= L'\x7F' && letter < L'\xA0');
}

/// Whatever a container calls its file, the file is made in the folder that was chosen.
void checkLeaf(const std::wstring& text)
{
    const NativeText leaf = files().leafName(text);
    const NativeText dot{'.'};
    expect(leaf.find(NativeSeparator) == NativeText::npos && leaf.find('/') == NativeText::npos,
           "a leaf has no folder");
    expect(leaf != dot && leaf != dot + dot, "a leaf is no way out");
    const std::wstring shown = files().displayName(leaf);
    expect(std::none_of(shown.begin(), shown.end(), isControl), "a leaf has no control character");
    expect(leaf.empty() || files().leafName(shown) == leaf, "a leaf stays as it is");
}

/// Each part of a name that a package may have is one that the system takes as it stands.
void checkPackageName(const std::wstring& text)
{
    expect(isWholeText(text), "a name is a text");
    for (std::size_t begin = 0; begin <= text.size();)
    {
        const std::size_t end = std::min(text.find(L'/', begin), text.size());
        const std::wstring part = text.substr(begin, end - begin);
        expect(files().displayName(files().leafName(part)) == part, "a part of a good name means itself here");
        expect(packageNamePart(part) == part, "a part of a good name needs no change");
        begin = end + 1;
    }
}

bool readFileName(ByteView input)
{
    const std::string name = textOfBytes(input);
    const std::wstring text = Platform::fromUtf8(name);
    checkLeaf(text);
    // What no name of the system is longer than.
    constexpr std::size_t Longest = LongestNamePart;
    const auto fault = faultOfName(Platform::toUtf8(packageNamePart(text.substr(0, Longest / 2))));
    expect(!fault, "a part that is made of any name is good");
    if (faultOfName(name))
        return false;
    checkPackageName(text);
    return true;
}

std::vector<Bytes> fileNameSeeds()
{
    std::vector<Bytes> seeds;
    for (const char* name :
         {"a.txt", "folder/a b/c", "../../etc/passwd", "C:\\Windows\\a", "nul.txt", "a.txt:stream", "COM\xC2\xB9",
          "\xF0\x9F\x94\x91\xC3\x84.\xE6\x97\xA5", "a. ", "..", "\xED\xA0\x80\xFF", "\\\\?\\a", "con .a.b"})
        seeds.push_back(bytesOfText(name));
    return seeds;
}

const Registered registered({"file_name", readFileName, fileNameSeeds});

} // namespace
} // namespace Fuzz
