#include "applications/modes.h"

#include <windows.h>

#include <shellapi.h>

#include <exception>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int)
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!arguments || count < 1)
        return 1;
    try
    {
        return Applications::runMode({arguments + 1, arguments + count});
    }
    catch (const std::exception&)
    {
        return 3;
    }
}
