#include "windows/file_error/terminal/file_error_window_view.h"

#include "platform/posix/terminal.h"
#include "platform/posix/terminal_text.h"

#include <optional>

namespace JobRunner
{

namespace
{

constexpr const wchar_t* Question = L"Try Again (t) / Skip File (s) / Abort (a): ";

std::optional<int> answerOf(const std::wstring& line)
{
    if (line.empty() || line == L"t" || line == L"T")
        return FileErrorTryAgain;
    if (line == L"s" || line == L"S")
        return FileErrorSkipFile;
    if (line == L"a" || line == L"A")
        return FileErrorAbortJob;
    return std::nullopt;
}

} // namespace

void FileErrorWindowView::setTitle(const wchar_t* text)
{
    title_ = text;
}

void FileErrorWindowView::setHeader(const wchar_t* text)
{
    header_ = text;
}

void FileErrorWindowView::setSource(const wchar_t* path)
{
    source_ = path;
}

void FileErrorWindowView::setTarget(const wchar_t* path)
{
    target_ = path;
}

void FileErrorWindowView::setMessage(const wchar_t* text)
{
    message_ = text;
}

int FileErrorWindowView::doModal()
{
    Platform::Terminal::Prompt prompt(terminal_);
    prompt.print(description());
    while (const std::optional<std::wstring> line = prompt.readLine(Question))
        if (const std::optional<int> answer = answerOf(*line))
            return *answer;
    return FileErrorAbortJob;
}

std::wstring FileErrorWindowView::description() const
{
    // A path stays on its line, whatever it is made of.
    std::wstring text = title_ + L'\n' + header_ + L'\n';
    text += L"Source: " + Platform::displayLine(source_) + L'\n';
    if (!target_.empty())
        text += L"Target: " + Platform::displayLine(target_) + L'\n';
    return text + message_ + L'\n';
}

} // namespace JobRunner
