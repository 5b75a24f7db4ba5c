#include "vaultcore/package/testing_sfx.h"

// A disk that refuses any one step of the way: nothing is lost, nothing is left behind, and the failure names its
// cause.

namespace VaultCore
{
namespace
{

struct Refusal
{
    FailureCause cause;
    const wchar_t* text;
};

class FailingDisk : public SfxTest, public testing::WithParamInterface<Refusal>
{
protected:
    /// Lets each operation of the kinds fail in turn, until one run has none left to fail.
    template <class Run, class Check>
    void forEachStep(const std::vector<std::string>& steps, const Run& run, const Check& untouched)
    {
        for (const std::string& step : steps)
        {
            int failed = 0;
            for (int number = 0;; ++number)
            {
                recorder.messages.clear();
                recorder.failed = 0;
                files.failures = {{step, {GetParam().cause, 1, number}}};
                run();
                files.failures.clear();
                if (recorder.failed == 0)
                    break;
                ++failed;
                EXPECT_EQ(recorder.messages, Log{GetParam().text}) << step << number;
                untouched();
                ASSERT_FALSE(HasFailure()) << step << number;
            }
            EXPECT_GT(failed, 0) << step;
        }
    }

    /// Two chunks of a container.
    const std::string text = std::string(300'000, 'x');
};

TEST_P(FailingDisk, duringAnEncryptionThatWipes)
{
    const fs::path source = inside / "a";
    const auto run = [&]
    {
        put(source, text);
        fs::remove(inside / "a.zel");
        order.destiny = DestinyWipe;
        encrypt({source});
    };
    const auto untouched = [&]
    {
        EXPECT_EQ(content(source), text);
        EXPECT_EQ(countIn(inside), 1U);
    };
    forEachStep({"create", "new write", "publish", "content a", "content a.zel", "read a", "read a.zel"}, run,
                untouched);
}

TEST_P(FailingDisk, duringADecryptionThatDeletes)
{
    provider.answer = [](IKey** key)
    {
        *key = testKey('k').release();
        return KeyProvided;
    };
    const fs::path encrypted = made(put(inside / "a", text));
    const std::string whole = content(encrypted);
    const auto run = [&]
    {
        put(encrypted, whole);
        fs::remove(inside / "a");
        decrypt({encrypted}, true);
    };
    const auto untouched = [&]
    {
        EXPECT_EQ(content(encrypted), whole);
        EXPECT_EQ(countIn(inside), 1U);
    };
    forEachStep({"create", "new write", "publish", "content a.zel", "content a", "read a.zel", "read a"}, run,
                untouched);
}

TEST_P(FailingDisk, duringThePackingOfOneFileThatIsWiped)
{
    const fs::path source = inside / "a";
    const auto run = [&]
    {
        put(source, text);
        fs::remove(inside / "a.exe");
        pack({source}, DestinyWipe);
    };
    const auto untouched = [&]
    {
        EXPECT_EQ(content(source), text);
        EXPECT_EQ(countIn(inside), 1U);
    };
    forEachStep({"create", "new write", "publish", "content a", "content a.exe", "read a", "read a.exe"}, run,
                untouched);
}

INSTANTIATE_TEST_SUITE_P(
    Causes, FailingDisk,
    testing::Values(Refusal{FailureCause::Full, L"There is no space left on the disk."},
                    Refusal{FailureCause::TooLarge,
                            L"The disk, or a limit of the system, allows no file as large as this one."}));

} // namespace
} // namespace VaultCore
