#include "platform/desktop.h"

#include "platform/each_system.h"

namespace
{

class Desktop : public EachSystem
{
protected:
    Platform::Desktop& desktop() { return system().desktop; }
};

TEST_P(Desktop, whatIsNoWindowIsNeitherThereNorVisibleAndHasNoThreadAndNoText)
{
    const auto never = reinterpret_cast<Platform::WindowHandle>(std::uintptr_t{0x7FFFFFF});
    for (const Platform::WindowHandle window : {Platform::WindowHandle{}, never})
    {
        EXPECT_FALSE(desktop().isWindow(window));
        EXPECT_FALSE(desktop().isVisible(window));
        EXPECT_EQ(desktop().windowThread(window), 0u);
        EXPECT_EQ(desktop().windowText(window, 1024), L"");
    }
}

INSTANTIATE_EACH_SYSTEM(Desktop);

} // namespace
