#pragma once

#include "vaultcore/container/bytes.h"
#include "vaultcore/container/container.h"

namespace VaultCore
{

inline constexpr std::size_t LargestDetails = std::size_t{1} << 20;
/// Details are filled up to a multiple of this, so that the container's size does not tell how long the name is.
inline constexpr std::size_t DetailsStep = 256;

/// Throws `AbsurdParameters` for texts that are too long.
Bytes encodeDetails(const ContainerDetails& details);
/// Throws `Damaged`.
ContainerDetails decodeDetails(ByteView bytes);

} // namespace VaultCore
