#pragma once

// The system's header of GDI+ and what it needs before it.

#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>
