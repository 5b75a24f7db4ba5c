#include "zelplatform/job_file.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <string>

namespace ZelPlatform
{
namespace
{

std::string field(const std::string& name, const std::string& value)
{
    std::string text = "\"";
    return text.append(name).append("\": ").append(value);
}

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    return result.append(text).append("\"");
}

std::string job(const std::string& fields)
{
    std::string text = R"({"kind": "encrypt", "files": ["a"])";
    return text.append(fields.empty() ? "" : ", ").append(fields).append("}");
}

bool loads(std::string_view text)
{
    return parseJobFile(text).has_value();
}

JobKind kindOf(const std::string& name)
{
    const auto parsed = parseJobFile(R"({"files": [], "kind": ")" + name + "\"}");
    return parsed ? parsed->kind : throw std::runtime_error("does not load: " + name);
}

TEST(JobFile, knowsFiveKinds)
{
    EXPECT_EQ(kindOf("encrypt"), JobKind::Encrypt);
    EXPECT_EQ(kindOf("encrypt-sfx"), JobKind::EncryptSfx);
    EXPECT_EQ(kindOf("decrypt"), JobKind::Decrypt);
    EXPECT_EQ(kindOf("double-click"), JobKind::DoubleClick);
    EXPECT_EQ(kindOf("delete"), JobKind::Delete);
}

TEST(JobFile, takesAnyOtherKindAsUnknown)
{
    EXPECT_EQ(kindOf("shred"), JobKind::Unknown);
    EXPECT_EQ(kindOf("Encrypt"), JobKind::Unknown);
    EXPECT_EQ(kindOf(""), JobKind::Unknown);
}

TEST(JobFile, givesEveryField)
{
    const auto parsed = parseJobFile(job(R"("algorithm": 16, "destiny": 2, "extraText": "x", "comment": "c",
        "path": "p", "mode": 1, "method": 2)"));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->algorithm, 16U);
    EXPECT_EQ(parsed->destiny, 2U);
    EXPECT_EQ(parsed->extraText, L"x");
    EXPECT_EQ(parsed->comment, L"c");
    EXPECT_EQ(parsed->path, L"p");
    EXPECT_EQ(parsed->mode, 1U);
    EXPECT_EQ(parsed->method, 2U);
}

TEST(JobFile, fillsInWhatIsLeftOut)
{
    const auto parsed = parseJobFile(job(""));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->algorithm, 3U);
    EXPECT_EQ(parsed->destiny, 0U);
    EXPECT_EQ(parsed->extraText, L"");
    EXPECT_FALSE(parsed->comment);
    EXPECT_FALSE(parsed->path);
    EXPECT_EQ(parsed->mode, 0U);
    EXPECT_EQ(parsed->method, 0U);
}

TEST(JobFile, keepsTheFilesInOrder)
{
    const auto parsed = parseJobFile(R"({"files": ["b", "a", "b", "*.txt"], "kind": "delete"})");
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->files, (std::vector<std::wstring>{L"b", L"a", L"b", L"*.txt"}));
}

TEST(JobFile, tellsAnEmptyTextFromAMissingOne)
{
    const auto parsed = parseJobFile(job(R"("comment": "", "path": "")"));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->comment, L"");
    EXPECT_EQ(parsed->path, L"");
}

TEST(JobFile, readsTextBeyondAscii)
{
    const auto parsed =
        parseJobFile("{\"kind\": \"delete\", \"files\": [\"\xC3\xA4\", \"\\u00e4\", \"\\ud83d\\ude00\"]}");
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->files, (std::vector<std::wstring>{L"\u00E4", L"\u00E4", L"\U0001F600"}));
}

TEST(JobFile, needsKindAndFiles)
{
    EXPECT_FALSE(loads(R"({"kind": "encrypt"})"));
    EXPECT_FALSE(loads(R"({"files": ["a"]})"));
    EXPECT_FALSE(loads("{}"));
    EXPECT_TRUE(loads(R"({"kind": "encrypt", "files": []})"));
}

TEST(JobFile, refusesWhatIsNotAnObject)
{
    for (const char* text : {"", " ", "null", "true", "1", "1.5", "\"encrypt\"", "[]", "[{}]", "kind = encrypt"})
        EXPECT_FALSE(loads(text)) << text;
}

TEST(JobFile, refusesBrokenJson)
{
    const std::string whole = job(R"("algorithm": 3)");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(loads(std::string_view(whole).substr(0, length))) << length;
    EXPECT_TRUE(loads(whole));
    EXPECT_FALSE(loads(whole + "}"));
    EXPECT_FALSE(loads(whole + whole));
    EXPECT_FALSE(loads("// job\n" + whole));
    EXPECT_FALSE(loads(whole + std::string(1, '\0')));
    EXPECT_FALSE(loads(whole + '\0' + whole));
}

TEST(JobFile, skipsAByteOrderMarkOfUtf8AndRefusesOtherEncodings)
{
    EXPECT_TRUE(loads("\xEF\xBB\xBF" + job("")));
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char unit : job(""))
    {
        little += {unit, '\0'};
        big += {'\0', unit};
    }
    EXPECT_FALSE(loads(little));
    EXPECT_FALSE(loads(big));
    EXPECT_FALSE(loads(std::string_view(little).substr(2)));
}

TEST(JobFile, refusesAWrongType)
{
    for (const char* name : {"algorithm", "destiny", "mode", "method"})
    {
        for (const char* value : {"\"3\"", "null", "true", "1.0", "1e2", "[]", "[3]", "{}"})
            EXPECT_FALSE(loads(job(field(name, value)))) << name << value;
    }
    for (const char* name : {"extraText", "comment", "path"})
    {
        for (const char* value : {"3", "-3", "true", "1.0", "[]", "[\"a\"]", "{}"})
            EXPECT_FALSE(loads(job(field(name, value)))) << name << value;
    }
    EXPECT_FALSE(loads(job(R"("comment": null)")));
    EXPECT_FALSE(loads(job(R"("extraText": null)")));
    EXPECT_TRUE(loads(job(R"("path": null)")));
    EXPECT_FALSE(loads(R"({"kind": 1, "files": []})"));
    EXPECT_FALSE(loads(R"({"kind": null, "files": []})"));
    EXPECT_FALSE(loads(R"({"kind": ["encrypt"], "files": []})"));
}

TEST(JobFile, refusesFilesThatAreNotNames)
{
    for (const char* value : {"\"a\"", "null", "{}", "1", "[1]", "[null]", "[true]", "[1.5]", "[-1]", "[[\"a\"]]",
                              "[[]]", "[{}]", "[\"a\", 1]", "[\"\"]", "[\"a\", \"\"]"})
        EXPECT_FALSE(loads(std::string(R"({"kind": "encrypt", "files": )") + value + "}")) << value;
}

TEST(JobFile, takesNumbersOf32Bits)
{
    const auto parsed = parseJobFile(job(R"("algorithm": 4294967295, "mode": 0)"));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->algorithm, 4294967295U);
    for (const char* value : {"4294967296", "-1", "-4294967295", "18446744073709551615", "99999999999999999999"})
        EXPECT_FALSE(loads(job(field("mode", value)))) << value;
}

TEST(JobFile, refusesAZeroInsideAText)
{
    EXPECT_FALSE(loads(R"({"kind": "encrypt", "files": ["a\u0000b"]})"));
    EXPECT_FALSE(loads(R"({"kind": "encrypt\u0000", "files": ["a"]})"));
    for (const char* name : {"extraText", "comment", "path"})
        EXPECT_FALSE(loads(job(field(name, quoted("\\u0000"))))) << name;
    EXPECT_FALSE(loads(job(std::string("\"comment\": \"a\0b\"", 16))));
}

TEST(JobFile, refusesTextThatIsNoText)
{
    for (const char* text : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\\ud83d", "\\ude00",
                             "\\ud83d\\u0041", "\\u12", "\\x", "\n"})
    {
        EXPECT_FALSE(loads(job(field("comment", quoted(text))))) << text;
        EXPECT_FALSE(loads(job(field("unknown", quoted(text))))) << text;
    }
}

TEST(JobFile, skipsFieldsThatItDoesNotKnow)
{
    EXPECT_TRUE(loads(job(R"("later": {"kind": 7, "files": [[], {"mode": -1}], "x": null}, "mode": 1)")));
    EXPECT_TRUE(loads(job(R"("Mode": "text", "later": -1, "later": 1e300, "": [true])")));
    EXPECT_FALSE(loads(job(R"("later": {"kind": 7}, "mode": -1)")));
    EXPECT_FALSE(loads(R"({"later": {"kind": "encrypt", "files": []}})"));
}

TEST(JobFile, refusesAKnownFieldThatStandsTwice)
{
    EXPECT_FALSE(loads(job(R"("kind": "encrypt")")));
    EXPECT_FALSE(loads(job(R"("files": ["b"])")));
    EXPECT_FALSE(loads(job(R"("mode": 1, "\u006dode": 1)")));
}

TEST(JobFile, limitsTheNesting)
{
    const auto nested = [](std::size_t depth)
    { return job(field("later", std::string(depth, '[') + std::string(depth, ']'))); };
    EXPECT_TRUE(loads(nested(MaximumJobFileNesting - 1)));
    EXPECT_FALSE(loads(nested(MaximumJobFileNesting)));
    EXPECT_FALSE(loads(nested(5'000'000)));
    EXPECT_FALSE(loads(std::string(5'000'000, '[')));
    std::string objects = "{\"later\":";
    for (int count = 0; count < 1'000'000; ++count)
        objects += "{\"a\":";
    EXPECT_FALSE(loads(objects));
}

TEST(JobFile, limitsTheSize)
{
    std::string text = job("");
    text.resize(MaximumJobFileBytes, ' ');
    EXPECT_TRUE(loads(text));
    text += ' ';
    EXPECT_FALSE(loads(text));
}

TEST(JobFile, reads100000FilesAtOnce)
{
    std::string text = R"({"kind": "encrypt", "files": [)";
    for (int number = 0; number < 100'000; ++number)
        text +=
            (number ? ",\n" : "") + ("\"C:\\\\Users\\\\me\\\\Documents\\\\letter " + std::to_string(number)) + ".txt\"";
    text += "]}";
    const auto start = std::chrono::steady_clock::now();
    const auto parsed = parseJobFile(text);
    const auto time = std::chrono::steady_clock::now() - start;
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->files.size(), 100'000U);
    EXPECT_EQ(parsed->files.back(), L"C:\\Users\\me\\Documents\\letter 99999.txt");
    RecordProperty("milliseconds",
                   static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()));
    // A build with sanitizers on a busy machine stays far below; one that is not linear in the files does not.
    EXPECT_LT(time, std::chrono::seconds(5));
}

/// Whatever is done to a job file, it is read whole or refused.
TEST(JobFile, survivesDamage)
{
    const std::string whole = job(R"("algorithm": 3, "comment": "\u00e4", "path": null, "later": [{"a": 1.5e3}])");
    std::mt19937 random(20);
    const std::string bytes = std::string("{}[]\",:\\u0-9eE.tfn\0\xFF\xC3\xEF", 22);
    int loaded = 0;
    for (int round = 0; round < 20'000; ++round)
    {
        std::string text = whole;
        for (auto changes = random() % 4; changes + 1 > 0; --changes)
        {
            const std::size_t place = random() % text.size();
            const char byte = bytes[random() % bytes.size()];
            switch (random() % 3)
            {
            case 0:
                text[place] = byte;
                break;
            case 1:
                text.insert(place, 1, byte);
                break;
            default:
                text.erase(place, random() % 5);
            }
            if (changes == 0)
                break;
        }
        if (const auto parsed = parseJobFile(text))
        {
            ++loaded;
            for (const auto& file : parsed->files)
                EXPECT_EQ(file.find(L'\0'), std::wstring::npos);
        }
    }
    EXPECT_GT(loaded, 0);
    EXPECT_LT(loaded, 20'000);
}

} // namespace
} // namespace ZelPlatform
