#include "posix/scenarios.h"

#include <algorithm>
#include <stdexcept>

namespace Faults
{
namespace
{

using EndToEnd::programUnderTest;

std::string field(const char* name, Fate fate)
{
    return std::string("\"") + name + "\": " + std::to_string(static_cast<int>(fate));
}

Scenario packingScenario(const std::string& name, Fate fate)
{
    return {name, packing(fate), "encrypt-sfx", field("destiny", fate) + R"(, "comment": "")"};
}

/// A package as the program makes it.
std::string package()
{
    Scenario scenario = packingScenario("", Fate::Keep);
    scenario.order.entries = {"large.bin", "tree"};
    const Workplace place;
    putFiles(place.files(), scenario.order.before);
    scenario.run(place);
    const Files after = filesBelow(place.files());
    const auto found = after.find("large.bin.exe");
    if (found == after.end())
        throw std::runtime_error("no package was made");
    return found->second;
}

/// One file is all that it takes.
Order doubleClick()
{
    Order order = decryption(Fate::Keep);
    order.entries = {"large.bin.zel"};
    std::erase_if(order.works, [](const Work& work) { return work.source != "large.bin.zel"; });
    return order;
}

std::vector<Scenario> allScenarios()
{
    const std::string files = package();
    return {{"encryptAndKeep", encryption(Fate::Keep), "encrypt", field("destiny", Fate::Keep)},
            {"encryptAndDelete", encryption(Fate::Delete), "encrypt", field("destiny", Fate::Delete)},
            {"encryptAndWipe", encryption(Fate::Wipe), "encrypt", field("destiny", Fate::Wipe)},
            packingScenario("packAndKeep", Fate::Keep),
            packingScenario("packAndDelete", Fate::Delete),
            packingScenario("packAndWipe", Fate::Wipe),
            {"decryptAndKeep", decryption(Fate::Keep), "decrypt", field("mode", Fate::Keep)},
            {"decryptAndDelete", decryption(Fate::Delete), "decrypt", field("mode", Fate::Delete)},
            {"unpackAndKeep", unpacking(Fate::Keep, files), "decrypt", field("mode", Fate::Keep)},
            {"unpackAndDelete", unpacking(Fate::Delete, files), "decrypt", field("mode", Fate::Delete)},
            {"delete", removal(Fate::Delete), "delete", R"("method": 0)"},
            {"wipe", removal(Fate::Wipe), "delete", R"("method": 2)"},
            {"doubleClick", doubleClick(), "double-click", ""}};
}

} // namespace

Ended Scenario::run(const Workplace& place, const Trapping& trapping, char answer,
                    std::optional<std::chrono::microseconds> killedAfter) const
{
    // The lines come round again and again: each question takes the next one that answers it.
    const std::string round =
        (order.kind == Kind::Remove ? "y\n" : "k\n" + place.keyFile().string() + "\n") + answer + "\n";
    std::string input;
    for (int question = 0; question < 100; ++question)
        input += round;
    return place.run({programUnderTest(), place.addJob(kind, order.entries, fields)}, input, trapping, killedAfter);
}

const Scenario& scenario(const std::string& name)
{
    static const std::vector<Scenario> all = allScenarios();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Scenario& each) { return each.name == name; });
    if (found == all.end())
        throw std::runtime_error("there is no scenario " + name);
    return *found;
}

} // namespace Faults
