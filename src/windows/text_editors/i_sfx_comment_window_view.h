#pragma once

#include <string>

namespace JobRunner
{

/// The small editor of a package's description. One thread only. Ends through `release`.
class ISfxCommentWindowView
{
public:
    virtual void setText(const std::wstring& text) = 0;
    virtual std::wstring getText() = 0;
    /// True when the user confirmed; only then have the text and the box changed. A dialog that cannot be made
    /// answers false.
    virtual bool doModal() = 0;
    virtual void release() = 0;
    /// True when the box was checked as the user confirmed.
    virtual bool isSetDefault() = 0;

protected:
    ~ISfxCommentWindowView() = default;
};

} // namespace JobRunner
