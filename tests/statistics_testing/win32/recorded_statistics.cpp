#include "statistics_testing/recorded_statistics.h"
#include "statistics/journal.h"

namespace fs = std::filesystem;

namespace StatisticsTesting
{
namespace
{

/// A file that is away for a while. When a test ended badly the one that was put away then is still the user's.
class KeptFile
{
public:
    explicit KeptFile(fs::path file) : file_(std::move(file)), kept_(file_.wstring() + L".kept")
    {
        if (fs::exists(kept_))
            fs::remove(file_);
        else if (fs::exists(file_))
            fs::rename(file_, kept_);
    }
    ~KeptFile()
    {
        std::error_code ignored;
        fs::remove(file_, ignored);
        if (fs::exists(kept_))
            fs::rename(kept_, file_, ignored);
    }
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

private:
    const fs::path file_;
    const fs::path kept_;
};

} // namespace

class RecordedStatistics::Former
{
private:
    KeptFile newer_{file()};
    KeptFile older_{StatisticsModule::Journal::olderFileOf(file())};
};

RecordedStatistics::RecordedStatistics() : former_(std::make_unique<Former>()) {}

RecordedStatistics::~RecordedStatistics() = default;

} // namespace StatisticsTesting
