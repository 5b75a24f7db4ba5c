#include "statistics_testing/recorded_statistics.h"

#include <cstdlib>
#include <optional>
#include <stdexcept>

namespace fs = std::filesystem;

namespace StatisticsTesting
{

/// The user's state is elsewhere meanwhile, so that programs that run beside the tests record nothing there.
class RecordedStatistics::Former
{
public:
    Former()
    {
        std::string folder = (fs::temp_directory_path() / "jobrunner-state-XXXXXX").string();
        if (!::mkdtemp(folder.data()))
            throw std::runtime_error("no folder for the journal");
        folder_ = folder;
        if (const char* former = std::getenv(Variable))
            former_ = former;
        ::setenv(Variable, folder.c_str(), 1);
    }
    ~Former()
    {
        former_ ? ::setenv(Variable, former_->c_str(), 1) : ::unsetenv(Variable);
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    Former(const Former&) = delete;
    Former& operator=(const Former&) = delete;

private:
    static constexpr const char* Variable = "XDG_STATE_HOME";

    fs::path folder_;
    std::optional<std::string> former_;
};

RecordedStatistics::RecordedStatistics() : former_(std::make_unique<Former>()) {}

RecordedStatistics::~RecordedStatistics() = default;

} // namespace StatisticsTesting
