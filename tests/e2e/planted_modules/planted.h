#pragma once

/// So that another library can need the planted one.
extern "C" int plantedNumber();
