#include "platform/platform.h"

#include <sys/prctl.h>

#include <clocale>

// The arguments are not taken from here: the program reads them when it needs them.
int main()
{
    // No image of the memory, in which the password is, comes to a disk, and no other process of the user may read it.
    ::prctl(PR_SET_DUMPABLE, 0);
    std::setlocale(LC_ALL, "C.UTF-8");
    return runProgram(nullptr);
}
