#include <cstdint>
#include <stdexcept>
#include <thread>

// A module that crashes.

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace
{
volatile std::uintptr_t nowhere = 0;
}

EXPORTED void writeNull()
{
    *reinterpret_cast<volatile int*>(nowhere) = 1;
}

EXPORTED void throwException()
{
    throw std::runtime_error("nobody catches it");
}

EXPORTED void throwExceptionOnThread()
{
    std::thread(throwException).join();
}
