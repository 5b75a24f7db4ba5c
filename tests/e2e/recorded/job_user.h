#pragma once

#include "scenarios/sample_folder.h"

#include <string>
#include <vector>

// The user of one job of the program under test, through its windows or in a terminal. Each call runs a whole job up to
// its end and fails the test when a question does not come, or when the program ends with another exit code than 0.

namespace EndToEnd
{

inline constexpr const char* UserPassword = "open sesame";

void encryptByPassword(const SampleFolder& folder, const std::vector<Path>& files);
void cancelEncryption(const SampleFolder& folder, const std::vector<Path>& files);
/// The files go; the package is named after the first one.
void makePackage(const SampleFolder& folder, const std::vector<Path>& files);
void decryptByPassword(const SampleFolder& folder, const std::vector<Path>& files);
void cancelDecryption(const SampleFolder& folder, const std::vector<Path>& files);
void remove(const SampleFolder& folder, const std::vector<Path>& files, std::uint32_t method);
void declineRemoval(const SampleFolder& folder, const std::vector<Path>& files);
/// The first file is missing: it is tried again once and then skipped.
void removeWithoutTheFirst(const SampleFolder& folder, const std::vector<Path>& files);
void doubleClick(const SampleFolder& folder, const Path& file);
/// Here the program ends with 1, behind its message.
void startWithoutAJob(const SampleFolder& folder);

} // namespace EndToEnd
