#include "vaultcore/container/secure_bytes.h"

#include "vaultcore/container/secret_cells.h"
#include "vaultcore/container/secret_pages.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace VaultCore
{
namespace
{

/// Null when none has a place left for so much.
std::uint8_t* takeCell(std::size_t size)
{
    for (SecretCells* cells : {&SecretCells::ofKeys(), &SecretCells::ofFiles()})
    {
        std::uint8_t* const cell = size <= cells->cellSize() ? cells->take() : nullptr;
        if (cell != nullptr)
            return cell;
    }
    return nullptr;
}

// The compiler cannot know what the pointer points to, so it has to make the call.
void* (*const volatile overwrite)(void*, int, std::size_t) = std::memset;

} // namespace

void wipe(std::span<std::uint8_t> bytes)
{
    if (!bytes.empty())
        overwrite(bytes.data(), 0, bytes.size());
}

bool sameSecret(std::span<const std::uint8_t> left, std::span<const std::uint8_t> right)
{
    if (left.size() != right.size())
        return false;
    unsigned difference = 0;
    for (std::size_t index = 0; index < left.size(); ++index)
        difference |= static_cast<unsigned>(left[index] ^ right[index]);
    return difference == 0;
}

SecureBytes::SecureBytes(std::size_t size)
{
    if (size == 0)
        return;
    data_ = takeCell(size);
    if (data_ == nullptr)
        data_ = static_cast<std::uint8_t*>(takeSecretPages(size));
    if (data_ == nullptr)
        throw std::bad_alloc();
    size_ = size;
}

SecureBytes::SecureBytes(std::span<const std::uint8_t> bytes) : SecureBytes(bytes.size())
{
    std::copy(bytes.begin(), bytes.end(), data_);
}

SecureBytes::SecureBytes(SecureBytes&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0))
{
}

SecureBytes& SecureBytes::operator=(SecureBytes&& other) noexcept
{
    // What was here before ends now, not whenever the other one does.
    SecureBytes taken(std::move(other));
    std::swap(data_, taken.data_);
    std::swap(size_, taken.size_);
    return *this;
}

SecureBytes::~SecureBytes()
{
    if (data_ == nullptr)
        return;
    wipe(bytes());
    if (!SecretCells::ofKeys().give(data_) && !SecretCells::ofFiles().give(data_))
        giveSecretPages(data_, size_);
}

} // namespace VaultCore
