#pragma once

#include "platform/modules.h"
#include "platform/platform.h"
#include "platform/testing_folder.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

/// How the program that crashes came to its end.
struct CrashResult
{
    std::vector<std::uint32_t> codes; ///< that the filter was told, one for each call
    std::vector<std::uint64_t> addresses;
    std::uint32_t ending = 0; ///< on Windows the exit code, on Linux the signal, or the exit code and 1000
    std::string said;         ///< on Linux on the standard error output
};

/// Runs the program that crashes with these arguments and waits for its end; each system has its own.
std::uint32_t runToEnding(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                          const std::filesystem::path& said);

/// What a crash with this exception ends the program with.
std::uint32_t endingBy(std::uint32_t code);

inline CrashResult runCrashing(const std::string& way, const std::string& filter = "note")
{
    const TestingFolder folder;
    const std::filesystem::path notes = TestingFolder::fileOf(folder.path()) / "notes";
    const std::filesystem::path said = TestingFolder::fileOf(folder.path()) / "said";
    const std::filesystem::path self = TestingFolder::fileOf(Platform::nativeSystem().modules.fileName(nullptr));
    const std::filesystem::path program = self.parent_path() / ("crashing_application" + self.extension().string());
    CrashResult result;
    result.ending = runToEnding(program, {way, filter, notes.string()}, said);
    std::ifstream lines(notes);
    std::uint32_t code = 0;
    std::uint64_t address = 0;
    while (lines >> std::hex >> code >> address)
    {
        result.codes.push_back(code);
        result.addresses.push_back(address);
    }
    std::getline(std::ifstream(said), result.said, '\0');
    return result;
}
