#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Panekit
{

/// A stretch of text that is a link, or plain when `href` is empty.
struct TextRun
{
    std::wstring text;
    std::wstring href;
    bool operator==(const TextRun&) const = default;
};

/// Splits text with anchors, `<a href="target">caption</a>`, into runs. What is no whole anchor stays plain text.
std::vector<TextRun> parseLinks(const std::wstring& text);
/// The text without its anchors.
std::wstring plainText(const std::vector<TextRun>& runs);

/// A part of a run that stands on one line.
struct TextPiece
{
    std::size_t run = 0;
    std::wstring text;
    int x = 0;
    int y = 0;
    int width = 0;
};

struct FlowedText
{
    std::vector<TextPiece> pieces;
    int width = 0;
    int height = 0;
};

using MeasureText = std::function<int(const std::wstring& text)>;

/// Wraps the runs between words, and within a word that is wider than `width`; 0 and less put no limit. An empty
/// text has the height of one line.
FlowedText flowText(const std::vector<TextRun>& runs, int width, int lineHeight, const MeasureText& measure);

} // namespace Panekit
