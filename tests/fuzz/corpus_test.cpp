#include "fuzz/reader.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>

// Reads again what the fuzzer has found, so that each of its finds stays a test on every system.

namespace Fuzz
{

/// For the messages of the tests.
static void PrintTo(const Reader& reader, std::ostream* out)
{
    *out << reader.name;
}

namespace
{

struct Outcomes
{
    int taken = 0;
    int refused = 0;
};

void read(const Reader& reader, ByteView input, const std::string& name, Outcomes& outcomes)
{
    try
    {
        // A copy of exactly this size, so that a sanitizer sees whoever reads beyond its end.
        const Bytes exact(input.begin(), input.end());
        ++(reader.read(exact) ? outcomes.taken : outcomes.refused);
    }
    catch (const Broken& broken)
    {
        ADD_FAILURE() << reader.name << "/" << name << ": does not hold: " << broken.what();
    }
    catch (const std::exception& exception)
    {
        ADD_FAILURE() << reader.name << "/" << name << ": throws " << exception.what();
    }
}

Bytes contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class FuzzCorpus : public testing::TestWithParam<Reader>
{
};

TEST_P(FuzzCorpus, isReadWithoutAFaultAndHoldsWhatIsTakenAndWhatIsNot)
{
    Outcomes outcomes;
    for (const auto& file :
         std::filesystem::directory_iterator(JOBRUNNER_FUZZ_CORPUS + std::string("/") + GetParam().name))
        read(GetParam(), contentOf(file.path()), file.path().filename().string(), outcomes);
    EXPECT_GT(outcomes.taken, 0);
    EXPECT_GT(outcomes.refused, 0);
}

TEST_P(FuzzCorpus, startsFromSeedsThatAreTaken)
{
    Outcomes outcomes;
    int number = 0;
    for (const Bytes& seed : GetParam().seeds())
        read(GetParam(), seed, "seed " + std::to_string(++number), outcomes);
    EXPECT_GT(outcomes.taken, 0);
}

TEST_P(FuzzCorpus, takesRepairedSeedsAsBefore)
{
    if (GetParam().repair == nullptr)
        return;
    for (const Bytes& seed : GetParam().seeds())
    {
        Bytes repaired = seed;
        GetParam().repair(repaired);
        EXPECT_EQ(repaired, seed);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, FuzzCorpus, testing::ValuesIn(readers()),
                         [](const auto& of) { return std::string(of.param.name); });

} // namespace
} // namespace Fuzz
