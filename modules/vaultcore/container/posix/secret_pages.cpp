#include "vaultcore/container/secret_pages.h"

#include <sys/mman.h>

namespace VaultCore
{

void* takeSecretPages(std::size_t size)
{
    void* pages = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        return nullptr;
    // Both are refused here and there; the secret is then as safe as any other memory.
    ::mlock(pages, size);
    ::madvise(pages, size, MADV_DONTDUMP);
    return pages;
}

void giveSecretPages(void* pages, std::size_t size)
{
    ::munmap(pages, size);
}

} // namespace VaultCore
