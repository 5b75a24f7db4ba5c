#pragma once

#include "platform/registry_tree.h"

#include <optional>
#include <string>
#include <string_view>

namespace Platform
{

/// A tree as lines of text, one for each key and each value, which docs/settings.md tells. The same tree always gives
/// the same text.
std::string formatRegistry(const RegistryTree& tree);

/// The way back. Nothing for any other text than one that `formatRegistry` gives.
std::optional<RegistryTree> parseRegistry(std::string_view text);

} // namespace Platform
