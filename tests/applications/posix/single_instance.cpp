#include "applications/application.h"
#include "applications/options.h"
#include "applications/release_log.h"
#include "platform/posix/descriptor.h"
#include "platform/utf8.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

namespace Applications
{

namespace
{

constexpr std::size_t LongestPath = 4096;

/// A socket under a name that leaves no file behind, one for each copy of this program.
struct Address
{
    Address()
    {
        const std::string program = std::filesystem::read_symlink("/proc/self/exe").native();
        const std::string name = "test_application " + std::to_string(std::hash<std::string>()(program));
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path + 1, name.data(), name.size());
        length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    }
    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address); }

    sockaddr_un address{};
    socklen_t length = 0;
};

Platform::Descriptor newSocket()
{
    return Platform::Descriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
}

} // namespace

/// Each document that comes has a thread of its own, as it would have a window.
int serve(const Options& options)
{
    const Address address;
    const Platform::Descriptor listening = newSocket();
    if (bind(listening.get(), address.get(), address.length) != 0 || listen(listening.get(), 1) != 0)
        throw std::runtime_error("another instance serves");
    // With the first thread a sanitizer begins one of its own, which never ends.
    std::thread([] {}).join();
    note(options.log, "serves");
    do
    {
        const Platform::Descriptor caller(accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC));
        std::array<char, LongestPath> document{};
        if (recv(caller.get(), document.data(), document.size(), 0) <= 0)
            continue;
        std::thread window(
            [&]
            {
                send(caller.get(), "", 1, MSG_NOSIGNAL);
                wait(options.open);
                note(options.log, "closed");
            });
        window.join();
    } while (options.stay == 0);
    wait(options.stay);
    return 0;
}

bool handOver(const std::wstring& document)
{
    const Address address;
    const Platform::Descriptor calling = newSocket();
    const std::string path = Platform::toUtf8(document);
    char answer = 0;
    return connect(calling.get(), address.get(), address.length) == 0 &&
           send(calling.get(), path.data(), path.size(), MSG_NOSIGNAL) > 0 && recv(calling.get(), &answer, 1, 0) == 1;
}

} // namespace Applications
