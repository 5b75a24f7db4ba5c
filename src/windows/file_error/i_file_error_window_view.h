#pragma once

namespace JobRunner
{

/// Answers of the file error window.
enum FileErrorAnswer : int
{
    FileErrorTryAgain = 0,
    FileErrorSkipFile = 1,
    FileErrorAbortJob = 2,
};

/// The dialog that asks what to do with a file. One thread only; setters store and take effect when it opens.
class IFileErrorWindowView
{
public:
    virtual ~IFileErrorWindowView() = default;
    virtual void setTitle(const wchar_t* text) = 0;
    virtual void setHeader(const wchar_t* text) = 0;
    virtual void setSource(const wchar_t* path) = 0;
    virtual void setTarget(const wchar_t* path) = 0;
    virtual void setMessage(const wchar_t* text) = 0;
    /// A `FileErrorAnswer`. A dialog that cannot be made answers abort.
    virtual int doModal() = 0;
};

} // namespace JobRunner
