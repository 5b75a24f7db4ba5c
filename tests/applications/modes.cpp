#include "applications/modes.h"

#include "applications/application.h"
#include "applications/options.h"
#include "applications/release_log.h"

#include <functional>
#include <map>

namespace Applications
{

namespace
{

constexpr int WrongUse = 2;
const std::string Released = "released";

void holdFor(const Options& options)
{
    const auto held = hold(options.document);
    note(options.log, "holds");
    wait(options.time);
}

int runHold(const Options& options)
{
    const auto window = showMainWindow(options.document);
    holdFor(options);
    note(options.log, Released);
    wait(options.stay);
    return 0;
}

int runRead(const Options& options)
{
    read(options.document);
    {
        const auto window = showMainWindow(options.document);
        wait(options.time);
    }
    note(options.log, Released);
    return 0;
}

int runSave(const Options& options)
{
    const auto window = showMainWindow(options.document);
    holdFor(options);
    const std::wstring written = options.document + L".tmp";
    write(written, read(options.document) + " and more");
    replace(options.document, written);
    holdFor(options);
    note(options.log, Released);
    return 0;
}

int runEdit(const Options& options)
{
    const auto window = showMainWindow(options.document);
    append(options.document, " and more");
    holdFor(options);
    note(options.log, Released);
    return 0;
}

int runVanish(const Options& options)
{
    const auto window = showMainWindow(options.document);
    const std::string content = read(options.document);
    remove(options.document);
    wait(options.time);
    write(options.document, content + " and more");
    note(options.log, Released);
    return 0;
}

int runRemove(const Options& options)
{
    const auto window = showMainWindow(options.document);
    wait(options.time);
    remove(options.document);
    note(options.log, Released);
    return 0;
}

int runAway(const Options& options)
{
    const auto window = showMainWindow(options.document);
    const std::wstring elsewhere = options.document + L".tmp";
    replace(elsewhere, options.document);
    wait(options.time);
    replace(options.document, elsewhere);
    note(options.log, Released);
    return 0;
}

int runCrash(const Options& options)
{
    const auto window = showMainWindow(options.document);
    const auto held = hold(options.document);
    note(options.log, "holds");
    wait(options.time);
    note(options.log, Released);
    crash();
}

int runSilent(const Options& options)
{
    note(options.log, Released);
    return 0;
}

int launch(std::vector<std::wstring> arguments)
{
    if (!arguments.empty() && isNumber(arguments[0]))
    {
        wait(number(arguments[0]));
        arguments.erase(arguments.begin());
    }
    startSelf(arguments);
    return 0;
}

int runSingle(const Options& options)
{
    if (options.serve)
        return serve(options);
    return handOver(options.document) ? 0 : 1;
}

} // namespace

int runMode(const std::vector<std::wstring>& arguments)
{
    if (!arguments.empty() && arguments[0] == L"launch")
        return launch({arguments.begin() + 1, arguments.end()});
    static const std::map<std::wstring, std::function<int(const Options&)>> modes = {
        {L"hold", runHold},     {L"read", runRead},     {L"save", runSave}, {L"edit", runEdit},
        {L"vanish", runVanish}, {L"remove", runRemove}, {L"away", runAway}, {L"crash", runCrash},
        {L"silent", runSilent}, {L"single", runSingle},
    };
    const auto options = readOptions(arguments);
    const auto mode = options ? modes.find(options->mode) : modes.end();
    if (mode == modes.end())
        return WrongUse;
    const int result = mode->second(*options);
    note(options->log, "ends");
    return result;
}

} // namespace Applications
