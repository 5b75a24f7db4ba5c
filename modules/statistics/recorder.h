#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <variant>

namespace StatisticsModule
{

/// A number, a text, or a value that is absent.
using Argument = std::variant<std::int64_t, std::wstring_view, std::nullptr_t>;

/// A call as it came; it holds nothing of its own and lasts as long as the call.
struct Call
{
    std::string_view operation;
    std::initializer_list<Argument> arguments;
};

/// What keeps the calls. Any thread.
class Recorder
{
public:
    virtual ~Recorder() = default;
    /// False when the call is not kept. May throw when memory runs out.
    virtual bool record(const Call& call) = 0;
};

using CreateRecorderFunction = std::shared_ptr<Recorder> (*)();

/// The journal of this user.
std::shared_ptr<Recorder> createUserRecorder();

/// Results, as COM has them.
using Result = std::int32_t;
inline constexpr Result Succeeded = 0;
inline constexpr Result NotMade = -2147467263;         ///< `E_NOTIMPL`
inline constexpr Result NullPointer = -2147467261;     ///< `E_POINTER`
inline constexpr Result Failed = -2147467259;          ///< `E_FAIL`
inline constexpr Result OutOfMemory = -2147024882;     ///< `E_OUTOFMEMORY`
inline constexpr Result InvalidArgument = -2147024809; ///< `E_INVALIDARG`

/// The value of an event as an argument.
Argument valueOf(std::int64_t value);

/// Records a call and lets no exception out.
Result record(Recorder& recorder, std::string_view operation, std::initializer_list<Argument> arguments) noexcept;

} // namespace StatisticsModule
