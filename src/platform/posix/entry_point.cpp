#include "platform/platform.h"

#include <clocale>

// The arguments are not taken from here: the program reads them when it needs them.
int main()
{
    std::setlocale(LC_ALL, "C.UTF-8");
    return runProgram(nullptr);
}
