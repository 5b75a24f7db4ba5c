#include "platform/posix/desktop_entry.h"

#include "fuzz/reader.h"

#include <algorithm>

// What an installed application says of itself.

namespace Fuzz
{
namespace
{

using namespace Platform;

const std::string Document = "/home/me/a \"b\" %f \\ $(c).txt";

void checkCommand(const DesktopEntry& entry, const std::vector<std::string>& command)
{
    const auto named =
        std::count_if(command.begin(), command.end(),
                      [](const std::string& argument) { return argument.find(Document) != std::string::npos; });
    expect(named > 0, "the document arrives as it is");
    expect(command.size() <= 2 * entry.command.size() + 1, "no more arguments than the command has");
}

bool readEntry(ByteView input)
{
    const std::string text = textOfBytes(input);
    for (const auto& [key, value] : valuesOfGroup(text, "Default Applications"))
        expect(key.size() + value.size() < text.size(), "a value was in the file");
    const auto entry = parseDesktopEntry(text);
    if (!entry)
        return false;
    expect(!entry->command.empty(), "an application has a command");
    const auto command = commandFor(*entry, Document);
    if (command)
        checkCommand(*entry, *command);
    return command.has_value();
}

std::vector<Bytes> entrySeeds()
{
    const std::string start = "[Desktop Entry]\nType=Application\nName=Viewer\nIcon=viewer\nPath=/tmp\nExec=";
    return {bytesOfText(start + "viewer %f\n"),
            bytesOfText(start + "\"/opt/my viewer\" --title=%c %i %k %% %U \\\\s \"a\\\\\"b\" \"\"\n[Other]\nExec=x\n"),
            bytesOfText(start + "viewer\nHidden=true\n"),
            bytesOfText(start + "viewer %d%n%m \"open\n"),
            bytesOfText("# c\n[Default Applications]\ntext/plain=a.desktop;b.desktop;\n[Desktop Entry]\nType=Link\n"),
            bytesOfText(start + "viewer %x\n")};
}

const Registered registered({"desktop_entry", readEntry, entrySeeds});

} // namespace
} // namespace Fuzz
