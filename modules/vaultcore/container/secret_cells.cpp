#include "vaultcore/container/secret_cells.h"

#include "vaultcore/container/secret_pages.h"

#include <functional>

namespace VaultCore
{

SecretCells& SecretCells::instance()
{
    static SecretCells* const cells = new SecretCells;
    return *cells;
}

SecretCells::SecretCells() : pages_(static_cast<std::uint8_t*>(takeSecretPages(CellSize * Count)))
{
    if (pages_ == nullptr)
        return;
    for (std::size_t index = 0; index < Count; ++index)
        free_.push_back(pages_ + index * CellSize);
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
    if (pages_ == nullptr || before(cell, pages_) || !before(cell, pages_ + CellSize * Count))
        return false;
    const std::lock_guard lock(mutex_);
    // There is room for all of them since the start, so nothing is thrown.
    free_.push_back(cell);
    return true;
}

} // namespace VaultCore
