#include "oracle/full_run.h"
#include "oracle/oracle.h"
#include "oracle/sealed.h"
#include "scenarios/sample_folder.h"
#include "windows/password_dialog.h"
#include "windows/running_program.h"

#include <gtest/gtest.h>
#include <random>
#include <thread>

// The real program, ended from outside at random moments of its work.

namespace
{

using namespace EndToEnd;
using namespace Faults;
using Clock = std::chrono::steady_clock;

constexpr int SkipFile = 5;
constexpr milliseconds EndLimit{60000};

struct Scenario
{
    const char* name;
    Order order;
    const char* kind;
    std::string fields;
};

std::vector<Scenario> scenarios()
{
    return {{"encryptAndDelete", encryption(Fate::Delete), "encrypt", R"("destiny": 1)"},
            {"encryptAndWipe", encryption(Fate::Wipe), "encrypt", R"("destiny": 2)"},
            {"packAndDelete", packing(Fate::Delete), "encrypt-sfx", R"("destiny": 1, "comment": "")"},
            {"decryptAndDelete", decryption(Fate::Delete), "decrypt", R"("mode": 1)"}};
}

class ARandomMoment : public testing::TestWithParam<std::size_t>
{
protected:
    /// The program, with its first question answered.
    std::unique_ptr<RunningProgram> start()
    {
        std::vector<Path> entries;
        for (const std::string& entry : scenario.order.entries)
            entries.push_back(files / entry);
        auto program = std::make_unique<RunningProgram>(programUnderTest(),
                                                        quoted(folder.addJob(scenario.kind, entries, scenario.fields)));
        const PasswordDialog dialog = PasswordDialog::of(*program);
        EXPECT_TRUE(dialog);
        dialog.typeKeyFile(key.wstring());
        dialog.click(PasswordDialog::Proceed);
        return program;
    }

    /// Lets the program end by itself; files with a problem are skipped, and a key that is asked for again is given.
    void runToItsEnd()
    {
        putFiles(files, state);
        const auto program = startAnswering();
        EXPECT_EQ(program->exitCode(EndLimit), 0);
        state = filesBelow(files);
    }

    std::unique_ptr<RunningProgram> startAnswering()
    {
        std::vector<Path> entries;
        for (const std::string& entry : scenario.order.entries)
            entries.push_back(files / entry);
        auto program = std::make_unique<RunningProgram>(programUnderTest(),
                                                        quoted(folder.addJob(scenario.kind, entries, scenario.fields)));
        EXPECT_TRUE(waitUntil([&] { return !answer(*program); }, EndLimit)) << "it hangs";
        return program;
    }

    /// False once the program has ended.
    bool answer(const RunningProgram& program)
    {
        for (const Window& window : program.visibleWindows())
        {
            const std::wstring caption = window.caption();
            if (caption == L"File Error Occured" || caption == L"File Problem")
                window.click(SkipFile);
        }
        if (!isKeyGiven_)
        {
            const PasswordDialog dialog = openDialog(program);
            if (dialog)
            {
                isKeyGiven_ = true;
                dialog.typeKeyFile(key.wstring());
                dialog.click(PasswordDialog::Proceed);
            }
        }
        return program.isRunning();
    }

    static PasswordDialog openDialog(const RunningProgram& program)
    {
        for (const Window& window : program.visibleWindows())
        {
            const PasswordDialog dialog(window);
            if (dialog.header().starts_with(L"Please enter"))
                return dialog;
        }
        return PasswordDialog(Window());
    }

    const Scenario scenario = scenarios().at(GetParam());
    const SampleFolder folder;
    const Path files = folder.path() / "files";
    const Path key = folder.addFile("tested.zelkey", testedKeyFile());
    Files state;
    bool isKeyGiven_ = false;
};

TEST_P(ARandomMoment, mayBeTheLastOne)
{
    std::mt19937 random(std::random_device{}());
    milliseconds longest{600};
    const int moments = isFullRun() ? 60 : 8;
    int killed = 0;
    for (int count = 0; count < moments && !HasFailure(); ++count)
    {
        putFiles(files, scenario.order.before);
        auto program = start();
        std::this_thread::sleep_for(
            milliseconds(std::uniform_int_distribution<int>(0, static_cast<int>(longest.count()))(random)));
        killed += program->isRunning() ? 1 : 0;
        program.reset(); // ends it
        state = filesBelow(files);
        const Files between = state;
        EXPECT_EQ(textOf(complaints(scenario.order, between)), "");
        isKeyGiven_ = false;
        runToItsEnd();
        EXPECT_EQ(textOf(complaintsAtEnd(scenario.order, between, state)), "");
    }
    EXPECT_GT(killed, moments / 4) << "it was over each time";
}

INSTANTIATE_TEST_SUITE_P(OfAJob, ARandomMoment, testing::Range(std::size_t{0}, scenarios().size()),
                         [](const auto& number) { return std::string(scenarios()[number.param].name); });

} // namespace
