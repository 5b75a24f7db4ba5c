#include "crashes/filters.h"

#include "platform/message_box.h"
#include "platform/platform.h"
#include "platform/threads.h"

#include <fstream>
#include <map>
#include <stdexcept>

namespace CrashingApplication
{

namespace
{

constexpr std::uint32_t Meanwhile = 300; ///< milliseconds in which the other thread has crashed too

std::string noteFile;
volatile std::uintptr_t nowhere = 0;

std::int32_t note(const Platform::ExceptionRecord& record)
{
    std::ofstream(noteFile, std::ios::app) << std::hex << record.code << ' ' << record.address << '\n';
    return Platform::ExecuteHandler;
}

std::int32_t noteSlowly(const Platform::ExceptionRecord& record)
{
    Platform::platform().threads.sleep(Meanwhile);
    return note(record);
}

std::int32_t noteAndThrow(const Platform::ExceptionRecord& record)
{
    note(record);
    throw std::runtime_error("a filter that fails");
}

std::int32_t noteAndFault(const Platform::ExceptionRecord& record)
{
    *reinterpret_cast<volatile int*>(nowhere) = note(record);
    return Platform::ExecuteHandler;
}

std::int32_t noteAndHang(const Platform::ExceptionRecord& record)
{
    note(record);
    Platform::platform().threads.createEvent()->wait();
    return Platform::ExecuteHandler;
}

std::int32_t noteAndShow(const Platform::ExceptionRecord& record)
{
    note(record);
    Platform::platform().messageBoxes.show(L"It has crashed.", L"crashing application", Platform::BoxOk);
    return Platform::ExecuteHandler;
}

} // namespace

Platform::CrashFilter filterOf(const std::string& name, const std::string& file)
{
    noteFile = file;
    const std::map<std::string, Platform::CrashFilter> filters = {
        {"note", note},          {"slow-note", noteSlowly}, {"throw", noteAndThrow},
        {"fault", noteAndFault}, {"stuck", noteAndHang},    {"box", noteAndShow},
    };
    const auto found = filters.find(name);
    return found == filters.end() ? nullptr : found->second;
}

} // namespace CrashingApplication
