#include "platform/posix/text_of_file.h"

#include "platform/posix/descriptor.h"

#include <errno.h>
#include <fcntl.h>

#include <array>
#include <string_view>

namespace Platform
{

std::string textOfFile(const std::string& path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        return {};
    std::string text;
    std::array<char, 4096> buffer;
    while (true)
    {
        const ssize_t length = read(file.get(), buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            return {};
        if (length == 0)
            return text;
        text += std::string_view(buffer.data(), static_cast<std::size_t>(length));
    }
}

} // namespace Platform
