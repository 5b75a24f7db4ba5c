#include "commands/own_file_list.h"

#include "bridges/module_factories.h"

namespace JobRunner
{

ReleasePtr<VaultCore::IFileList> createOwnFileList(const std::wstring& file)
{
    const auto factory = createVaultCoreFactory();
    ReleasePtr<VaultCore::IFileList> files(factory->CreateFileList());
    files->Add(file.c_str());
    return files;
}

} // namespace JobRunner
