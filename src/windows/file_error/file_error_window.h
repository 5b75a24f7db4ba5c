#pragma once

#include <memory>

namespace JobRunner
{

class IFileErrorWindowView;

/// Asks what to do with a file. First thread only. What is not set keeps the view's default text.
class FileErrorWindow
{
public:
    explicit FileErrorWindow(std::unique_ptr<IFileErrorWindowView> view);
    virtual ~FileErrorWindow();
    FileErrorWindow(const FileErrorWindow&) = delete;
    FileErrorWindow& operator=(const FileErrorWindow&) = delete;

    // The order of these differs from the view's, and is kept.
    virtual void setTitle(const wchar_t* text);
    virtual void setHeader(const wchar_t* text);
    virtual void setMessage(const wchar_t* text);
    virtual void setSource(const wchar_t* path);
    virtual void setTarget(const wchar_t* path);

    /// A `FileErrorAnswer`.
    int doModal();

private:
    std::unique_ptr<IFileErrorWindowView> view_;
};

} // namespace JobRunner
