#include "vaultcore/work_ahead.h"

#include "vaultcore/testing_support.h"

#include <atomic>
#include <set>

// Small files that are worked on together, before their turn.

namespace VaultCore
{
namespace
{

/// Makes "x.made" of each "x", with the name as content. Names listed in `refused` fail.
class Maker final : public IResultMaker
{
public:
    explicit Maker(IFileSystem& files) : files_(files) {}

    std::unique_ptr<ResultWork> make(const JobItem& item) override
    {
        ++made;
        const NativeText name = nameOf(item.place);
        if (refused.contains(name))
            throw FileFailure(FailureCause::Denied, 0);
        auto work = std::make_unique<ResultWork>();
        const Place folder = parentOf(item.place);
        work->target = childOf(folder, fs::path(name).concat(".made").native());
        work->file = files_.createNew(childOf(folder, fs::path(name).concat(".new").native()));
        const std::string text = fs::path(name).string();
        work->file->write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        return work;
    }

    void check(ResultWork& work) override
    {
        ++checked;
        if (wrong.contains(nameOf(work.target)))
            throw FileFailure(FailureCause::ResultDiffers, 0);
    }

    void takeBack(ResultWork& work) override { files_.remove(work.target, FileKind::File); }

    std::atomic<int> made = 0;
    std::atomic<int> checked = 0;
    std::set<NativeText> refused;
    std::set<NativeText> wrong;

private:
    IFileSystem& files_;
};

class WorkAheadTest : public JobTest
{
protected:
    JobItem item(const std::string& name, std::uint64_t size = 1)
    {
        JobItem made;
        made.place = files.locate(wide(inside / name));
        made.info.size = size;
        return made;
    }

    /// Files called "a", "b" and so on.
    std::vector<JobItem> items(int count)
    {
        std::vector<JobItem> list;
        for (int i = 0; i < count; ++i)
            list.push_back(item(std::string(1, static_cast<char>('a' + i))));
        return list;
    }

    /// The turn of every file: the names of the results, "-" for a file that is left to itself.
    std::string turns(WorkAhead& ahead, const std::vector<JobItem>& list)
    {
        std::string names;
        for (std::size_t i = 0; i < list.size(); ++i)
        {
            const auto work = ahead.take(std::span(list).subspan(i));
            names += work ? content(inside / nameOf(work->target)) : "-";
            EXPECT_TRUE(!work || (!work->file && work->result.kind == FileKind::File && work->result.size == 1));
        }
        return names;
    }

    std::string namesInside() const
    {
        std::set<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(inside))
            names.insert(entry.path().filename().string());
        std::string all;
        for (const std::string& name : names)
            all += name + ' ';
        return all;
    }

    WatchedFileSystem files;
    Maker maker{files};
};

TEST_F(WorkAheadTest, givesEachResultUnderItsNameWhenItsTurnComes)
{
    WorkAhead ahead(files, maker, {.fewestFiles = 2});
    const auto list = items(5);
    const auto first = ahead.take(list);
    ASSERT_TRUE(first);
    EXPECT_EQ(namesInside(), "a.made b.made c.made d.made e.made ");
    EXPECT_EQ(turns(ahead, {list.begin() + 1, list.end()}), "bcde");
    EXPECT_EQ(maker.made, 5);
    EXPECT_EQ(maker.checked, 5);
}

TEST_F(WorkAheadTest, leavesAFewFilesToThemselves)
{
    WorkAhead ahead(files, maker);
    EXPECT_EQ(turns(ahead, items(4)), "----");
    EXPECT_EQ(maker.made, 0);
    EXPECT_EQ(turns(ahead, items(5)), "abcde");
}

TEST_F(WorkAheadTest, leavesAFileThatFailsToItsTurnAndLetsTheOthersWait)
{
    maker.refused = {fs::path("b").native()};
    WorkAhead ahead(files, maker, {.fewestFiles = 2});
    const auto list = items(4);
    EXPECT_TRUE(ahead.take(list));
    EXPECT_EQ(namesInside(), "a.made ") << "what follows is in the way of the one that failed";
    EXPECT_EQ(turns(ahead, {list.begin() + 1, list.end()}), "-cd");
    EXPECT_EQ(namesInside(), "a.made c.made d.made ");
}

TEST_F(WorkAheadTest, neverReplacesAFileThatHasTheName)
{
    put(inside / "b.made", "mine");
    WorkAhead ahead(files, maker, {.fewestFiles = 2});
    EXPECT_EQ(turns(ahead, items(4)), "a-cd");
    EXPECT_EQ(content(inside / "b.made"), "mine");
    EXPECT_EQ(namesInside(), "a.made b.made c.made d.made ");
}

TEST_F(WorkAheadTest, leavesNothingBehindWhenTheDeviceRefusesTheContents)
{
    files.failures["flush files"] = {FailureCause::Full};
    WorkAhead ahead(files, maker, {.fewestFiles = 2});
    EXPECT_EQ(turns(ahead, items(3)), "---");
    EXPECT_EQ(namesInside(), "");
    EXPECT_EQ(maker.checked, 0);
}

TEST_F(WorkAheadTest, takesTheResultsBackWhenTheDeviceRefusesTheNames)
{
    files.failures["flush files"] = {FailureCause::Device, 1, 1};
    WorkAhead ahead(files, maker, {.fewestFiles = 2});
    EXPECT_EQ(turns(ahead, items(3)), "---");
    EXPECT_EQ(namesInside(), "");
}

TEST_F(WorkAheadTest, takesAResultBackThatIsNotRight)
{
    maker.wrong = {fs::path("b.made").native()};
    WorkAhead ahead(files, maker, {.fewestFiles = 2});
    const auto list = items(4);
    EXPECT_TRUE(ahead.take(list));
    EXPECT_EQ(namesInside(), "a.made ");
    EXPECT_EQ(turns(ahead, {list.begin() + 1, list.end()}), "-cd");
    EXPECT_EQ(namesInside(), "a.made c.made d.made ");
}

TEST_F(WorkAheadTest, takesBackWhatHasNotHadItsTurn)
{
    {
        WorkAhead ahead(files, maker, {.fewestFiles = 2});
        EXPECT_TRUE(ahead.take(items(3)));
        ahead.takeBackRest();
        EXPECT_EQ(namesInside(), "a.made ");
        const auto more = std::vector{item("x"), item("y")};
        EXPECT_TRUE(ahead.take(more));
    }
    EXPECT_EQ(namesInside(), "a.made x.made ");
}

TEST_F(WorkAheadTest, endsABatchAtItsLimits)
{
    const auto madeOf = [&](AheadLimits limits, const std::vector<JobItem>& list)
    {
        maker.made = 0;
        WorkAhead(files, maker, limits).take(list);
        return maker.made.load();
    };
    EXPECT_EQ(madeOf({.mostFiles = 3, .fewestFiles = 2}, items(5)), 3);
    fs::remove(inside / "a.made");
    EXPECT_EQ(madeOf({.bytes = 2, .fewestFiles = 2}, items(5)), 2);
    fs::remove(inside / "a.made");
    const auto withLargeOne = std::vector{item("a"), item("b"), item("c", 11), item("d")};
    EXPECT_EQ(madeOf({.largestFile = 10, .fewestFiles = 2}, withLargeOne), 2);
    fs::remove(inside / "a.made");
    EXPECT_EQ(madeOf({.largestFile = 11, .fewestFiles = 2}, withLargeOne), 4);
    fs::remove(inside / "a.made");
    EXPECT_EQ(madeOf({.fewestFiles = 2, .time = std::chrono::milliseconds(0)}, items(5)), 0);
}

TEST_F(WorkAheadTest, leavesWhatItHadNoTimeForToTheNextBatch)
{
    WorkAhead ahead(files, maker, {.fewestFiles = 2, .time = std::chrono::milliseconds(0)});
    EXPECT_EQ(turns(ahead, items(3)), "---");
    EXPECT_EQ(namesInside(), "");
}

TEST_F(WorkAheadTest, takesNothingButFiles)
{
    auto list = items(4);
    list[2].kind = JobItem::Kind::BadName;
    WorkAhead(files, maker, {.fewestFiles = 2}).take(list);
    EXPECT_EQ(maker.made, 2);
    list[1].info.kind = FileKind::Link;
    EXPECT_FALSE(WorkAhead(files, maker, {.fewestFiles = 2}).take(list));
    EXPECT_EQ(maker.made, 2);
}

TEST_F(WorkAheadTest, manyFilesInManyBatches)
{
    std::vector<JobItem> list;
    for (int i = 0; i < 53; ++i)
        list.push_back(item("file " + std::to_string(i)));
    WorkAhead ahead(files, maker, {.mostFiles = 8});
    for (std::size_t i = 0; i < list.size(); ++i)
        EXPECT_TRUE(ahead.take(std::span(list).subspan(i))) << i;
    EXPECT_EQ(countIn(inside), 53U);
    EXPECT_EQ(content(inside / "file 52.made"), "file 52");
}

} // namespace
} // namespace VaultCore
