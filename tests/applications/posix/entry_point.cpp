#include "applications/modes.h"

#include "platform/utf8.h"

#include <clocale>
#include <exception>

int main(int count, char** arguments)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    std::vector<std::wstring> wide;
    for (int i = 1; i < count; ++i)
        wide.push_back(Platform::fromUtf8(arguments[i]));
    try
    {
        return Applications::runMode(wide);
    }
    catch (const std::exception&)
    {
        return 3;
    }
}
