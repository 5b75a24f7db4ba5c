#pragma once

#include "interfaces/vaultcore/file_list.h"

#include <deque>
#include <string>
#include <vector>

namespace ZelPlatform
{

/// The files of one document. Texts stay where they are for as long as the list lives, also when it grows.
class FileList final : public VaultCore::IFileList
{
public:
    explicit FileList(std::vector<std::wstring> files);
    /// Does nothing: the document owns its list.
    void Release() override {}
    void Add(const wchar_t* path) override;
    void notCalled1() override {}
    int GetCount() override;
    const wchar_t* GetItem(int index) override;

private:
    std::deque<std::wstring> files_;
};

} // namespace ZelPlatform
