#pragma once

#include <string>
#include <windows.h>

namespace SfxStub
{

/// Both give an empty text when the user chose nothing.
std::wstring chooseFile(HWND owner);
std::wstring chooseFolder(HWND owner);

} // namespace SfxStub
