#include "platform/posix/registry_format.h"

#include "platform/posix/registry_line.h"
#include "platform/registry_names.h"

#include <algorithm>
#include <array>
#include <set>

namespace Platform
{

namespace
{

constexpr std::string_view FirstLine = "JobRunner registry 1";
constexpr std::size_t ChecksumDigits = 8;
/// A file that tells a higher one is not ours. So the numbers of new keys never start from the front.
constexpr RegistryKeyId HighestNewest = RegistryKeyId{1} << 63;
/// Of a file that its user has changed, and can have no checksum for.
constexpr std::string_view EndByHand = "\nend\n";

constexpr std::array<std::uint32_t, 256> checksumTable()
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte)
    {
        table[byte] = byte;
        for (int bit = 0; bit < 8; ++bit)
            table[byte] = table[byte] >> 1 ^ ((table[byte] & 1) != 0 ? 0xEDB88320 : 0);
    }
    return table;
}

/// CRC-32, so that no run of up to 32 wrong bits stays unseen.
std::uint32_t checksumOf(std::string_view text)
{
    static constexpr std::array<std::uint32_t, 256> Table = checksumTable();
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char character : text)
        sum = sum >> 8 ^ Table[(sum ^ static_cast<std::uint8_t>(character)) & 0xFF];
    return ~sum;
}

std::string endLine(std::string_view content)
{
    return "end " + hexadecimal(checksumOf(content), ChecksumDigits) + '\n';
}

std::string dataLine(const RegistryValue& value)
{
    std::string line = "data " + std::to_string(value.type) + ' ' + quoted(value.name) + ' ';
    return line + hexadecimal(value.data);
}

/// Text without its terminator; nothing when it does not end in one.
std::optional<std::string> textLine(const char* word, const RegistryValue& value)
{
    const std::size_t size = value.data.size();
    if (size < 2 || size % 2 != 0 || value.data[size - 1] != 0 || value.data[size - 2] != 0)
        return std::nullopt;
    const std::vector<std::uint8_t> text(value.data.begin(), value.data.end() - 2);
    return std::string(word) + ' ' + quoted(value.name) + ' ' + quoted(unitsOfData(text));
}

/// Only a number of exactly this size.
std::optional<std::string> numberLine(const char* word, const RegistryValue& value, std::size_t size)
{
    if (value.data.size() != size)
        return std::nullopt;
    std::uint64_t number = 0;
    for (std::size_t index = size; index-- > 0;)
        number = number << 8 | value.data[index];
    return std::string(word) + ' ' + quoted(value.name) + ' ' + std::to_string(number);
}

std::string lineOf(const RegistryValue& value)
{
    std::optional<std::string> line;
    if (value.type == ValueText)
        line = textLine("text", value);
    if (value.type == ValueExpandText)
        line = textLine("expand", value);
    if (value.type == ValueDword)
        line = numberLine("dword", value, 4);
    if (value.type == ValueQword)
        line = numberLine("qword", value, 8);
    if (value.type == ValueLink && value.data.size() % 2 == 0)
        line = "target " + quoted(value.name) + ' ' + quoted(unitsOfData(value.data));
    return line ? *line : dataLine(value);
}

void append(std::string& text, const RegistryTree& tree, RegistryKeyId id, const std::u16string& path)
{
    const RegistryTreeKey& key = *tree.find(id);
    text += (key.isLink ? "link " : "key ") + std::to_string(id) + ' ' + quoted(path) + '\n';
    for (const RegistryValue& value : key.values)
        text += lineOf(value) + '\n';
    for (const auto& [name, child] : key.keys)
        append(text, tree, child, (path.empty() ? path : path + u'\\') + tree.find(child)->name);
}

/// The key whose lines are being read.
struct Reading
{
    RegistryTree tree;
    RegistryKeyId key = RegistryTree::Root;
    /// Of its values, folded: a file may hold so many that searching the key for each would take hours.
    std::set<std::u16string> names;
};

bool hasNull(const std::u16string& name)
{
    return name.find(u'\0') != name.npos;
}

bool readKey(Reading& reading, LineReader line, bool isLink)
{
    const auto id = line.number();
    const auto path = line.text();
    if (!id || *id == 0 || !path || hasNull(*path) || !line.isAtEnd())
        return false;
    reading.key = *id;
    reading.names.clear();
    if (*id == RegistryTree::Root)
        return path->empty();
    const std::size_t separator = path->rfind(u'\\');
    RegistryKeyId parent = RegistryTree::Root;
    if (separator != path->npos &&
        reading.tree.open(RegistryTree::Root, path->substr(0, separator), true, parent) != ErrorSuccess)
        return false;
    const std::u16string name = separator == path->npos ? *path : path->substr(separator + 1);
    return *id <= reading.tree.newest() && reading.tree.add(*id, parent, name, isLink);
}

bool addValue(Reading& reading, std::uint32_t type, std::optional<std::u16string> name,
              std::optional<std::vector<std::uint8_t>> data)
{
    if (!name || !data || hasNull(*name) || !reading.names.insert(foldedName(*name)).second)
        return false;
    return reading.tree.append(reading.key, {std::move(*name), type, std::move(*data)}) == ErrorSuccess;
}

bool readText(Reading& reading, LineReader line, std::uint32_t type, bool isTerminated)
{
    auto name = line.text();
    auto text = line.text();
    if (!text || !line.isAtEnd())
        return false;
    if (isTerminated)
        *text += u'\0';
    return addValue(reading, type, std::move(name), dataOfUnits(*text));
}

bool readNumber(Reading& reading, LineReader line, std::uint32_t type, std::size_t size)
{
    auto name = line.text();
    const auto number = line.number();
    if (!number || !line.isAtEnd())
        return false;
    std::vector<std::uint8_t> data;
    for (std::size_t index = 0; index < size; ++index)
        data.push_back(static_cast<std::uint8_t>(*number >> 8 * index));
    return addValue(reading, type, std::move(name), std::move(data));
}

bool readData(Reading& reading, LineReader line)
{
    const auto type = line.number();
    auto name = line.text();
    auto data = line.bytes();
    if (!type || *type > 0xFFFFFFFF || !line.isAtEnd())
        return false;
    return addValue(reading, static_cast<std::uint32_t>(*type), std::move(name), std::move(data));
}

bool readLine(Reading& reading, std::string_view text)
{
    LineReader line(text);
    const std::string_view word = line.word();
    if (word == "key" || word == "link")
        return readKey(reading, line, word == "link");
    if (word == "text")
        return readText(reading, line, ValueText, true);
    if (word == "expand")
        return readText(reading, line, ValueExpandText, true);
    if (word == "target")
        return readText(reading, line, ValueLink, false);
    if (word == "dword")
        return readNumber(reading, line, ValueDword, 4);
    if (word == "qword")
        return readNumber(reading, line, ValueQword, 8);
    return word == "data" && readData(reading, line);
}

/// Takes the line off the start of the text, without its end.
std::string_view takeLine(std::string_view& text)
{
    const std::size_t length = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return line;
}

bool readNewest(Reading& reading, std::string_view text)
{
    LineReader line(text);
    const bool isNewest = line.word() == "newest";
    const auto number = line.number();
    if (!isNewest || !number || *number < RegistryTree::Root || *number > HighestNewest || !line.isAtEnd())
        return false;
    reading.tree.setNewest(*number);
    return true;
}

/// What stands above the last line; nothing when that is not the one that belongs there.
std::optional<std::string_view> contentOf(std::string_view text)
{
    if (text.ends_with(EndByHand))
        return text.substr(0, text.size() - EndByHand.size() + 1);
    const std::size_t endLength = endLine("").size();
    if (text.size() < endLength)
        return std::nullopt;
    const std::string_view content = text.substr(0, text.size() - endLength);
    if (text.substr(content.size()) != endLine(content))
        return std::nullopt;
    return content;
}

} // namespace

std::string formatRegistry(const RegistryTree& tree)
{
    std::string text(FirstLine);
    text += "\nnewest " + std::to_string(tree.newest()) + '\n';
    append(text, tree, RegistryTree::Root, u"");
    return text + endLine(text);
}

std::optional<RegistryTree> parseRegistry(std::string_view text)
{
    const std::optional<std::string_view> whole = contentOf(text);
    if (!whole)
        return std::nullopt;
    std::string_view content = *whole;
    Reading reading;
    if (takeLine(content) != FirstLine || !readNewest(reading, takeLine(content)))
        return std::nullopt;
    while (!content.empty())
        if (!readLine(reading, takeLine(content)))
            return std::nullopt;
    // Whatever is written in another way than ours is not ours.
    if (formatRegistry(reading.tree) != std::string(*whole) + endLine(*whole))
        return std::nullopt;
    return std::move(reading.tree);
}

} // namespace Platform
