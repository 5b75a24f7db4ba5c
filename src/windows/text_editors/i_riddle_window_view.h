#pragma once

#include <string>

namespace JobRunner
{

/// The small editor of the riddle. One thread only. Ends through `release`.
class IRiddleWindowView
{
public:
    virtual void setText(const std::wstring& text) = 0;
    virtual std::wstring getText() = 0;
    /// True when the user confirmed; only then has the text changed. A dialog that cannot be made answers false.
    virtual bool doModal() = 0;
    virtual void release() = 0;

protected:
    ~IRiddleWindowView() = default;
};

} // namespace JobRunner
