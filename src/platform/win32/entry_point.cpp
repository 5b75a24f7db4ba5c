#include "platform/platform.h"

#include <windows.h>

// The command line is not taken from here: the program reads it when it needs it.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int)
{
    return runProgram(instance);
}
