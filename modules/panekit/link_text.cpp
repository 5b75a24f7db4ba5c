#include "panekit/link_text.h"

#include <algorithm>
#include <climits>
#include <cwctype>
#include <optional>
#include <utility>

namespace Panekit
{

namespace
{

struct Anchor
{
    TextRun run;
    std::size_t end = 0;
};

std::wstring lowered(std::wstring text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t character) { return static_cast<wchar_t>(std::towlower(character)); });
    return text;
}

/// Value of the `href` attribute in the inside of a tag.
std::optional<std::wstring> hrefOf(const std::wstring& tag)
{
    const std::size_t name = lowered(tag).find(L"href");
    if (name == std::wstring::npos)
        return std::nullopt;
    const std::size_t quote = tag.find_first_of(L"\"'", name);
    if (quote == std::wstring::npos)
        return std::nullopt;
    const std::size_t end = tag.find(tag[quote], quote + 1);
    if (end == std::wstring::npos)
        return std::nullopt;
    return tag.substr(quote + 1, end - quote - 1);
}

std::optional<Anchor> anchorAt(const std::wstring& text, const std::wstring& lower, std::size_t start)
{
    const std::size_t tagEnd = text.find(L'>', start);
    const std::size_t close = lower.find(L"</a>", start);
    if (tagEnd == std::wstring::npos || close == std::wstring::npos || tagEnd > close)
        return std::nullopt;
    const auto href = hrefOf(text.substr(start, tagEnd - start));
    if (!href)
        return std::nullopt;
    return Anchor{{text.substr(tagEnd + 1, close - tagEnd - 1), *href}, close + 4};
}

/// Places words one after the other.
class Flow
{
public:
    Flow(int width, int lineHeight, const MeasureText& measure)
        : limit_(width > 0 ? width : INT_MAX), lineHeight_(lineHeight), measure_(measure)
    {
    }

    void add(std::size_t run, const std::wstring& text)
    {
        for (std::size_t at = 0; at < text.size();)
        {
            const std::wstring word = wordAt(text, at);
            at += word.size();
            if (word == L"\n")
                breakLine();
            else
                addWord(run, word);
        }
    }

    FlowedText take()
    {
        result_.height = y_ + lineHeight_;
        return std::move(result_);
    }

private:
    static bool isSpace(wchar_t character) { return character == L' ' || character == L'\t' || character == L'\r'; }

    static std::wstring wordAt(const std::wstring& text, std::size_t start)
    {
        if (text[start] == L'\n')
            return L"\n";
        const bool space = isSpace(text[start]);
        std::size_t end = start;
        while (end < text.size() && text[end] != L'\n' && isSpace(text[end]) == space)
            ++end;
        return text.substr(start, end - start);
    }

    void addWord(std::size_t run, const std::wstring& word)
    {
        const int width = measure_(word);
        if (isSpace(word[0]))
        {
            // A space that would start a line is left out.
            if (x_ > 0 && x_ + width <= limit_)
                put(run, word, width);
            return;
        }
        if (x_ > 0 && x_ > limit_ - width)
            breakLine();
        if (width > limit_)
            addInParts(run, word);
        else
            put(run, word, width);
    }

    void addInParts(std::size_t run, std::wstring word)
    {
        while (!word.empty())
        {
            std::size_t count = word.size();
            while (count > 1 && measure_(word.substr(0, count)) > limit_)
                --count;
            if (x_ > 0)
                breakLine();
            put(run, word.substr(0, count), measure_(word.substr(0, count)));
            word.erase(0, count);
        }
    }

    void put(std::size_t run, const std::wstring& text, int width)
    {
        result_.pieces.push_back({run, text, x_, y_, width});
        x_ += width;
        result_.width = std::max(result_.width, x_);
    }

    void breakLine()
    {
        x_ = 0;
        y_ += lineHeight_;
    }

    int limit_;
    int lineHeight_;
    const MeasureText& measure_;
    int x_ = 0;
    int y_ = 0;
    FlowedText result_;
};

} // namespace

std::vector<TextRun> parseLinks(const std::wstring& text)
{
    std::vector<TextRun> runs;
    const std::wstring lower = lowered(text);
    std::size_t plainStart = 0;
    std::size_t from = 0;
    for (;;)
    {
        const std::size_t start = lower.find(L"<a ", from);
        if (start == std::wstring::npos)
            break;
        const auto anchor = anchorAt(text, lower, start);
        if (!anchor)
        {
            from = start + 1;
            continue;
        }
        if (start > plainStart)
            runs.push_back({text.substr(plainStart, start - plainStart), L""});
        runs.push_back(anchor->run);
        from = plainStart = anchor->end;
    }
    if (plainStart < text.size())
        runs.push_back({text.substr(plainStart), L""});
    return runs;
}

std::wstring plainText(const std::vector<TextRun>& runs)
{
    std::wstring plain;
    for (const TextRun& run : runs)
        plain += run.text;
    return plain;
}

FlowedText flowText(const std::vector<TextRun>& runs, int width, int lineHeight, const MeasureText& measure)
{
    Flow flow(width, lineHeight, measure);
    for (std::size_t i = 0; i < runs.size(); ++i)
        flow.add(i, runs[i].text);
    return flow.take();
}

} // namespace Panekit
