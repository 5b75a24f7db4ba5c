#include "windows/progress/progress_display.h"

#include "fakes/fake_platform.h"
#include "windows/progress/i_progress_window_view.h"
#include "windows/progress/progress_texts.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

using namespace JobRunner;

namespace
{

/// What the user sees.
struct Screen
{
    std::wstring file = L"First progress bar:";
    int fileBar = 0;
    bool marquee = false;
    std::wstring total = L"Second progress bar:";
    int totalBar = 0;
    std::wstring title = L"Progress Window";
    TaskbarState taskbar = TaskbarState::Indeterminate;
    int taskbarValue = 0;
    std::wstring elapsed = L"n/a";
    std::wstring left = L"n/a";
    std::wstring speed = L"n/a";
    std::wstring bytes = L"n/a";
    std::wstring totalBytes = L"n/a";
    bool visible = false;
    bool paused = false;
};

template <class Value> void put(Value& shown, const std::optional<Value>& change)
{
    shown = change.value_or(shown);
}

void apply(Screen& screen, const ProgressChanges& changes)
{
    put(screen.file, changes.fileText);
    put(screen.fileBar, changes.filePosition);
    put(screen.marquee, changes.marquee);
    put(screen.total, changes.totalText);
    put(screen.totalBar, changes.totalPosition);
    put(screen.title, changes.title);
    put(screen.taskbar, changes.taskbar);
    if (changes.taskbar == TaskbarState::Value)
        screen.taskbarValue = changes.taskbarValue;
    put(screen.elapsed, changes.elapsedTime);
    put(screen.left, changes.timeLeft);
    put(screen.speed, changes.speed);
    put(screen.bytes, changes.elapsedBytes);
    put(screen.totalBytes, changes.totalBytes);
    put(screen.visible, changes.visible);
    put(screen.paused, changes.paused);
}

void expectSame(const Screen& one, const Screen& other)
{
    EXPECT_EQ(one.file, other.file);
    EXPECT_EQ(one.fileBar, other.fileBar);
    EXPECT_EQ(one.marquee, other.marquee);
    EXPECT_EQ(one.total, other.total);
    if (!one.marquee)
    {
        EXPECT_EQ(one.totalBar, other.totalBar);
    }
    EXPECT_EQ(one.title, other.title);
    EXPECT_EQ(one.taskbar, other.taskbar);
    if (one.taskbar == TaskbarState::Value)
    {
        EXPECT_EQ(one.taskbarValue, other.taskbarValue);
    }
    EXPECT_EQ(one.elapsed, other.elapsed);
    EXPECT_EQ(one.left, other.left);
    EXPECT_EQ(one.speed, other.speed);
    EXPECT_EQ(one.bytes, other.bytes);
    EXPECT_EQ(one.totalBytes, other.totalBytes);
    EXPECT_EQ(one.visible, other.visible);
    EXPECT_EQ(one.paused, other.paused);
}

/// Writes each value to the screen at the moment it is set.
class WriteThrough
{
public:
    void setFile(const std::wstring& name, double percent, bool wiping)
    {
        if (name == name_ && percent == filePercent_)
            return;
        screen.file = fileProgressText(name, percent, wiping);
        screen.fileBar = static_cast<int>(percent);
        name_ = name;
        filePercent_ = percent;
    }

    void setTotal(double percent, bool force)
    {
        if (percent == totalPercent_ && !force)
            return;
        const int whole = static_cast<int>(percent);
        screen.total = totalProgressText(percent);
        screen.marquee = percent == UnknownPercent;
        screen.taskbar = screen.marquee ? TaskbarState::Indeterminate : TaskbarState::Value;
        if (!screen.marquee)
            screen.totalBar = screen.taskbarValue = whole;
        screen.title = L"Deletion";
        if (totalBytes_ != 0)
            screen.title += L" (" + std::to_wstring(whole) + L"%)";
        totalPercent_ = percent;
    }

    void setTotalBytes(std::uint64_t bytes)
    {
        if (bytes != totalBytes_)
            screen.totalBytes = bytesText(bytes);
        totalBytes_ = bytes;
    }

    void setElapsedTime(int seconds) { write(screen.elapsed, elapsed_, seconds, timeText); }
    void setElapsedBytes(std::uint64_t bytes) { write(screen.bytes, bytes_, bytes, bytesText); }
    void setSpeed(std::uint64_t speed) { write(screen.speed, speed_, speed, speedText); }
    void setTimeLeft(int seconds) { screen.left = timeText(seconds); }

    Screen screen;

private:
    template <class Number> void write(std::wstring& text, Number& last, Number number, std::wstring (*format)(Number))
    {
        if (number != last)
            text = format(number);
        last = number;
    }

    std::wstring name_;
    double filePercent_ = 0;
    double totalPercent_ = 0;
    std::uint64_t totalBytes_ = 0;
    int elapsed_ = 0;
    std::uint64_t bytes_ = 0;
    std::uint64_t speed_ = 0;
};

/// Tells both displays the same random thing.
void setOne(std::mt19937& random, ProgressDisplay& display, WriteThrough& reference)
{
    const auto below = [&random](unsigned limit) { return static_cast<int>(random() % limit); };
    const int number = below(3);
    const std::uint64_t bytes = static_cast<std::uint64_t>(number) << 20;
    const double percent = below(4) - 1; // from unknown to 2
    const bool flag = below(2) == 1;
    const wchar_t* name = number == 0 ? L"" : number == 1 ? L"a" : L"b";
    switch (below(9))
    {
    case 0:
        std::ignore = display.setFileProgress(name, number, flag);
        return reference.setFile(name, number, flag);
    case 1:
        std::ignore = display.setTotalProgress(percent, flag);
        return reference.setTotal(percent, flag);
    case 2:
        std::ignore = display.setTotalBytes(bytes);
        return reference.setTotalBytes(bytes);
    case 3:
        std::ignore = display.setElapsedTime(number);
        return reference.setElapsedTime(number);
    case 4:
        std::ignore = display.setElapsedBytes(bytes);
        return reference.setElapsedBytes(bytes);
    case 5:
        std::ignore = display.setSpeed(bytes);
        return reference.setSpeed(bytes);
    case 6:
        std::ignore = display.setTimeLeft(number - 1);
        return reference.setTimeLeft(number - 1);
    case 7:
        std::ignore = display.setVisible(flag);
        reference.screen.visible = flag;
        return;
    default:
        std::ignore = display.setPaused(flag);
        reference.screen.paused = flag;
    }
}

} // namespace

TEST(ProgressCoalescing, endsWithTheDisplayThatWritingEachValueGives)
{
    Fakes::FakePlatform platform;
    for (unsigned seed = 0; seed < 500 && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        ProgressDisplay display(OperationDelete);
        WriteThrough reference;
        Screen screen;
        for (int round = 0; round < 20; ++round)
        {
            for (auto count = random() % 12; count > 0; --count)
                setOne(random, display, reference);
            apply(screen, display.take());
            expectSame(screen, reference.screen);
        }
    }
}
