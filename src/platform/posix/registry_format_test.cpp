#include "platform/posix/registry_format.h"

#include "platform/registry_names.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>

using namespace Platform;

namespace
{

using Bytes = std::vector<std::uint8_t>;

RegistryKeyId created(RegistryTree& tree, std::u16string_view path, std::uint32_t options = 0)
{
    RegistryKeyId id = 0;
    EXPECT_EQ(tree.create(RegistryTree::Root, path, options, id), 0u);
    return id;
}

/// The line of one value of the root.
std::string lineOf(const std::u16string& name, std::uint32_t type, const Bytes& data)
{
    RegistryTree tree;
    EXPECT_EQ(tree.setValue(RegistryTree::Root, {name, type, data}), 0u);
    const std::string text = formatRegistry(tree);
    EXPECT_EQ(parseRegistry(text), tree) << text;
    const std::string before = "JobRunner registry 1\nnewest 1\nkey 1 \"\"\n";
    EXPECT_TRUE(text.starts_with(before)) << text;
    return text.substr(before.size(), text.find("\nend ") - before.size());
}

/// The text with the end line that belongs to it.
std::string withEnd(const std::string& content)
{
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char character : content)
        for (int bit = 0, byte = static_cast<std::uint8_t>(character); bit < 8; ++bit, byte >>= 1)
            sum = sum >> 1 ^ (((sum ^ static_cast<std::uint32_t>(byte)) & 1) != 0 ? 0xEDB88320 : 0);
    char line[16];
    std::snprintf(line, sizeof line, "end %08X\n", ~sum);
    return content + line;
}

const std::string Start = "JobRunner registry 1\nnewest 9\nkey 1 \"\"\n";

bool isRead(const std::string& lines)
{
    return parseRegistry(withEnd(Start + lines)).has_value();
}

/// Something of everything.
RegistryTree richTree()
{
    RegistryTree tree;
    const RegistryKeyId zel = created(tree, u"Software\\Halden\\ZEL");
    tree.setValue(zel, {u"SendUsageStat", ValueDword, {1, 0, 0, 0}});
    tree.setValue(zel, {u"text", ValueText, {0x41, 0, 0x22, 0, 0xE9, 0, 0, 0}});
    tree.setValue(zel, {u"odd \" %\n\x00E9\xD83D", ValueText, {0x41}});
    tree.setValue(RegistryTree::Root, {u"", ValueBinary, {0, 0xFF, 0x10}});
    const RegistryKeyId link = created(tree, u"Software\\link", OptionCreateLink);
    tree.setValue(link, {LinkValueName, ValueLink, {0x5C, 0, 0x41, 0}});
    created(tree, u"Software\\\x4E2D\xD83D\xDD12");
    return tree;
}

} // namespace

TEST(RegistryFormat, isLinesThatCanBeRead)
{
    RegistryTree tree;
    const RegistryKeyId zel = created(tree, u"Software\\Halden\\ZEL");
    tree.setValue(zel, {u"SendCrashReports", ValueDword, {0, 0, 0, 0}});
    tree.setValue(zel, {u"HeartBeatDay", ValueDword, {31, 0, 0, 0}});
    EXPECT_EQ(formatRegistry(tree), "JobRunner registry 1\n"
                                    "newest 4\n"
                                    "key 1 \"\"\n"
                                    "key 2 \"Software\"\n"
                                    "key 3 \"Software\\Halden\"\n"
                                    "key 4 \"Software\\Halden\\ZEL\"\n"
                                    "dword \"SendCrashReports\" 0\n"
                                    "dword \"HeartBeatDay\" 31\n"
                                    "end B7E9DEA9\n");
}

TEST(RegistryFormat, aTreeComesBackAsItWas)
{
    EXPECT_EQ(parseRegistry(formatRegistry(RegistryTree())), RegistryTree());
    EXPECT_EQ(parseRegistry(formatRegistry(richTree())), richTree());
}

TEST(RegistryFormat, keysKeepTheirNumbersAndANumberIsNotUsedAgainAfterTheKeyIsGone)
{
    RegistryTree tree;
    created(tree, u"first");
    const RegistryKeyId second = created(tree, u"second");
    EXPECT_EQ(tree.remove(second), 0u);
    auto again = parseRegistry(formatRegistry(tree));
    ASSERT_TRUE(again);
    EXPECT_EQ(created(*again, u"second"), second + 1);
}

TEST(RegistryFormat, eachTypeHasALineThatShowsIt)
{
    EXPECT_EQ(lineOf(u"n", ValueText, {0x41, 0, 0, 0}), R"(text "n" "A")");
    EXPECT_EQ(lineOf(u"n", ValueText, {0, 0}), R"(text "n" "")");
    EXPECT_EQ(lineOf(u"n", ValueExpandText, {0x41, 0, 0, 0}), R"(expand "n" "A")");
    EXPECT_EQ(lineOf(u"n", ValueLink, {0x41, 0}), R"(target "n" "A")");
    EXPECT_EQ(lineOf(u"n", ValueLink, {}), R"(target "n" "")");
    EXPECT_EQ(lineOf(u"n", ValueDword, {0xFE, 0xFF, 0xFF, 0xFF}), R"(dword "n" 4294967294)");
    EXPECT_EQ(lineOf(u"n", ValueQword, {1, 0, 0, 0, 0, 0, 0, 0x80}), R"(qword "n" 9223372036854775809)");
    EXPECT_EQ(lineOf(u"n", ValueBinary, {0, 0xAB}), R"(data 3 "n" 00AB)");
    EXPECT_EQ(lineOf(u"n", ValueBinary, {}), R"(data 3 "n" )");
    EXPECT_EQ(lineOf(u"n", 0xFFFFFFFF, {1}), R"(data 4294967295 "n" 01)");
    EXPECT_EQ(lineOf(u"n", ValueDwordBigEndian, {0, 0, 0, 1}), R"(data 5 "n" 00000001)");
}

TEST(RegistryFormat, whatDoesNotFitItsTypeIsKeptAsBytes)
{
    EXPECT_EQ(lineOf(u"n", ValueText, {}), R"(data 1 "n" )");
    EXPECT_EQ(lineOf(u"n", ValueText, {0x41, 0}), R"(data 1 "n" 4100)");
    EXPECT_EQ(lineOf(u"n", ValueText, {0x41, 0, 0}), R"(data 1 "n" 410000)");
    EXPECT_EQ(lineOf(u"n", ValueText, {0x41, 0, 0, 1}), R"(data 1 "n" 41000001)");
    EXPECT_EQ(lineOf(u"n", ValueText, {0x41, 0, 1, 0}), R"(data 1 "n" 41000100)");
    EXPECT_EQ(lineOf(u"n", ValueExpandText, {0x41}), R"(data 2 "n" 41)");
    EXPECT_EQ(lineOf(u"n", ValueLink, {0x41}), R"(data 6 "n" 41)");
    EXPECT_EQ(lineOf(u"n", ValueDword, {1, 2, 3}), R"(data 4 "n" 010203)");
    EXPECT_EQ(lineOf(u"n", ValueDword, {1, 2, 3, 4, 5}), R"(data 4 "n" 0102030405)");
    EXPECT_EQ(lineOf(u"n", ValueQword, {1, 2, 3, 4}), R"(data 11 "n" 01020304)");
}

TEST(RegistryFormat, whatWouldNotBeSeenOrNotSurviveIsWrittenInDigits)
{
    EXPECT_EQ(lineOf(u"\"%\n\r\t\x7F\x85\x2028\x2029", ValueBinary, {}),
              R"(data 3 "%0022%0025%000A%000D%0009%007F%0085%2028%2029" )");
    EXPECT_EQ(lineOf(u"\xD83D", ValueBinary, {}), R"(data 3 "%D83D" )");
    EXPECT_EQ(lineOf(u"\xDD12\xD83D!", ValueBinary, {}), R"(data 3 "%DD12%D83D!" )");
    EXPECT_EQ(lineOf(u"\xD83D\xDD12 \xE9\\", ValueBinary, {}), "data 3 \"\U0001F512 \u00E9\\\" ");
    EXPECT_EQ(lineOf(u"n", ValueText, {0x41, 0, 0, 0, 0x42, 0, 0, 0, 0, 0}), R"(text "n" "A%0000B%0000")");
}

TEST(RegistryFormat, everyUnitSurvives)
{
    constexpr std::uint32_t Length = 0x1000;
    for (std::uint32_t first = 0; first < 0x10000; first += Length)
    {
        RegistryTree tree;
        std::u16string name;
        Bytes data;
        for (std::uint32_t unit = first; unit < first + Length; ++unit)
        {
            if (unit != 0)
                name += {static_cast<char16_t>(unit), u'-'};
            data.insert(data.end(), {static_cast<std::uint8_t>(unit), static_cast<std::uint8_t>(unit >> 8), 0x41, 0});
        }
        data.insert(data.end(), {0, 0});
        EXPECT_EQ(tree.setValue(RegistryTree::Root, {name, ValueText, data}), 0u);
        EXPECT_TRUE(parseRegistry(formatRegistry(tree)) == tree) << first;
    }
}

TEST(RegistryFormat, anEmptyTreeIsAFileOfItsOwn)
{
    EXPECT_TRUE(parseRegistry(withEnd("JobRunner registry 1\nnewest 1\nkey 1 \"\"\n")));
    EXPECT_FALSE(parseRegistry(""));
    EXPECT_FALSE(parseRegistry(withEnd("")));
    EXPECT_FALSE(parseRegistry(withEnd("JobRunner registry 1\n")));
    EXPECT_FALSE(parseRegistry(withEnd("JobRunner registry 1\nnewest 1\n")));
}

TEST(RegistryFormat, anotherVersionIsNotRead)
{
    EXPECT_FALSE(parseRegistry(withEnd("JobRunner registry 2\nnewest 1\nkey 1 \"\"\n")));
}

TEST(RegistryFormat, aLineThatWeWouldNotWriteIsNotRead)
{
    EXPECT_TRUE(isRead("dword \"n\" 1\nkey 2 \"a\"\nkey 3 \"a\\b\"\n"));
    for (const char* lines : {"\n",
                              "word \"n\" 1\n",
                              "dword \"n\"\n",
                              "dword \"n\" \n",
                              "dword \"n\" -1\n",
                              "dword \"n\" +1\n",
                              "dword \"n\" 01\n",
                              "dword \"n\" 4294967296\n",
                              "dword \"n\" 1 \n",
                              "dword \"n\" 1\r\n",
                              "dword  \"n\" 1\n",
                              "dword n 1\n",
                              "dword \"n 1\n",
                              "dword \"n\"1\n",
                              "dword \"n\" 1",
                              "qword \"n\" 18446744073709551616\n",
                              "text \"n\" \"a\n",
                              "text \"n\" \"a\" \n",
                              "text \"n\" \"%00\"\n",
                              "text \"n\" \"%00\n",
                              "text \"n\" \"%1C8\n",
                              "text \"n\" \"%004G\"\n",
                              "text \"n\" \"%0041\"\n",
                              "text \"n\" \"%d83d\"\n",
                              "text \"n\" \"\xFF\"\n",
                              "text \"n\" \"\xED\xA0\xBD\"\n",
                              "text \"n\" \"\xC0\x80\"\n",
                              "text \"n\" \"%D83D%DD12\"\n",
                              "text \"n\" \"a\tb\"\n",
                              "data 3 \"n\"\n",
                              "data 3 \"n\" 0\n",
                              "data 3 \"n\" 0G\n",
                              "data 3 \"n\" ab\n",
                              "data 3 \"n\" AB CD\n",
                              "data 3 \"n\" AB \n",
                              "data 4294967296 \"n\" AB\n",
                              "data 4 \"n\" 01020304\n",
                              "data 1 \"n\" 0000\n",
                              "data 3 \"a%0000b\" AB\n",
                              "dword \"n\" 1\ndword \"n\" 1\n",
                              "dword \"n\" 1\ndword \"N\" 1\n",
                              "key 2 \"\"\n",
                              "key 1 \"\"\n",
                              "key 2 \"a\"\nkey 2 \"b\"\n",
                              "key 2 \"a\"\nkey 3 \"a\"\n",
                              "key 2 \"a\"\nkey 3 \"A\"\n",
                              "key 10 \"a\"\n",
                              "key 0 \"a\"\n",
                              "key 2 \"a\\\"\n",
                              "key 2 \"\\a\"\n",
                              "key 2 \"a\\b\"\n",
                              "key 2 \"b\"\nkey 3 \"a\"\n",
                              "key 2 \"a\" \n",
                              "key 2 a\n",
                              "key 2 \"a%0000b\"\n",
                              "link 1 \"\"\n",
                              "link 2 \"a\"\ndword \"n\" 1\n",
                              "link 2 \"a\"\nkey 3 \"a\\b\"\n",
                              "link 2 \"a\"\ntarget \"other\" \"x\"\n",
                              "key 2 \"a\"\nkey 3 \"A\\b\"\n"})
        EXPECT_FALSE(isRead(lines)) << lines;
}

TEST(RegistryFormat, namesThatAreTooLongAreNotRead)
{
    EXPECT_TRUE(isRead("key 2 \"" + std::string(255, 'k') + "\"\n"));
    EXPECT_FALSE(isRead("key 2 \"" + std::string(256, 'k') + "\"\n"));
    EXPECT_TRUE(isRead("dword \"" + std::string(16383, 'n') + "\" 1\n"));
    EXPECT_FALSE(isRead("dword \"" + std::string(16384, 'n') + "\" 1\n"));
}

TEST(RegistryFormat, aFileThatItsUserHasChangedNeedsNoChecksum)
{
    const std::string byHand = "JobRunner registry 1\nnewest 2\nkey 1 \"\"\nkey 2 \"Software\"\ndword \"a\" 0\nend\n";
    const auto tree = parseRegistry(byHand);
    ASSERT_TRUE(tree);
    EXPECT_TRUE(formatRegistry(*tree).starts_with(byHand.substr(0, byHand.size() - 1) + ' '));
    for (const char* wrong : {"end", "end \n", "end\n\n", "\nend\n", "end 0\n"})
        EXPECT_FALSE(parseRegistry(byHand.substr(0, byHand.size() - 4) + wrong)) << wrong;
    EXPECT_FALSE(parseRegistry("end\n"));
    EXPECT_FALSE(parseRegistry("\nend\n"));
}

/// Hours, if each value were searched for among all that came before.
TEST(RegistryFormat, aKeyOfVeryManyValuesIsReadAtOnce)
{
    std::string lines;
    for (int number = 0; number < 20'000; ++number)
        lines += "data 0 \"v" + std::to_string(number) + "\" \n";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(isRead(lines));
    EXPECT_FALSE(isRead(lines + "data 0 \"V7\" \n"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

/// With such a one a new key would get the number of the root, or none.
TEST(RegistryFormat, aHighestNumberThatNoKeyCanFollowIsNotRead)
{
    const auto isReadWith = [](const std::string& newest)
    { return parseRegistry(withEnd("JobRunner registry 1\nnewest " + newest + "\nkey 1 \"\"\n")).has_value(); };
    EXPECT_TRUE(isReadWith("1"));
    EXPECT_TRUE(isReadWith("9223372036854775808"));
    EXPECT_FALSE(isReadWith("0"));
    EXPECT_FALSE(isReadWith("9223372036854775809"));
    EXPECT_FALSE(isReadWith("18446744073709551615"));
}

TEST(RegistryFormat, aKeyThatIsWrittenTwiceIsNotRead)
{
    EXPECT_TRUE(isRead("dword \"a\" 1\n"));
    EXPECT_FALSE(isRead("dword \"a\" 1\nkey 1 \"\"\ndword \"a\" 2\n"));
    EXPECT_FALSE(isRead("dword \"a\" 1\nkey 1 \"\"\ndword \"b\" 2\n"));
}

TEST(RegistryFormat, aFileThatIsCutAnywhereIsRefused)
{
    const std::string text = formatRegistry(richTree());
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(parseRegistry(text.substr(0, length))) << length;
    EXPECT_FALSE(parseRegistry(text + '\n'));
    EXPECT_FALSE(parseRegistry(text + text));
    EXPECT_FALSE(parseRegistry(std::string(1, '\0') + text));
}

TEST(RegistryFormat, aFileWithAnyWrongByteIsRefused)
{
    const std::string text = formatRegistry(richTree());
    for (std::size_t place = 0; place < text.size(); ++place)
        for (int bit = 0; bit < 8; ++bit)
        {
            std::string damaged = text;
            damaged[place] = static_cast<char>(damaged[place] ^ 1 << bit);
            EXPECT_FALSE(parseRegistry(damaged)) << place << ' ' << bit;
        }
}

TEST(RegistryFormat, whateverTheBytesReadingThemEndsWithATreeThatGivesThemOrWithNone)
{
    const char* const more = std::getenv("JOBRUNNER_FUZZ_ROUNDS");
    const int rounds = more && *more ? std::atoi(more) : 4000;
    const std::string whole = formatRegistry(richTree());
    const std::string valid = whole.substr(0, whole.rfind("end "));
    std::mt19937 random(20);
    const auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    int read = 0;
    for (int round = 0; round < rounds; ++round)
    {
        std::string text = valid;
        for (auto changes = 1 + below(6); changes > 0; --changes)
        {
            const std::size_t place = below(text.size());
            const std::size_t length = below(std::min<std::size_t>(text.size() - place, 20) + 1);
            switch (below(5))
            {
            case 0:
                text.insert(text.begin() + static_cast<std::ptrdiff_t>(place), static_cast<char>(below(256)));
                break;
            case 1:
                text.erase(place, length);
                break;
            case 2:
                text.insert(below(text.size() + 1), valid.substr(below(valid.size()), length));
                break;
            case 3:
                text.insert(place, std::string(1, "\"\\% \n019AF"[below(10)]));
                break;
            default:
                if (!text.empty())
                    text[place] = static_cast<char>(below(256));
            }
        }
        // With the right end line, so that the lines themselves are looked at.
        const std::string ended = round % 8 == 0 ? text : withEnd(text);
        if (const auto tree = parseRegistry(ended))
        {
            EXPECT_EQ(formatRegistry(*tree), ended);
            ++read;
        }
    }
    EXPECT_GT(read, 0);
    for (int round = 0; round < rounds; ++round)
    {
        std::string text(below(200), '\0');
        std::generate(text.begin(), text.end(), [&] { return static_cast<char>(below(256)); });
        EXPECT_FALSE(parseRegistry(text));
        EXPECT_FALSE(parseRegistry(withEnd(Start + text + '\n')));
    }
}
