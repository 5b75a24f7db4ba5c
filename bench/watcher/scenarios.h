#pragma once

#include "watched_document.h"

#include <string>
#include <vector>

namespace Benchmarks
{

/// What an application does with a document, and what it writes down when the watcher may return.
struct Scenario
{
    std::string name;
    std::wstring arguments;
    std::string end;
    bool alone = true;         ///< whether the document is the only file of its folder
    std::wstring running = {}; ///< arguments of an instance that runs already; empty for none
};

/// Those that this system can play.
std::vector<Scenario> scenarios();

/// Opens the document once while the instance of the scenario runs, if it has one.
EndToEnd::WatchedDocument::Result play(const Scenario& scenario, EndToEnd::WatchedDocument& document);

} // namespace Benchmarks
