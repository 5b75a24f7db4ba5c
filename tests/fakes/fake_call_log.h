#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace Fakes
{

/// What the fakes of one test were asked, in order. Safe on any thread.
class CallLog
{
public:
    void add(std::wstring call)
    {
        const std::lock_guard guard(lock_);
        calls_.push_back(std::move(call));
    }

    std::vector<std::wstring> calls() const
    {
        const std::lock_guard guard(lock_);
        return calls_;
    }

    /// The calls that start with this text, in order.
    std::vector<std::wstring> callsOf(const std::wstring& start) const
    {
        std::vector<std::wstring> found = calls();
        std::erase_if(found, [&start](const std::wstring& call) { return !call.starts_with(start); });
        return found;
    }

    bool contains(const std::wstring& call) const
    {
        const std::lock_guard guard(lock_);
        return std::find(calls_.begin(), calls_.end(), call) != calls_.end();
    }

    void clear()
    {
        const std::lock_guard guard(lock_);
        calls_.clear();
    }

private:
    mutable std::mutex lock_;
    std::vector<std::wstring> calls_;
};

} // namespace Fakes
