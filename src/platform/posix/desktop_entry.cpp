#include "platform/posix/desktop_entry.h"

#include <sstream>

namespace Platform
{

namespace
{

constexpr char MainGroup[] = "Desktop Entry";
constexpr char Blanks[] = " \t\r";
constexpr std::size_t CodeLength = 2; // %f

std::string trimmed(const std::string& text)
{
    const std::size_t start = text.find_first_not_of(Blanks);
    if (start == std::string::npos)
        return {};
    return text.substr(start, text.find_last_not_of(Blanks) - start + 1);
}

/// Takes out the escapes that every text value of the file may have.
std::string plainValue(const std::string& value)
{
    const std::map<char, char> meanings = {{'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}};
    std::string plain;
    for (std::size_t i = 0; i < value.size(); ++i)
    {
        const auto meaning = value[i] == '\\' && i + 1 < value.size() ? meanings.find(value[i + 1]) : meanings.end();
        plain += meaning != meanings.end() ? meaning->second : value[i];
        i += meaning != meanings.end() ? 1 : 0;
    }
    return plain;
}

struct Word
{
    std::string text;
    /// Some of it stood in quotes.
    bool isQuoted = false;
};

/// Does a field code stand beside other text in it? A doubled sign is none.
bool mixesCode(const std::string& text)
{
    for (std::size_t i = text.find('%'); i != std::string::npos; i = text.find('%', i + 2))
        if (!text.substr(i).starts_with("%%"))
            return text.size() > CodeLength;
    return false;
}

/// Parts a command at its blanks; quotes keep blanks together, and in them a backslash keeps a character as it is.
std::optional<std::vector<Word>> wordsOf(const std::string& command)
{
    std::vector<Word> words;
    bool isInWord = false;
    bool isInQuotes = false;
    for (std::size_t i = 0; i < command.size(); ++i)
    {
        const char character = command[i];
        if (!isInQuotes && (character == ' ' || character == '\t' || character == '\n'))
        {
            isInWord = false;
            continue;
        }
        if (!isInWord)
            words.emplace_back();
        isInWord = true;
        if (character == '"')
            isInQuotes = !isInQuotes;
        else if (character == '\\' && i + 1 < command.size())
            words.back().text += command[++i];
        else
            words.back().text += character;
        words.back().isQuoted = words.back().isQuoted || isInQuotes;
    }
    if (isInQuotes || words.empty())
        return std::nullopt;
    return words;
}

/// Puts values in the place of field codes.
class FieldCodes
{
public:
    FieldCodes(const DesktopEntry& entry, const std::string& document) : entry_(entry), document_(document) {}

    /// Adds the arguments that a word stands for. False for a code that nobody knows.
    bool expand(const Word& given, std::vector<std::string>& arguments)
    {
        const std::string& word = given.text;
        // It may be a command of its own for a shell, in which the document's name would be run.
        if (given.isQuoted && mixesCode(word))
            return false;
        if (word == "%i")
        {
            if (!entry_.icon.empty())
                arguments.insert(arguments.end(), {"--icon", entry_.icon});
            return true;
        }
        std::string argument;
        for (std::size_t i = 0; i < word.size(); ++i)
        {
            if (word[i] != '%')
                argument += word[i];
            else if (++i == word.size() || !addValue(word[i], argument))
                return false;
        }
        // A code without a value leaves no empty argument behind; an empty argument in quotes stays one.
        if (!argument.empty() || word.empty())
            arguments.push_back(argument);
        return true;
    }

    bool hasDocument() const { return hasDocument_; }

private:
    bool addValue(char code, std::string& argument)
    {
        switch (code)
        {
        case 'f':
        case 'F':
        case 'u':
        case 'U': // a local file may be named by its path
            argument += document_;
            hasDocument_ = true;
            return true;
        case 'c':
            argument += entry_.name;
            return true;
        case 'k':
            argument += entry_.file;
            return true;
        case '%':
            argument += '%';
            return true;
        default:
            // Out of use, and to be left out.
            return std::string("dDnNvm").find(code) != std::string::npos;
        }
    }

    const DesktopEntry& entry_;
    const std::string& document_;
    bool hasDocument_ = false;
};

} // namespace

std::map<std::string, std::string> valuesOfGroup(const std::string& text, const std::string& group)
{
    std::map<std::string, std::string> values;
    bool isInGroup = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
    {
        line = trimmed(line);
        if (line.starts_with('['))
            isInGroup = line == '[' + group + ']';
        const std::size_t sign = line.find('=');
        if (isInGroup && !line.starts_with('#') && sign != std::string::npos)
            values.emplace(trimmed(line.substr(0, sign)), plainValue(trimmed(line.substr(sign + 1))));
    }
    return values;
}

std::optional<DesktopEntry> parseDesktopEntry(const std::string& text)
{
    std::map<std::string, std::string> values = valuesOfGroup(text, MainGroup);
    if (values["Type"] != "Application" || values["Hidden"] == "true" || values["Exec"].empty())
        return std::nullopt;
    return DesktopEntry{{}, values["Name"], values["Icon"], values["Exec"], values["Path"]};
}

std::optional<std::vector<std::string>> commandFor(const DesktopEntry& entry, const std::string& document)
{
    const auto words = wordsOf(entry.command);
    if (!words)
        return std::nullopt;
    FieldCodes codes(entry, document);
    std::vector<std::string> arguments;
    for (const Word& word : *words)
        if (!codes.expand(word, arguments))
            return std::nullopt;
    if (!codes.hasDocument())
        arguments.push_back(document);
    return arguments;
}

} // namespace Platform
