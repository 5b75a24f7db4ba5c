#pragma once

#include "fakes/fake_call_log.h"
#include "interfaces/vaultcore/file_list.h"

#include <string>
#include <vector>

namespace Fakes
{

/// A list in memory. `Release` is logged and ends a list that was made with `new`; what is added to such a list is
/// logged, too, as "list.Add(path)".
class FakeFileList final : public VaultCore::IFileList
{
public:
    /// `owned` tells whether the list ends through `Release`, or with whoever holds it.
    FakeFileList(CallLog& log, bool owned) : log_(log), owned_(owned) {}

    void Release() override
    {
        log_.add(L"list.Release");
        if (owned_)
            delete this;
    }

    void Add(const wchar_t* path) override
    {
        entries_.emplace_back(path);
        if (owned_)
            log_.add(std::wstring(L"list.Add(") + path + L")");
    }
    void notCalled1() override { log_.add(L"list.notCalled1"); }
    int GetCount() override { return static_cast<int>(entries_.size()); }

    const wchar_t* GetItem(int index) override
    {
        const bool inside = index >= 0 && index < GetCount();
        return inside ? entries_[static_cast<std::size_t>(index)].c_str() : nullptr;
    }

private:
    CallLog& log_;
    const bool owned_;
    std::vector<std::wstring> entries_;
};

} // namespace Fakes
