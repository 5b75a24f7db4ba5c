#include "statistics/posix/statistics_client.h"
#include "statistics_module/misbehaving_recorder.h"

extern "C" __attribute__((visibility("default"))) std::int32_t
createStatisticsFactory(StatisticsModule::IStatisticsClientFactory** factory)
{
    return StatisticsModule::createFactory(factory, &EndToEnd::createMisbehavingRecorder);
}
