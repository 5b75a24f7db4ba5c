#pragma once

#include "panekit/control_window.h"

namespace Panekit
{

/// The operations that every control has, over its window. `Interface` comes first: its table is what callers see.
template <class Interface> class Control : public Interface, public ControlWindow
{
public:
    void setWidth(int width, bool repaint) override { this->changeWidth(width, repaint); }
    void fitToContent() override { this->takeContentSize(); }
    void setHeight(int height) override { this->changeHeight(height); }
    void move(int x, int y) override { this->moveTo(x, y); }
    void getRect(ControlRect* rect) override
    {
        const RECT area = this->area();
        *rect = {area.left, area.top, area.right, area.bottom};
    }
    void notCalled1() override {}
    void notCalled2() override {}
    int heightForWidth(int width) override { return static_cast<int>(this->contentSize(width).cy); }
    void* getWindowHandle() override { return this->window(); }
    int getControlId() override { return this->id(); }
    void notCalled3() override {}
    void notCalled4() override {}
    void notCalled5() override {}
};

/// A control that draws text over what lies behind it.
template <class Interface> class TextControl : public Control<Interface>, public IControlBackground
{
public:
    void setBackground(void* parentWindow, void* deviceContext) override
    {
        this->takeBackground(static_cast<HWND>(parentWindow), static_cast<HDC>(deviceContext));
    }

protected:
    bool followsContent() const override { return true; }
};

} // namespace Panekit
