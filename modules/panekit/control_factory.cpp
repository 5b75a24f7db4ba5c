#include "panekit/control_factory.h"

#include "panekit/combo_box.h"
#include "panekit/edit_with_icon_buttons.h"
#include "panekit/gradient_header.h"
#include "panekit/icon_button.h"
#include "panekit/simple_text.h"
#include "panekit/text_with_links.h"
#include "panekit/text_with_popup_menu.h"
#include "windows/drawing/drawing_context.h"

#include <cwchar>

namespace Panekit
{

namespace
{

constexpr const wchar_t* Classes[] = {ControlClass::CopyDialogGradient,
                                      ControlClass::TextWithLinks,
                                      ControlClass::SimpleText,
                                      ControlClass::TextWithPopupMenu,
                                      ControlClass::EditWithIconButtons,
                                      ControlClass::ComboBox,
                                      IconButton::ClassName};

template <class Made> ICustomControl* make(const wchar_t* classId, HWND parent, const RECT& area)
{
    auto* const control = new Made;
    if (control->open(classId, parent, area))
        return control;
    control->destroy();
    return nullptr;
}

} // namespace

void start()
{
    Drawing::acquireDrawing();
    for (const wchar_t* const name : Classes)
        ControlWindow::registerClass(name);
}

void stop()
{
    Drawing::releaseDrawing();
    if (Drawing::drawingContext().count > 0)
        return;
    for (const wchar_t* const name : Classes)
        ControlWindow::unregisterClass(name);
}

ICustomControl* makeControl(const wchar_t* classId, void* parent, int x, int y, int width, int height)
{
    const auto window = static_cast<HWND>(parent);
    const RECT area{x, y, x + width, y + height};
    const auto is = [classId](const wchar_t* name) { return classId && std::wcscmp(classId, name) == 0; };
    if (is(ControlClass::CopyDialogGradient))
        return make<GradientHeader>(classId, window, area);
    if (is(ControlClass::TextWithLinks))
        return make<TextWithLinks>(classId, window, area);
    if (is(ControlClass::SimpleText))
        return make<SimpleText>(classId, window, area);
    if (is(ControlClass::TextWithPopupMenu))
        return make<TextWithPopupMenu>(classId, window, area);
    if (is(ControlClass::EditWithIconButtons))
        return make<EditWithIconButtons>(classId, window, area);
    if (is(ControlClass::ComboBox))
        return make<ComboBox>(classId, window, area);
    return nullptr;
}

} // namespace Panekit
