#include "commands/watcher/open_document.h"

#include "fakes/fake_platform.h"

#include <gtest/gtest.h>

#include <algorithm>

// The steps that every watch takes, whatever the application does.

using namespace Fakes;
using namespace JobRunner;

namespace
{

using Calls = std::vector<std::wstring>;

constexpr std::uint32_t Self = 100;
const wchar_t* const Document = L"C:\\Docs\\report.txt";
const wchar_t* const Application = L"C:\\Apps\\editor.exe";

class OpeningADocument : public testing::Test
{
protected:
    OpeningADocument()
    {
        world.files.files[Document] = {};
        world.shell.executable = Application;
        world.shell.onExecute = [](Platform::ShellExecution&) { return true; };
        world.processes.start({Self, 0});
    }

    /// Where a call stands among the others.
    std::ptrdiff_t place(const std::wstring& call, int occurrence = 1) const
    {
        const Calls calls = world.log.calls();
        auto found = calls.begin() - 1;
        for (int i = 0; i < occurrence && (i == 0 || found != calls.end()); ++i)
            found = std::find(found + 1, calls.end(), call);
        return found == calls.end() ? -1 : found - calls.begin();
    }

    FakePlatform world;
};

TEST_F(OpeningADocument, looksAroundBeforeAndBehindTheStart)
{
    EXPECT_TRUE(OpenDocumentAndWait(Document));
    const Calls order = {L"findExecutable C:\\Docs\\report.txt", L"enumWindows", L"foregroundWindow",
                         L"execute C:\\Docs\\report.txt in C:\\Docs\\"};
    for (std::size_t i = 1; i < order.size(); ++i)
        EXPECT_LT(place(order[i - 1]), place(order[i])) << i;
    EXPECT_EQ(place(order[0]), 7); // behind the names of the functions
    EXPECT_LT(place(order[3]), place(L"sleep 10"));
    EXPECT_LT(place(L"sleep 10", 50), place(L"snapshot 2 0", 3));
    EXPECT_LT(place(L"snapshot 2 0", 3), place(L"snapshot 4 0", 2));
    EXPECT_LT(place(L"snapshot 4 0", 2), place(L"enumWindows", 2));
    EXPECT_LT(place(L"enumWindows", 2), place(L"priority function"));
    EXPECT_TRUE(world.handles.open().empty());
}

TEST_F(OpeningADocument, endsWhenTheShellRefuses)
{
    world.shell.onExecute = nullptr;
    EXPECT_FALSE(OpenDocumentAndWait(Document));
    EXPECT_EQ(world.log.calls().back(), L"execute C:\\Docs\\report.txt in C:\\Docs\\");
    EXPECT_EQ(world.threads.elapsed(), 0);
}

TEST_F(OpeningADocument, givesTheShellTheFolderOfTheDocument)
{
    const auto executed = [this](const wchar_t* path)
    {
        world.files.files[path] = {};
        world.log.clear();
        OpenDocumentAndWait(path);
        return world.log.callsOf(L"execute").at(0);
    };
    EXPECT_EQ(executed(L"C:\\Docs\\a folder\\"), L"execute C:\\Docs\\a folder\\ in C:\\Docs\\");
    EXPECT_EQ(executed(L"report.txt"), L"execute report.txt in ");
    EXPECT_EQ(executed(L"\\\\server\\share\\[a] b.txt"),
              L"execute \\\\server\\share\\[a] b.txt in \\\\server\\share\\");
}

TEST_F(OpeningADocument, knowsItsApplicationOnlyFromAResultAboveThirtyTwo)
{
    world.processes.start({50, 10, Application, {}, {51}});
    for (const std::intptr_t result : {32, 33})
    {
        world.shell.findResult = result;
        world.processes.running.back().threads = {51};
        world.shell.onExecute = [this](Platform::ShellExecution&)
        {
            world.processes.running.back().threads.push_back(52);
            const std::int64_t end = world.threads.elapsed() + 20000;
            world.threads.at(end, [this] { world.processes.running.back().threads.clear(); });
            return true;
        };
        const std::int64_t begin = world.threads.elapsed();
        EXPECT_TRUE(OpenDocumentAndWait(Document));
        // Without an application its threads are not seen.
        EXPECT_EQ(world.threads.elapsed() - begin, result == 32 ? 6000 : 20000) << result;
        world.threads.advance(20000);
    }
}

TEST_F(OpeningADocument, withAnEmptyNameAsksTheShellAllTheSame)
{
    world.shell.onExecute = nullptr;
    EXPECT_FALSE(OpenDocumentAndWait(L""));
    EXPECT_EQ(world.log.calls().back(), L"execute  in ");
}

} // namespace
