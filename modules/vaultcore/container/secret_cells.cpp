#include "vaultcore/container/secret_cells.h"

#include "vaultcore/container/secret_pages.h"

#include <functional>

namespace VaultCore
{

SecretCells& SecretCells::ofKeys()
{
    static SecretCells* const cells = new SecretCells(512, 64);
    return *cells;
}

SecretCells& SecretCells::ofFiles()
{
    // Two for each thread that makes results ahead. What a process may lock is little.
    static SecretCells* const cells = new SecretCells(8192, 8);
    return *cells;
}

SecretCells::SecretCells(std::size_t cellSize, std::size_t count)
    : cellSize_(cellSize), count_(count), pages_(static_cast<std::uint8_t*>(takeSecretPages(cellSize * count)))
{
    if (pages_ == nullptr)
        return;
    for (std::size_t index = 0; index < count; ++index)
        free_.push_back(pages_ + index * cellSize);
}

std::uint8_t* SecretCells::take()
{
    const std::lock_guard lock(mutex_);
    if (free_.empty())
        return nullptr;
    std::uint8_t* cell = free_.back();
    free_.pop_back();
    return cell;
}

bool SecretCells::give(std::uint8_t* cell)
{
    const std::less<> before;
    if (pages_ == nullptr || before(cell, pages_) || !before(cell, pages_ + cellSize_ * count_))
        return false;
    const std::lock_guard lock(mutex_);
    // There is room for all of them since the start, so nothing is thrown.
    free_.push_back(cell);
    return true;
}

} // namespace VaultCore
