#include "zelplatform/job_file.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace ZelPlatform
{
namespace
{

std::string readDocument(const std::string& name)
{
    std::ifstream file(std::string(JOBRUNNER_DOCS_DIR "/") + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

nlohmann::json schema()
{
    return nlohmann::json::parse(readDocument("job-file.schema.json"));
}

std::vector<std::string> examples()
{
    const std::string text = readDocument("job-file.md");
    std::vector<std::string> found;
    const std::string begin = "```json\n";
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at + 1))
        found.push_back(text.substr(at + begin.size(), text.find("```", at + begin.size()) - at - begin.size()));
    return found;
}

TEST(JobFileDocument, hasAnExampleOfEveryKind)
{
    std::vector<JobKind> kinds;
    for (const auto& example : examples())
    {
        const auto job = parseJobFile(example);
        ASSERT_TRUE(job) << example;
        EXPECT_FALSE(job->files.empty()) << example;
        kinds.push_back(job->kind);
    }
    EXPECT_EQ(kinds, (std::vector<JobKind>{JobKind::Encrypt, JobKind::EncryptSfx, JobKind::Decrypt,
                                           JobKind::DoubleClick, JobKind::Delete}));
}

TEST(JobFileDocument, usesOnlyFieldsOfTheSchema)
{
    const auto properties = schema()["properties"];
    for (const auto& example : examples())
    {
        const auto job = nlohmann::json::parse(example);
        for (const auto& field : job.items())
            EXPECT_TRUE(properties.contains(field.key())) << field.key();
    }
}

TEST(JobFileDocument, tellsTheLimitsThatHold)
{
    const std::string size = "At most " + std::to_string(MaximumJobFileBytes >> 20) + " MiB";
    const std::string nesting = "at most " + std::to_string(MaximumJobFileNesting) + " objects and arrays";
    const std::string text = readDocument("job-file.md");
    EXPECT_NE(text.find(size), std::string::npos) << size;
    EXPECT_NE(text.find(nesting), std::string::npos) << nesting;
    EXPECT_EQ(MaximumJobFileBytes % (std::size_t{1} << 20), 0U);
}

TEST(JobFileSchema, namesTheKindsThatAreRead)
{
    const auto kinds = schema()["properties"]["kind"]["enum"];
    EXPECT_EQ(kinds.size(), 5U);
    for (const auto& kind : kinds)
    {
        const auto job = parseJobFile(nlohmann::json{{"kind", kind}, {"files", {"a"}}}.dump());
        ASSERT_TRUE(job) << kind;
        EXPECT_NE(job->kind, JobKind::Unknown) << kind;
    }
}

TEST(JobFileSchema, givesTheDefaultsThatAreUsed)
{
    const auto properties = schema()["properties"];
    const JobDescription job;
    EXPECT_EQ(properties["algorithm"]["default"], job.algorithm);
    EXPECT_EQ(properties["destiny"]["default"], job.destiny);
    EXPECT_EQ(properties["mode"]["default"], job.mode);
    EXPECT_EQ(properties["method"]["default"], job.method);
    EXPECT_EQ(properties["extraText"]["default"], "");
    EXPECT_TRUE(properties["path"]["default"].is_null());
    EXPECT_FALSE(properties["comment"].contains("default"));
}

TEST(JobFileSchema, typesTheFieldsAsTheyAreRead)
{
    const nlohmann::json properties = schema()["properties"];
    for (const auto& property : properties.items())
    {
        nlohmann::json job{{"kind", "encrypt"}, {"files", {"a"}}};
        job[property.key()] = false;
        EXPECT_FALSE(parseJobFile(job.dump())) << property.key();
        if (property.value()["type"] == "integer")
        {
            job[property.key()] = property.value()["maximum"];
            EXPECT_TRUE(parseJobFile(job.dump())) << property.key();
            job[property.key()] = property.value()["maximum"].get<std::uint64_t>() + 1;
            EXPECT_FALSE(parseJobFile(job.dump())) << property.key();
        }
    }
    EXPECT_EQ(schema()["properties"].size(), 9U);
}

} // namespace
} // namespace ZelPlatform
