#include "windows/dialog_job.h"
#include "windows/restless_user.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace fs = std::filesystem;
using namespace EndToEnd;

namespace
{

constexpr int UsualSeconds = 15;
constexpr std::size_t LargeSize = std::size_t{48} << 20;
/// From then on the user wants the job to come to its end.
constexpr int PatientAfter = 25; // deeds
constexpr std::chrono::seconds PatientFrom{30};
constexpr std::chrono::seconds EndLimit{120};
constexpr milliseconds DialogLimit{10000};

std::string manyBytes(std::size_t size, char first)
{
    std::string bytes(size, first);
    for (std::size_t i = 0; i < size; i += 4096)
        bytes[i] = static_cast<char>(i >> 12);
    return bytes;
}

struct Sample
{
    std::wstring name;
    std::string content;
    std::wstring password;
};

} // namespace

/// Encryptions and decryptions with wrong passwords and names that are taken, whose user answers, pauses, cancels and
/// closes as it comes to him.
class PromptSoak : public DialogJob
{
protected:
    /// Locks the samples once; each round works on copies.
    void SetUp() override
    {
        for (const Sample& sample : samples)
            lock({folder.addFile(sample.name, sample.content)}, sample.password);
    }

    Path lockedSample(const Sample& sample) const { return encrypted(folder.path() / sample.name); }

    void runRound()
    {
        round = std::make_unique<SampleFolder>();
        decrypting = user->oneIn(2);
        deletes = user->oneIn(2);
        std::vector<Path> files;
        for (const Sample& sample : samples)
        {
            const Path source = sourceOf(sample);
            if (decrypting)
                fs::copy_file(lockedSample(sample), source);
            else
                round->addFile(sample.name, sample.content);
            files.push_back(source);
            if (user->oneIn(3))
                round->addFile(resultOf(sample).filename(), "in the way");
        }
        start(decrypting ? round->addDecryptJob(files, deletes) : round->addEncryptJob(files, deletes ? 1 : 0));
        ASSERT_NO_FATAL_FAILURE(useUntilTheEnd());
        EXPECT_EQ(program->exitCode(LongLimit), 0);
        EXPECT_TRUE(program->visibleWindows().empty());
        for (const Sample& sample : samples)
            expectWhole(sample);
        expectNoOtherFiles();
        ++rounds;
    }

    Path sourceOf(const Sample& sample) const
    {
        const Path plain = round->path() / sample.name;
        return decrypting ? encrypted(plain) : plain;
    }
    Path resultOf(const Sample& sample) const
    {
        const Path plain = round->path() / sample.name;
        return decrypting ? plain : encrypted(plain);
    }

    bool isAsked() const
    {
        for (const Window& window : program->visibleWindows())
        {
            if (window.hasItem(TryAgainButton))
                return true;
        }
        return false;
    }

    void useUntilTheEnd()
    {
        user->sitsDownAt(Window());
        user->looksOutFor([this] { return isAsked(); });
        deeds = 0;
        began = std::chrono::steady_clock::now();
        while (program->isRunning())
        {
            ASSERT_LT(std::chrono::steady_clock::now() - began, EndLimit) << "the job does not come to its end";
            ASSERT_NO_FATAL_FAILURE(useOneWindow());
        }
    }

    bool patient() const { return deeds > PatientAfter || std::chrono::steady_clock::now() - began > PatientFrom; }

    void useOneWindow()
    {
        const std::vector<Window> windows = program->visibleWindows();
        for (const Window& window : windows)
        {
            if (window.hasItem(PauseJobButton))
                user->sitsDownAt(window);
            else if (window.hasItem(TryAgainButton))
                return answer(window);
        }
        if (!user->progress().exists())
            return std::this_thread::sleep_for(milliseconds(20));
        ++deeds;
        useProgress();
        ASSERT_TRUE(user->isAnswered()) << "the window is stuck";
    }

    void useProgress()
    {
        if (patient())
        {
            user->resumeIfPaused();
            std::this_thread::sleep_for(milliseconds(100));
        }
        else if (user->oneIn(30))
        {
            cancels += user->cancel() ? 1 : 0;
        }
        else
        {
            user->actOnce();
        }
    }

    /// Any dialog that asks something; it is gone afterwards, or there to be answered again.
    void answer(const Window& window)
    {
        const PasswordDialog password(window);
        if (hasEdit(window))
            answerPassword(password);
        else
            answerError(window);
        ++deeds;
        ++prompts;
        // Every answer ends a dialog, but for a key that goes astray.
        waitUntil([&] { return !window.exists(); }, DialogLimit);
    }

    static bool hasEdit(const Window& window)
    {
        return FindWindowExW(window.handle(), nullptr, L"paneexpl7::edit::editwithbuttons", nullptr) != nullptr;
    }

    void answerPassword(const PasswordDialog& asked)
    {
        const unsigned choice = patient() ? 1 : user->below(12);
        if (choice == 0)
            return asked.window().close();
        if (choice == 2 && !asked.isForNewEncryption())
            return asked.click(PasswordDialog::Ignore);
        if (choice == 3)
            return asked.window().press(VK_ESCAPE);
        const bool forNew = asked.isForNewEncryption();
        if (forNew)
            asked.typeNewPassword(L"secret");
        else
            asked.replacePassword(anyPassword());
        if (!forNew && user->oneIn(3))
            asked.window().press(VK_RETURN);
        else
            asked.click(PasswordDialog::Proceed);
    }

    std::wstring anyPassword()
    {
        const unsigned choice = user->below(patient() ? 2 : 3);
        return choice == 2 ? L"wrong" : samples[choice].password;
    }

    void answerError(const Window& error)
    {
        const unsigned choice = patient() ? 1 : user->below(6);
        if (choice == 0)
            return error.press(VK_ESCAPE);
        if (choice <= 2)
            return error.click(SkipFileButton);
        if (choice == 3)
            return error.click(AbortButton);
        if (choice == 4)
            removeObstacles();
        if (user->oneIn(2))
            error.press(VK_RETURN);
        else
            error.clickWithMouse(TryAgainButton);
    }

    void removeObstacles()
    {
        for (const Sample& sample : samples)
        {
            if (isObstacle(resultOf(sample)))
                fs::remove(resultOf(sample));
        }
    }

    static bool isObstacle(const Path& file)
    {
        std::error_code ignored;
        return fs::file_size(file, ignored) == std::string("in the way").size();
    }

    /// The source as it was, or a result that holds the same.
    void expectWhole(const Sample& sample)
    {
        const Path source = sourceOf(sample);
        const Path result = resultOf(sample);
        const bool sourceStays = fs::exists(source);
        const bool done = fs::exists(result) && !isObstacle(result);
        EXPECT_TRUE(sourceStays || (done && deletes)) << source;
        if (sourceStays)
        {
            EXPECT_TRUE(contentOf(source) == (decrypting ? contentOf(lockedSample(sample)) : sample.content));
        }
        if (done && decrypting)
        {
            EXPECT_TRUE(contentOf(result) == sample.content);
        }
        else if (done)
        {
            opened.push_back(sample);
        }
        filesDone += done ? 1 : 0;
    }

    void expectNoOtherFiles()
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(round->path()))
        {
            bool known = false;
            for (const Sample& sample : samples)
                known = known || entry.path() == sourceOf(sample) || entry.path() == resultOf(sample);
            EXPECT_TRUE(known) << entry.path();
        }
    }

    /// What a round has encrypted opens again.
    void openWhatWasEncrypted()
    {
        std::vector<Path> files;
        for (const Sample& sample : opened)
        {
            files.push_back(resultOf(sample));
            fs::remove(sourceOf(sample));
        }
        if (files.empty())
            return;
        startUpToDialog(round->addDecryptJob(files));
        proceedWithPassword(L"secret");
        expectEnd();
        for (const Sample& sample : opened)
            EXPECT_TRUE(contentOf(sourceOf(sample)) == sample.content) << sourceOf(sample);
        opened.clear();
    }

    const std::vector<Sample> samples = {{L"first.txt", "dear reader", L"one"},
                                         {L"large.bin", manyBytes(LargeSize, 'x'), L"two"},
                                         {L"third.txt", manyBytes(100'000, 'y'), L"one"}};
    std::unique_ptr<RestlessUser> user;
    std::unique_ptr<SampleFolder> round;
    std::vector<Sample> opened;
    bool decrypting = false;
    bool deletes = false;
    int deeds = 0;
    std::chrono::steady_clock::time_point began;
    int rounds = 0;
    int prompts = 0;
    int cancels = 0;
    int filesDone = 0;
    int actions = 0;
    int clicks = 0;
};

TEST_F(PromptSoak, endsEachJobInOrderWhateverIsAnsweredAndClicked)
{
    const auto end = std::chrono::steady_clock::now() + soakDuration(UsualSeconds);
    unsigned seed = firstSoakSeed();
    do
    {
        SCOPED_TRACE(seed);
        std::printf("seed %u\n", seed);
        user = std::make_unique<RestlessUser>(seed++);
        ASSERT_NO_FATAL_FAILURE(runRound());
        ASSERT_NO_FATAL_FAILURE(openWhatWasEncrypted());
        actions += user->actions();
        clicks += user->clicks();
    } while (!HasFailure() && std::chrono::steady_clock::now() < end);
    std::printf("%d jobs, %d prompts answered, %d jobs cancelled, %d files done, %d actions, %d clicks\n", rounds,
                prompts, cancels, filesDone, actions, clicks);
}
