#include "fuzz/reader.h"
#include "fuzz/whole_text.h"
#include "platform/utf16.h"
#include "platform/utf8.h"
#include "statistics/journal_line.h"

#include <algorithm>

// Text of any bytes on its ways into the program and out of it.

namespace Fuzz
{
namespace
{

void checkUtf8(const std::string& bytes, const std::wstring& text)
{
    expect(text.size() <= bytes.size(), "a character takes a byte at least");
    expect(Platform::toUtf8(text) == bytes, "bytes come back as they were");
}

void checkUtf16(ByteView input)
{
    const std::wstring text = Platform::fromUtf16(input);
    std::vector<std::uint8_t> even(input.begin(), input.end() - static_cast<std::ptrdiff_t>(input.size() % 2));
    expect(Platform::toUtf16(text) == even, "units come back as they were");
}

/// Whatever is reported stays one entry of the journal.
void checkJournal(const std::wstring& text)
{
    const std::string line = StatisticsModule::journalLine({}, 1, {"operation", {std::wstring_view(text), nullptr}});
    expect(line.ends_with(", null]\n"), "a line of the journal has its end");
    expect(std::ranges::count(line, '\n') == 1, "an entry of the journal is one line");
    expect(std::ranges::none_of(line.substr(0, line.size() - 1),
                                [](char letter) { return static_cast<unsigned char>(letter) < 0x20; }),
           "the journal has no control character");
    expect(isWholeText(Platform::fromUtf8(line)), "the journal is valid UTF-8");
    const std::string quotes = line.substr(0, line.size() - std::string_view(", null]\n").size());
    expect(quotes.ends_with('"'), "a text of the journal ends in a quotation mark");
}

bool readText(ByteView input)
{
    const std::string bytes = textOfBytes(input);
    const std::wstring text = Platform::fromUtf8(bytes);
    checkUtf8(bytes, text);
    checkUtf16(input);
    checkJournal(text);
    checkJournal(Platform::fromUtf16(input));
    return isWholeText(text);
}

std::vector<Bytes> textSeeds()
{
    std::vector<Bytes> seeds;
    for (const char* text :
         {"plain", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\x91", "\xFF\xC0\xAF\xED\xA0\x80\xF4\x90\x80\x80",
          "\"\\\n\x7F\xC2\x85\xE2\x80\xA8", "\x3D\xD8\x11\xDD\x11\xDD\x3D\xD8", "\xED\xB2\x80"})
        seeds.push_back(bytesOfText(text));
    return seeds;
}

const Registered registered({"text", readText, textSeeds});

} // namespace
} // namespace Fuzz
