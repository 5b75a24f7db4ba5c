#include "platform/handles.h"
#include "platform/posix/testing_store.h"

#include <sys/mman.h>
#include <sys/wait.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>

// Many who write one store at once.

using namespace Platform;

namespace
{

using Clock = std::chrono::steady_clock;
using RegistrySharing = TestingStore;

constexpr std::size_t Writers = 10;
constexpr std::size_t Readers = 2;

std::chrono::milliseconds duration()
{
    const char* const seconds = std::getenv("JOBRUNNER_CONCURRENCY_SECONDS");
    return std::chrono::seconds(seconds && *seconds ? std::atoi(seconds) : 1);
}

/// What the processes tell one another; in memory that all of them share.
struct Counts
{
    std::atomic<bool> isOver;
    std::atomic<std::uint32_t> written[Writers];
    std::atomic<std::uint32_t> reads;
};

std::uint32_t numberOf(const RegistryValue* value)
{
    std::uint32_t number = 0;
    if (value && value->data.size() == sizeof number)
        std::memcpy(&number, value->data.data(), sizeof number);
    return number;
}

std::wstring keyOf(std::size_t writer)
{
    return L"Software\\writer " + std::to_wstring(writer);
}

std::uint32_t setNumber(Registry& registry, RegistryHandle key, const wchar_t* name, std::uint32_t number)
{
    return registry.setValue(key, name, ValueDword, &number, sizeof number);
}

/// Counts in a key of its own: first in one value, then in the other, and makes and deletes a key in between. Gives
/// false as soon as something goes wrong.
bool writeUntilItIsOver(std::size_t writer, Counts& counts)
{
    RegistryStore store(folderOfTest, std::chrono::seconds(60));
    RegistryOnTree registry(store);
    RegistryHandle key = ClosedKey;
    if (registry.createKey(CurrentUser, keyOf(writer), 0, KeyAllAccess, key) != 0)
        return false;
    for (std::uint32_t number = 1; !counts.isOver; ++number)
    {
        RegistryHandle passing = ClosedKey;
        if (setNumber(registry, key, L"first", number) != 0 || setNumber(registry, key, L"second", number) != 0 ||
            registry.createKey(key, L"passing", 0, KeyRead, passing) != 0 ||
            registry.deleteSubKey(key, L"passing") != 0 || registry.closeKey(passing) != 0)
            return false;
        std::uint32_t read = 0;
        std::uint32_t type = 0;
        std::uint32_t size = sizeof read;
        if (registry.queryValue(key, L"second", type, &read, size) != 0 || read != number)
            return false;
        counts.written[writer] = number;
    }
    return registry.closeKey(key) == 0;
}

/// Sees nothing but whole trees, in which no writer ever goes back.
bool readUntilItIsOver(Counts& counts)
{
    RegistryStore store(folderOfTest);
    std::uint32_t last[Writers] = {};
    const auto isWhole = [&last](const RegistryTree& tree)
    {
        for (std::size_t writer = 0; writer < Writers; ++writer)
        {
            RegistryKeyId key = 0;
            if (tree.open(RegistryTree::Root, u"Software\\writer " + std::u16string(1, char16_t('0' + writer)), false,
                          key) != 0)
                continue;
            const std::uint32_t first = numberOf(tree.findValue(key, u"first"));
            const std::uint32_t second = numberOf(tree.findValue(key, u"second"));
            if (first < last[writer] || first - second > 1)
                return 1u;
            last[writer] = first;
        }
        return 0u;
    };
    for (; !counts.isOver; ++counts.reads)
        if (store.read(isWhole) != 0)
            return false;
    return true;
}

/// Memory that stays shared when a process forks.
Counts* sharedCounts()
{
    void* const memory = ::mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : new (memory) Counts{};
}

template <class Work> pid_t startProcess(Work work)
{
    const pid_t process = ::fork();
    if (process == 0)
        ::_exit(work() ? 0 : 1);
    return process;
}

void expectNothingLost(RegistryStore& store, const Counts& counts)
{
    const auto check = [&counts](const RegistryTree& tree)
    {
        for (std::size_t writer = 0; writer < Writers; ++writer)
        {
            RegistryKeyId key = 0;
            EXPECT_EQ(tree.open(RegistryTree::Root, u"Software\\writer " + std::u16string(1, char16_t('0' + writer)),
                                false, key),
                      0u);
            EXPECT_GT(counts.written[writer], 0u) << writer;
            EXPECT_EQ(numberOf(tree.findValue(key, u"first")), counts.written[writer]) << writer;
            EXPECT_EQ(numberOf(tree.findValue(key, u"second")), counts.written[writer]) << writer;
            EXPECT_TRUE(tree.find(key)->keys.empty());
        }
        return 0u;
    };
    EXPECT_EQ(store.read(check), 0u);
}

void tell(const char* what, const Counts& counts, double seconds)
{
    std::uint64_t rounds = 0;
    for (const auto& written : counts.written)
        rounds += written;
    std::printf("%s: %.0f changes and %.0f reads in a second\n", what, static_cast<double>(rounds) * 4 / seconds,
                counts.reads / seconds);
}

} // namespace

TEST_F(RegistrySharing, tenProcessesThatWriteAtOnceLoseAndDamageNothing)
{
    Counts* const counts = sharedCounts();
    ASSERT_NE(counts, nullptr);
    const auto start = Clock::now();
    std::vector<pid_t> processes;
    for (std::size_t writer = 0; writer < Writers; ++writer)
        processes.push_back(startProcess([&] { return writeUntilItIsOver(writer, *counts); }));
    for (std::size_t reader = 0; reader < Readers; ++reader)
        processes.push_back(startProcess([&] { return readUntilItIsOver(*counts); }));
    std::this_thread::sleep_for(duration());
    // A slow disk may need longer for one round of everybody.
    const auto latest = Clock::now() + std::chrono::seconds(30);
    while (Clock::now() < latest && std::count(std::begin(counts->written), std::end(counts->written), 0u) > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const std::chrono::duration<double> time = Clock::now() - start;
    counts->isOver = true;
    for (const pid_t process : processes)
    {
        int status = 0;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        EXPECT_EQ(status, 0);
    }
    expectNothingLost(store_, *counts);
    tell("Ten processes", *counts, time.count());
    ::munmap(counts, sizeof *counts);
}

TEST_F(RegistrySharing, aProcessThatIsStoppedWhileItWritesLeavesAWholeStore)
{
    Counts* const counts = sharedCounts();
    ASSERT_NE(counts, nullptr);
    std::uint32_t before = 0;
    for (int round = 0; round < 8; ++round)
    {
        const pid_t process = startProcess([&] { return writeUntilItIsOver(0, *counts); });
        while (counts->written[0] < 3)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::microseconds(round * 400));
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
        const std::uint32_t written = counts->written[0].exchange(0);
        const auto isWhole = [&](const RegistryTree& tree)
        {
            RegistryKeyId key = 0;
            const std::uint32_t error = tree.open(RegistryTree::Root, u"Software\\writer 0", false, key);
            before = numberOf(tree.findValue(key, u"first"));
            return error;
        };
        EXPECT_EQ(store_.read(isWhole), 0u);
        EXPECT_GE(before, written);
        EXPECT_LE(before, written + 1);
        EXPECT_EQ(set(L"value", std::to_string(round)), 0u); // the lock has ended with the process
        EXPECT_EQ(filesIn(folder()), (std::vector<std::string>{"registry", "registry.lock"}));
    }
    ::munmap(counts, sizeof *counts);
}

// Races are the sanitizer's to find.
TEST_F(RegistrySharing, threadsThatShareAStoreLoseAndDamageNothing)
{
    Counts counts{};
    RegistryStore shared(folderOfTest, std::chrono::seconds(60));
    RegistryOnTree registry(shared);
    const auto write = [&](std::size_t writer)
    {
        RegistryHandle key = ClosedKey;
        EXPECT_EQ(registry.createKey(CurrentUser, keyOf(writer), 0, KeyAllAccess, key), 0u);
        for (std::uint32_t number = 1; number <= 8; ++number)
        {
            EXPECT_EQ(setNumber(registry, key, L"first", number), 0u);
            EXPECT_EQ(setNumber(registry, key, L"second", number), 0u);
            counts.written[writer] = number;
        }
        EXPECT_EQ(registry.closeKey(key), 0u);
    };
    std::vector<std::thread> threads;
    for (std::size_t writer = 0; writer < Writers; ++writer)
        threads.emplace_back(write, writer);
    std::thread reader(
        [&]
        {
            std::uint32_t type = 0;
            std::uint32_t size = 0;
            while (!counts.isOver)
                EXPECT_EQ(registry.queryValue(CurrentUser, L"none", type, nullptr, size), ErrorFileNotFound);
        });
    for (std::thread& thread : threads)
        thread.join();
    counts.isOver = true;
    reader.join();
    expectNothingLost(store_, counts);
    EXPECT_EQ(registry.openHandles(), 0u);
}
