#include "planted_modules/planted.h"

/// A library that cannot be loaded without the planted one.
extern "C" int leaningNumber();

int leaningNumber()
{
    return plantedNumber();
}
