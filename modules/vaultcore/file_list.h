#pragma once

#include "interfaces/vaultcore/file_list.h"

#include <string>
#include <vector>

namespace VaultCore
{

class FileList final : public IFileList
{
public:
    void Release() override { delete this; }
    void Add(const wchar_t* path) override { entries_.emplace_back(path != nullptr ? path : L""); }
    void notCalled1() override {}
    int GetCount() override { return static_cast<int>(entries_.size()); }
    const wchar_t* GetItem(int index) override
    {
        return index >= 0 && index < GetCount() ? entries_[static_cast<std::size_t>(index)].c_str() : nullptr;
    }

private:
    std::vector<std::wstring> entries_;
};

/// The entries of any list, for a job that outlives the call.
inline std::vector<std::wstring> entriesOf(IFileList& files)
{
    std::vector<std::wstring> entries;
    for (int i = 0; i < files.GetCount(); ++i)
    {
        const wchar_t* entry = files.GetItem(i);
        entries.emplace_back(entry != nullptr ? entry : L"");
    }
    return entries;
}

} // namespace VaultCore
