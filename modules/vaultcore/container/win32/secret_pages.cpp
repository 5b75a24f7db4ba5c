#include "vaultcore/container/secret_pages.h"

#include <windows.h>

namespace VaultCore
{

void* takeSecretPages(std::size_t size)
{
    void* pages = ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (pages != nullptr)
        // Refused when the process has locked its share; the secret is then as safe as any other memory.
        ::VirtualLock(pages, size);
    return pages;
}

void giveSecretPages(void* pages, std::size_t)
{
    ::VirtualFree(pages, 0, MEM_RELEASE);
}

} // namespace VaultCore
