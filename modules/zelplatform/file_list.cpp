#include "zelplatform/file_list.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace ZelPlatform
{

FileList::FileList(std::vector<std::wstring> files)
    : files_(std::make_move_iterator(files.begin()), std::make_move_iterator(files.end()))
{
}

void FileList::Add(const wchar_t* path)
{
    files_.emplace_back(path);
}

int FileList::GetCount()
{
    return static_cast<int>(files_.size());
}

const wchar_t* FileList::GetItem(int index)
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    return files_[static_cast<std::size_t>(index)].c_str();
}

} // namespace ZelPlatform
