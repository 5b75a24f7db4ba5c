#include "platform/posix/default_application.h"

#include "platform/posix/desktop_entry.h"
#include "platform/posix/desktop_folders.h"
#include "platform/posix/start_program.h"
#include "platform/posix/text_of_file.h"

namespace Platform
{

namespace
{

constexpr char DesktopTool[] = "xdg-mime";
constexpr char PlainText[] = "text/plain";

std::string firstLine(const std::string& text)
{
    return text.substr(0, text.find('\n'));
}

/// The tool puts an explanation in this place when it cannot read the file.
bool isKind(const std::string& text)
{
    constexpr char Allowed[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$&^_.+-/";
    return text.find('/') != std::string::npos && text.find_first_not_of(Allowed) == std::string::npos;
}

/// Id of the application for a kind of file; empty for none.
std::string applicationOf(const std::string& tool, const std::string& kind)
{
    // The tool knows more than the choices of the user, but leaves out each one whose command begins with a quote.
    std::string id = chosenApplicationOf(kind);
    if (id.empty())
        id = firstLine(outputOf(tool, {DesktopTool, "query", "default", kind}));
    // Every text can be opened as plain text.
    if (id.empty() && kind != PlainText && kind.starts_with("text/"))
        return applicationOf(tool, PlainText);
    return id;
}

} // namespace

DefaultApplication defaultApplicationOf(const std::string& document)
{
    const std::string tool = findProgram(DesktopTool);
    if (tool.empty())
        return {};
    const std::string kind = firstLine(outputOf(tool, {DesktopTool, "query", "filetype", document}));
    const std::string file = isKind(kind) ? desktopFileOf(applicationOf(tool, kind)) : std::string();
    auto entry = parseDesktopEntry(textOfFile(file));
    if (!entry)
        return {};
    entry->file = file;
    auto arguments = commandFor(*entry, document);
    if (!arguments)
        return {};
    return {findProgram(arguments->front()), std::move(*arguments), entry->folder};
}

} // namespace Platform
