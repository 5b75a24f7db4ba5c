#include "statistics/recorder.h"

#include "interfaces/statistics/identifiers.h"
#include "statistics/journal.h"

#include <new>

namespace StatisticsModule
{

std::shared_ptr<Recorder> createUserRecorder()
{
    return std::make_shared<Journal>(JournalSettings{userJournalFile()});
}

Argument valueOf(std::int64_t value)
{
    return value == NoEventValue ? Argument(nullptr) : Argument(value);
}

Result record(Recorder& recorder, std::string_view operation, std::initializer_list<Argument> arguments) noexcept
{
    try
    {
        return recorder.record({operation, arguments}) ? Succeeded : Failed;
    }
    catch (const std::bad_alloc&)
    {
        return OutOfMemory;
    }
    catch (...)
    {
        return Failed;
    }
}

} // namespace StatisticsModule
