#include "statistics/posix/statistics_client.h"

extern "C" __attribute__((visibility("default"))) std::int32_t
createStatisticsFactory(StatisticsModule::IStatisticsClientFactory** factory)
{
    return StatisticsModule::createFactory(factory, &StatisticsModule::createUserRecorder);
}
