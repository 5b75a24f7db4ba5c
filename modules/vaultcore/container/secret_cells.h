#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace VaultCore
{

/// Room for secrets up to a size, on pages that were locked once, because locking costs more than most work on a
/// secret. Safe on any thread.
class SecretCells
{
public:
    /// For keys, and for the content of small files. They are never destroyed, so that secrets may end as late as they
    /// like.
    static SecretCells& ofKeys();
    static SecretCells& ofFiles();

    std::size_t cellSize() const { return cellSize_; }
    std::size_t count() const { return count_; }

    /// A cell of zeros, or null when all are in use or there is no memory.
    std::uint8_t* take();
    /// False for memory that is no cell of these. The caller has wiped it.
    bool give(std::uint8_t* cell);

private:
    SecretCells(std::size_t cellSize, std::size_t count);

    const std::size_t cellSize_;
    const std::size_t count_;
    std::mutex mutex_;
    std::uint8_t* pages_ = nullptr;
    std::vector<std::uint8_t*> free_;
};

} // namespace VaultCore
