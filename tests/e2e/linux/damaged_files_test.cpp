#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "linux/password_jobs.h"

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

const std::string NoContainer = "The file is no encrypted file of this program.";
const std::string Damaged = "The encrypted file is damaged or incomplete.";
const std::string AbsurdSizes = "The encrypted file announces sizes beyond the limits of this engine.";
const std::string AbsurdCosts = "The encrypted file asks for a key derivation beyond the limits of this engine.";

// Places in a file without a riddle that is encrypted with a password, as docs/container-format.md tells them.
constexpr std::size_t Version = 8;
constexpr std::size_t Algorithm = 10;
constexpr std::size_t ChunkSize = 12;
constexpr std::size_t DetailsSize = 16;
constexpr std::size_t RiddleSize = 20;
constexpr std::size_t SlotsSize = 24;
constexpr std::size_t Slot = 28;
constexpr std::size_t DerivationMemory = Slot + 112;
constexpr std::size_t DerivationPasses = DerivationMemory + 4;
constexpr std::size_t Checksum = DerivationMemory + 12;
constexpr std::size_t HeadEnd = Checksum + 16 + 32;
constexpr std::size_t Details = HeadEnd + 256 + 16;

std::string with(std::string bytes, std::size_t place, const std::string& instead)
{
    return bytes.replace(place, instead.size(), instead);
}

std::string flipped(std::string bytes, std::size_t place)
{
    bytes.at(place) ^= 1;
    return bytes;
}

/// SHA-256 as the system's own tool tells it, which knows nothing of this program.
std::string sha256(const std::string& bytes)
{
    const SampleFolder folder;
    const std::string command = "sha256sum '" + folder.addFile("bytes", bytes).string() + "'";
    std::array<char, 65> letters{};
    FILE* const tool = popen(command.c_str(), "r");
    const std::size_t count = tool == nullptr ? 0 : fread(letters.data(), 1, 64, tool);
    if (tool != nullptr)
        pclose(tool);
    if (count != 64)
        throw std::runtime_error("there is no sha256sum");
    std::string digest;
    for (std::size_t i = 0; i < 64; i += 2)
        digest += static_cast<char>(std::stoi(std::string(&letters[i], 2), nullptr, 16));
    return digest;
}

/// As somebody changes a file who knows how it is built, but not the password.
std::string forged(const std::string& bytes, std::size_t place, const std::string& instead)
{
    const std::string changed = with(bytes, place, instead);
    return with(changed, Checksum, sha256(changed.substr(0, Checksum)).substr(0, 16));
}

struct Damage
{
    std::string name;
    std::function<std::string(const std::string&)> damage;
    std::string message;
    bool beforeTheQuestion = false;
};

/// What a decryption finds before it asks for a password comes first.
const std::vector<Damage> Damages = {
    {"other magic", [](const auto& bytes) { return flipped(bytes, 0); }, NoContainer, true},
    {"version", [](const auto& bytes) { return with(bytes, Version, "\x02\x01"); },
     "The encrypted file has the format version 258, which this engine does not know.", true},
    {"algorithm by accident", [](const auto& bytes) { return flipped(bytes, Algorithm); }, Damaged, true},
    {"chunk size", [](const auto& bytes) { return with(bytes, ChunkSize, "\xff\xff\xff\xff"); }, AbsurdSizes, true},
    {"details size", [](const auto& bytes) { return with(bytes, DetailsSize, "\xff\xff\xff\xff"); }, AbsurdSizes, true},
    {"riddle size", [](const auto& bytes) { return with(bytes, RiddleSize, "\xff\xff\xff\xff"); }, AbsurdSizes, true},
    {"slots size", [](const auto& bytes) { return with(bytes, SlotsSize, "\xff\xff\xff\xff"); }, AbsurdSizes, true},
    {"memory by accident", [](const auto& bytes) { return flipped(bytes, DerivationMemory + 3); }, Damaged, true},
    {"checksum", [](const auto& bytes) { return flipped(bytes, Checksum); }, Damaged, true},
    {"algorithm on purpose", [](const auto& bytes) { return forged(bytes, Algorithm, "\x05"); },
     "The encryption algorithm DIAMOND2 is not available in this engine.", true},
    {"unknown algorithm", [](const auto& bytes) { return forged(bytes, Algorithm, "\x11"); },
     "The encryption algorithm number 17 is not known.", true},
    {"memory on purpose", [](const auto& bytes) { return forged(bytes, DerivationMemory, "\xff\xff\xff\x7f"); },
     AbsurdCosts, true},
    {"passes on purpose", [](const auto& bytes) { return forged(bytes, DerivationPasses, "\xff\xff\xff\xff"); },
     AbsurdCosts, true},
    {"no lanes", [](const auto& bytes) { return forged(bytes, DerivationPasses + 4, std::string(1, '\0')); },
     AbsurdCosts, true},
    {"no head tag", [](const auto& bytes) { return bytes.substr(0, HeadEnd - 1); }, Damaged, true},
    {"head tag", [](const auto& bytes) { return flipped(bytes, HeadEnd - 1); }, Damaged},
    {"details", [](const auto& bytes) { return flipped(bytes, HeadEnd + 3); }, Damaged},
    {"no content", [](const auto& bytes) { return bytes.substr(0, Details); }, Damaged},
    {"first chunk", [](const auto& bytes) { return flipped(bytes, Details); }, Damaged},
    {"last byte", [](const auto& bytes) { return flipped(bytes, bytes.size() - 1); }, Damaged},
    {"cut off", [](const auto& bytes) { return bytes.substr(0, bytes.size() - 1); }, Damaged},
    {"without the last chunk", [](const auto& bytes) { return bytes.substr(0, Details + 262144 + 16); }, Damaged},
    {"something behind", [](const auto& bytes) { return bytes + '\0'; }, Damaged},
};

} // namespace

class DamagedFiles : public PasswordJobs
{
protected:
    /// The bytes of an encrypted file of two chunks. It is gone again.
    std::string sound()
    {
        const Path file = folder.addFile("letter.txt", manyBytes(300000));
        encrypt({file});
        const std::string bytes = contentOf(encrypted(file));
        fs::remove(encrypted(file));
        return bytes;
    }
};

TEST_F(DamagedFiles, areToldOneByOneAndTheSoundOneIsDecryptedAllTheSame)
{
    const std::string bytes = sound();
    std::vector<Path> files;
    for (const Damage& damage : Damages)
        files.push_back(folder.addFile(damage.name + ".zel", damage.damage(bytes)));
    files.push_back(folder.addFile("sound.zel", bytes));
    const auto before = contentBelow(folder.path());

    PasswordTerminal terminal(folder.addDecryptJob(files));
    bool asked = false;
    for (std::size_t i = 0; i < Damages.size(); ++i)
    {
        if (!Damages[i].beforeTheQuestion && !asked)
        {
            ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
            terminal.password(Password);
            asked = true;
        }
        ASSERT_TRUE(terminal.tells(files[i], Damages[i].message)) << Damages[i].name << '\n' << terminal.shown();
        terminal.skip();
    }
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();

    EXPECT_EQ(contentOf(folder.path() / "letter.txt"), manyBytes(300000));
    fs::remove(folder.path() / "letter.txt");
    EXPECT_EQ(contentBelow(folder.path()), before) << "a damaged file was changed, or left something";
}

TEST_F(DamagedFiles, ofNoBytesToSixtyFourAreRefusedBeforeAnyQuestion)
{
    const std::string bytes = sound();
    std::vector<Path> files;
    for (std::size_t size = 0; size <= 64; ++size)
        files.push_back(folder.addFile(std::to_string(size) + ".zel", bytes.substr(0, size)));
    PasswordTerminal terminal(folder.addDecryptJob(files, true));
    for (std::size_t size = 0; size <= 64; ++size)
    {
        ASSERT_TRUE(terminal.tells(files[size], size < 8 ? NoContainer : Damaged)) << size << terminal.shown();
        terminal.skip();
    }
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names().size(), files.size());
}

TEST_F(DamagedFiles, areDecryptedAtTheNextTryWhenTheyCameBackWhole)
{
    const std::string bytes = sound();
    const Path file = folder.addFile("letter.txt.zel", bytes.substr(0, 1000));
    PasswordTerminal terminal(folder.addDecryptJob({file}, true));
    ASSERT_TRUE(terminal.asksForPassword()) << terminal.shown();
    terminal.password(Password);
    ASSERT_TRUE(terminal.tells(file, Damaged)) << terminal.shown();
    folder.addFile("letter.txt.zel", bytes);
    terminal.tryAgain();
    EXPECT_EQ(terminal.exitCode(), 0) << terminal.shown();
    EXPECT_EQ(names(), std::vector<std::string>{"letter.txt"});
    EXPECT_EQ(contentOf(folder.path() / "letter.txt"), manyBytes(300000));
}
