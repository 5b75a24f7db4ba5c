#include "statistics_module/misbehaving_recorder.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace EndToEnd
{
namespace
{

class MisbehavingRecorder : public StatisticsModule::Recorder
{
public:
    bool record(const StatisticsModule::Call& call) override
    {
        const bool creates = call.operation == "CreateClient";
        if (fault_ == (creates ? "refuse" : "fail"))
            return false;
        if (fault_ == "hang" && !creates)
            std::this_thread::sleep_for(std::chrono::seconds(1));
        return journal_->record(call);
    }

private:
    static std::string askedFor()
    {
        const char* const fault = std::getenv("JOBRUNNER_STATISTICS_FAULT");
        return fault ? fault : "";
    }

    const std::string fault_ = askedFor();
    const std::shared_ptr<StatisticsModule::Recorder> journal_ = StatisticsModule::createUserRecorder();
};

} // namespace

std::shared_ptr<StatisticsModule::Recorder> createMisbehavingRecorder()
{
    return std::make_shared<MisbehavingRecorder>();
}

} // namespace EndToEnd
