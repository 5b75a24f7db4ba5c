#include "telemetry/usage_names.h"

#include <array>
#include <cstddef>

namespace Halden::ZEL::Telemetry
{

namespace
{

// By their numbers. The words of the password window are others.
constexpr std::array Algorithms{L"desx",    L"blowfish-448", L"3-des",   L"aes-256",  L"rc2",    L"diamond2",
                                L"tea-128", L"safer-128",    L"3-way",   L"gost-256", L"shark",  L"cast256e",
                                L"square",  L"skipjack80",   L"twofish", L"mars-448", L"serpent"};
constexpr std::array Destinies{L"leave", L"delete", L"wipe"};

template <std::size_t Count>
std::wstring nameAt(const std::array<const wchar_t*, Count>& names, std::uint32_t number, const wchar_t* otherwise)
{
    return number < Count ? names[number] : otherwise;
}

} // namespace

std::wstring algorithmName(std::uint32_t algorithm)
{
    return nameAt(Algorithms, algorithm, L"");
}

std::wstring destinyName(std::uint32_t destiny)
{
    return nameAt(Destinies, destiny, L"unknown");
}

} // namespace Halden::ZEL::Telemetry
