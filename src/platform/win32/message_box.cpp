#include "platform/win32/concerns.h"

#include <windows.h>

namespace Platform
{

namespace
{

static_assert(BoxOk == MB_OK && BoxYesNo == MB_YESNO);
static_assert(BoxIconQuestion == MB_ICONQUESTION && BoxIconInformation == MB_ICONINFORMATION);
static_assert(BoxAnswerOk == IDOK && BoxAnswerYes == IDYES && BoxAnswerNo == IDNO);

class Win32MessageBoxes : public MessageBoxes
{
public:
    int show(const std::wstring& text, const std::wstring& caption, std::uint32_t flags) override
    {
        return MessageBoxW(nullptr, text.c_str(), caption.c_str(), flags);
    }
};

} // namespace

MessageBoxes& win32MessageBoxes()
{
    static Win32MessageBoxes boxes;
    return boxes;
}

} // namespace Platform
