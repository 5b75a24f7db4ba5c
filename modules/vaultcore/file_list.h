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

} // namespace VaultCore
