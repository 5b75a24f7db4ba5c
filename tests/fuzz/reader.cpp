#include "fuzz/reader.h"

#include <algorithm>

namespace Fuzz
{
namespace
{

std::vector<Reader>& known()
{
    static std::vector<Reader> readers;
    return readers;
}

} // namespace

const std::vector<Reader>& readers()
{
    return known();
}

Registered::Registered(const Reader& reader)
{
    const auto position = std::find_if(known().begin(), known().end(),
                                       [&](const Reader& other) { return std::string_view(reader.name) < other.name; });
    known().insert(position, reader);
}

} // namespace Fuzz
