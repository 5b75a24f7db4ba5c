#include "fuzz/reader.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

// What the fuzzer calls. A program has one reader.

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed);

namespace
{

const Fuzz::Reader& theReader()
{
    return Fuzz::readers().front();
}

bool writeSeeds(const std::string& folder)
{
    int number = 0;
    for (const Fuzz::Bytes& seed : theReader().seeds())
    {
        std::ofstream file(folder + "/seed-" + std::to_string(++number), std::ios::binary);
        file.write(reinterpret_cast<const char*>(seed.data()), static_cast<std::streamsize>(seed.size()));
        if (!file.flush())
            return false;
    }
    return number > 0;
}

} // namespace

/// With "--seeds FOLDER" the program writes its seeds and ends.
int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    if (*argc == 3 && std::strcmp((*argv)[1], "--seeds") == 0)
        std::exit(writeSeeds((*argv)[2]) ? EXIT_SUCCESS : EXIT_FAILURE);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try
    {
        theReader().read({data, size});
    }
    catch (const Fuzz::Broken& broken)
    {
        std::fprintf(stderr, "does not hold: %s\n", broken.what());
        std::abort();
    }
    return 0;
}

/// Some changes are left as they are, so that the checks of the checksums are reached too.
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned int seed)
{
    const std::size_t changed = LLVMFuzzerMutate(data, size, maxSize);
    if (theReader().repair != nullptr && seed % 8 != 0)
        theReader().repair({data, changed});
    return changed;
}
