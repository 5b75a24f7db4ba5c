#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace VaultCore
{

/// Overwrites memory in a way that no compiler leaves out.
void wipe(std::span<std::uint8_t> bytes);
/// Takes the same time wherever the difference is.
bool sameSecret(std::span<const std::uint8_t> left, std::span<const std::uint8_t> right);

/// A secret of fixed size on memory pages that hold nothing but secrets: kept out of the swap file and of crash dumps
/// where the system allows it, and wiped at its end. An empty one holds no memory. Throws `std::bad_alloc`.
class SecureBytes
{
public:
    SecureBytes() = default;
    /// All zeros.
    explicit SecureBytes(std::size_t size);
    explicit SecureBytes(std::span<const std::uint8_t> bytes);
    SecureBytes(SecureBytes&& other) noexcept;
    SecureBytes& operator=(SecureBytes&& other) noexcept;
    ~SecureBytes();
    /// Copies are made on purpose only.
    SecureBytes copy() const { return SecureBytes(bytes()); }

    std::span<std::uint8_t> bytes() { return {data_, size_}; }
    std::span<const std::uint8_t> bytes() const { return {data_, size_}; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

private:
    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace VaultCore
