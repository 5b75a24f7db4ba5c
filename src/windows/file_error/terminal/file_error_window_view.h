#pragma once

#include "windows/file_error/i_file_error_window_view.h"

#include <string>

namespace Platform
{
class Terminal;
}

namespace JobRunner
{

/// The file error window in the terminal. The end of the input answers abort, an empty line the default button.
class FileErrorWindowView : public IFileErrorWindowView
{
public:
    /// The terminal is not owned and outlives the view.
    explicit FileErrorWindowView(Platform::Terminal& terminal) : terminal_(terminal) {}

    void setTitle(const wchar_t* text) override;
    void setHeader(const wchar_t* text) override;
    void setSource(const wchar_t* path) override;
    void setTarget(const wchar_t* path) override;
    void setMessage(const wchar_t* text) override;
    int doModal() override;

private:
    std::wstring description() const;

    Platform::Terminal& terminal_;
    std::wstring title_ = L"File Error Occured";
    std::wstring header_ = L"Please choose what to do with file.";
    std::wstring source_;
    std::wstring target_;
    std::wstring message_ = L"Unknown error occured";
};

} // namespace JobRunner
