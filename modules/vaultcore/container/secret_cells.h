#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace VaultCore
{

/// Room for small secrets on pages that were locked once, because locking costs more than most work on a secret. Safe
/// on any thread.
class SecretCells
{
public:
    static constexpr std::size_t CellSize = 512;
    static constexpr std::size_t Count = 64;

    /// The one of the process. It is never destroyed, so that secrets may end as late as they like.
    static SecretCells& instance();

    /// A cell of zeros, or null when all are in use or there is no memory.
    std::uint8_t* take();
    /// False for memory that is no cell. The caller has wiped it.
    bool give(std::uint8_t* cell);

private:
    SecretCells();

    std::mutex mutex_;
    std::uint8_t* pages_ = nullptr;
    std::vector<std::uint8_t*> free_;
};

} // namespace VaultCore
