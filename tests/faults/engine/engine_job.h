#pragma once

#include "oracle/oracle.h"
#include "vaultcore/file_system.h"

#include <functional>
#include <string>

namespace Faults
{

/// How the engine took one job, in this process.
struct JobReport
{
    Told told;
    /// The questions that were asked about files.
    std::size_t questions = 0;
    /// The last one's text.
    std::wstring lastQuestion;
    bool finished = false;
};

/// A job of the engine on any file system.
class EngineJob
{
public:
    /// Entries are found below `folder`, with '/' behind it or empty. Packages begin with the file "package.stub"
    /// there.
    EngineJob(const Order& order, std::wstring folder) : order_(order), folder_(std::move(folder)) {}

    /// Runs it to its end. The first questions about a file are answered with "try again", so often, and all others
    /// with "skip".
    JobReport run(VaultCore::IFileSystem& files, int tries = 0);
    /// Called with what has been told so far, behind each finished file.
    std::function<void(const Told&)> onTold = [](const Told&) {};

private:
    const Order& order_;
    const std::wstring folder_;
};

/// An order with the file that a package begins with among the others.
Order withStub(Order order);

} // namespace Faults
