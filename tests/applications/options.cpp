#include "applications/options.h"

#include <iterator>
#include <map>

namespace Applications
{

bool isNumber(const std::wstring& text)
{
    return !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring::npos;
}

std::uint32_t number(const std::wstring& text)
{
    return isNumber(text) ? static_cast<std::uint32_t>(std::stoul(text)) : 0;
}

std::optional<Options> readOptions(const std::vector<std::wstring>& arguments)
{
    if (arguments.empty())
        return std::nullopt;
    Options options;
    options.mode = arguments[0];
    const std::map<std::wstring, bool*> flags = {{L"--front", &options.front}, {L"--serve", &options.serve}};
    const std::map<std::wstring, std::uint32_t*> times = {{L"--stay", &options.stay}, {L"--open", &options.open}};
    for (auto argument = arguments.begin() + 1; argument != arguments.end(); ++argument)
    {
        const bool hasValue = times.contains(*argument) || *argument == L"--log";
        if (hasValue && argument + 1 == arguments.end())
            return std::nullopt;
        if (flags.contains(*argument))
            *flags.at(*argument) = true;
        else if (times.contains(*argument))
            *times.at(*argument) = number(*std::next(argument));
        else if (*argument == L"--log")
            options.log = *std::next(argument);
        else if (argument == arguments.begin() + 1 && isNumber(*argument))
            options.time = number(*argument);
        else
            options.document = *argument;
        argument += hasValue ? 1 : 0;
    }
    return options;
}

} // namespace Applications
