#pragma once

#include <string>
#include <vector>

namespace Applications
{

/// What the program does. `arguments` without the name of the program:
///
///     hold MS [--stay MS] DOCUMENT   holds it for a time, with a window, and runs on for another time
///     read MS DOCUMENT               reads it at once, lets it go, and has a window for a time
///     save MS DOCUMENT               holds it, puts a new file in its place, and holds that, each for a time
///     edit MS DOCUMENT               writes more to its end and holds it for a time
///     vanish MS DOCUMENT             removes it, and behind a time writes another with more at its end
///     remove MS DOCUMENT             removes it behind a time, for good
///     away MS DOCUMENT               moves it away for a time and back
///     crash MS DOCUMENT              crashes while it holds the document
///     silent DOCUMENT                ends at once
///     launch [MS] MODE ... DOCUMENT  starts itself, behind a time, for all that follows, and ends at once
///     single --serve [--front] [--open MS] [--stay MS]   becomes the one instance of an application
///     single DOCUMENT                hands it to that one and ends at once
///
/// With --log FILE it writes down what it does, one line "WHAT N" each, where N is the system's count of milliseconds:
/// "holds", "released" when it has let go of what may be waited for, "serves", "closed" for the window of a document
/// that was handed over, and last "ends".
int runMode(const std::vector<std::wstring>& arguments);

} // namespace Applications
