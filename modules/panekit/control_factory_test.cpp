#include "panekit/test_dialog.h"

#include "fakes/slot_of.h"

namespace Panekit
{

namespace
{

using Fakes::memberAt;

constexpr const wchar_t* AllClasses[] = {ControlClass::CopyDialogGradient,  ControlClass::TextWithLinks,
                                         ControlClass::SimpleText,          ControlClass::TextWithPopupMenu,
                                         ControlClass::EditWithIconButtons, ControlClass::ComboBox};

bool isText(const std::wstring& classId)
{
    return classId.find(L"::text::") != std::wstring::npos;
}

/// A field has the height of its one line from the start.
bool isField(const std::wstring& classId)
{
    return classId == ControlClass::EditWithIconButtons || classId == ControlClass::ComboBox;
}

// The operations by their places in the table, each with the type of one that has the same arguments.
constexpr std::size_t SetWidth = 0;
constexpr std::size_t FitToContent = 1;
constexpr std::size_t SetHeight = 2;
constexpr std::size_t Move = 3;
constexpr std::size_t GetRect = 4;
constexpr std::size_t HeightForWidth = 7;
constexpr std::size_t GetHandle = 8;
constexpr std::size_t Destroy = 9;
constexpr std::size_t GetId = 10;
constexpr std::size_t OfTheClass = 14;

using Plain = void (ICustomControl::*)();
using TakesFlaggedInt = void (ICustomControl::*)(int, bool);
using TakesInt = void (ICustomControl::*)(int);
using TakesTwoInts = void (ICustomControl::*)(int, int);
using TakesRect = void (ICustomControl::*)(ControlRect*);
using IntFromInt = int (ICustomControl::*)(int);
using GivesInt = int (ICustomControl::*)();
using GivesPointer = void* (ICustomControl::*)();
using TakesText = void (ICustomControl::*)(const wchar_t*);
using TakesTwoTexts = void (ICustomControl::*)(const wchar_t*, const wchar_t*);
using GivesText = const wchar_t* (ICustomControl::*)();
using TakesColour = void (ICustomControl::*)(std::uint32_t);
using TakesIcon = void (ICustomControl::*)(void*, const wchar_t*);
using TakesColours = void (ICustomControl::*)(std::uint32_t, std::uint32_t);
using TakesFlag = void (ICustomControl::*)(bool);

class CreateControl : public testing::Test
{
protected:
    ICustomControl* make(const wchar_t* classId) { return makeControl(classId, dialog_.window(), 5, 6, 100, 50); }

    template <class Member, class... Arguments>
    static auto call(ICustomControl* control, std::size_t slot, Arguments... arguments)
    {
        return (control->*memberAt<Member>(slot))(arguments...);
    }

    static std::wstring textOf(ICustomControl* control)
    {
        wchar_t text[100] = {};
        GetWindowTextW(static_cast<HWND>(control->getWindowHandle()), text, 100);
        return text;
    }

    TestDialog dialog_;
};

} // namespace

TEST_F(CreateControl, makesAVisibleChildAtTheGivenPlace)
{
    for (const wchar_t* const classId : AllClasses)
    {
        ICustomControl* const control = make(classId);
        ASSERT_TRUE(control);
        const auto window = static_cast<HWND>(control->getWindowHandle());
        EXPECT_EQ(GetParent(window), dialog_.window());
        EXPECT_TRUE(GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE);
        ControlRect rect{};
        control->getRect(&rect);
        EXPECT_EQ(rect.left, 5);
        EXPECT_EQ(rect.top, 6);
        EXPECT_EQ(rect.right, 105);
        EXPECT_EQ(rect.bottom, isField(classId) ? 6 + control->heightForWidth(100) : 56);
        control->destroy();
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST_F(CreateControl, givesNullForAnUnknownClass)
{
    EXPECT_FALSE(make(L"paneexpl7::nosuchcontrol"));
    EXPECT_FALSE(make(L""));
    EXPECT_FALSE(make(L"PANEWIN7::TEXT::SIMPLETEXT"));
    EXPECT_FALSE(make(nullptr));
}

TEST_F(CreateControl, givesNullWithoutAParent)
{
    EXPECT_FALSE(makeControl(ControlClass::SimpleText, nullptr, 0, 0, 10, 10));
}

TEST_F(CreateControl, givesEachControlAnIdOfItsOwn)
{
    ICustomControl* const one = make(ControlClass::SimpleText);
    ICustomControl* const two = make(ControlClass::SimpleText);
    EXPECT_NE(one->getControlId(), two->getControlId());
    EXPECT_EQ(GetDlgItem(dialog_.window(), one->getControlId()), one->getWindowHandle());
    one->destroy();
    two->destroy();
}

TEST_F(CreateControl, makesTextsThatTakeABackground)
{
    for (const wchar_t* const classId : AllClasses)
    {
        ICustomControl* const control = make(classId);
        EXPECT_EQ(dynamic_cast<IControlBackground*>(control) != nullptr, isText(classId));
        control->destroy();
    }
}

TEST_F(CreateControl, makesControlsThatOutliveTheirParent)
{
    for (const wchar_t* const classId : AllClasses)
    {
        ICustomControl* control = nullptr;
        {
            const TestDialog shortLived;
            control = makeControl(classId, shortLived.window(), 0, 0, 10, 10);
        }
        EXPECT_FALSE(control->getWindowHandle());
        control->setHeight(20);
        control->setWidth(20, true);
        control->fitToContent();
        control->move(1, 2);
        control->destroy();
    }
}

TEST_F(CreateControl, keepsTheCommonOperationsInTheirPlaces)
{
    for (const wchar_t* const classId : AllClasses)
    {
        ICustomControl* const control = make(classId);
        call<TakesFlaggedInt>(control, SetWidth, 210, true);
        call<TakesInt>(control, SetHeight, 33);
        call<TakesTwoInts>(control, Move, 12, 14);
        ControlRect rect{};
        call<TakesRect>(control, GetRect, &rect);
        EXPECT_EQ(rect.left, 12);
        EXPECT_EQ(rect.top, 14);
        EXPECT_EQ(rect.right, 222);
        EXPECT_EQ(rect.bottom, 47);
        EXPECT_GT(call<IntFromInt>(control, HeightForWidth, 100), 0);
        EXPECT_EQ(call<GivesPointer>(control, GetHandle), control->getWindowHandle());
        EXPECT_EQ(call<GivesInt>(control, GetId), control->getControlId());
        const int fitted = call<IntFromInt>(control, HeightForWidth, 0);
        call<Plain>(control, FitToContent);
        call<TakesRect>(control, GetRect, &rect);
        EXPECT_EQ(rect.bottom - rect.top, fitted);
        for (const std::size_t unnamed : {5U, 6U, 11U, 12U, 13U})
            call<Plain>(control, unnamed);
        const auto window = static_cast<HWND>(control->getWindowHandle());
        call<Plain>(control, Destroy);
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST_F(CreateControl, keepsTheOperationsOfTheHeaderInTheirPlaces)
{
    ICustomControl* const control = make(ControlClass::CopyDialogGradient);
    call<TakesIcon>(control, OfTheClass, static_cast<void*>(GetModuleHandleW(nullptr)), L"QUESTION32.PNG");
    call<TakesText>(control, OfTheClass + 1, L"Header");
    call<TakesColours>(control, OfTheClass + 2, 1U, 2U);
    EXPECT_EQ(textOf(control), L"Header");
    control->destroy();
}

TEST_F(CreateControl, keepsTheOperationsOfTheTextsInTheirPlaces)
{
    for (const wchar_t* const classId : {ControlClass::TextWithLinks, ControlClass::SimpleText})
    {
        ICustomControl* const control = make(classId);
        call<TakesText>(control, OfTheClass, L"Origin:");
        call<TakesFlag>(control, OfTheClass + 1, true);
        if (classId == ControlClass::SimpleText)
            call<Plain>(control, OfTheClass + 2);
        EXPECT_EQ(textOf(control), L"Origin:");
        control->destroy();
    }
}

TEST_F(CreateControl, keepsTheOperationsOfTheChoiceInTheirPlaces)
{
    ICustomControl* const control = make(ControlClass::TextWithPopupMenu);
    call<TakesTwoTexts>(control, OfTheClass, L"Password", L"Password");
    call<TakesTwoTexts>(control, OfTheClass, L"Key file", L"Key File");
    call<Plain>(control, OfTheClass + 1);
    call<TakesInt>(control, OfTheClass + 2, 1);
    EXPECT_EQ(textOf(control), L"Key file");
    const int left = call<GivesInt>(control, OfTheClass + 3);
    EXPECT_GE(left, 5);
    EXPECT_LT(left, 20);
    control->destroy();
}

TEST_F(CreateControl, keepsTheOperationsOfTheEditInTheirPlaces)
{
    ICustomControl* const control = make(ControlClass::EditWithIconButtons);
    const HWND field = GetWindow(static_cast<HWND>(control->getWindowHandle()), GW_CHILD);
    call<Plain>(control, OfTheClass);
    EXPECT_NE(SendMessageW(field, EM_GETPASSWORDCHAR, 0, 0), 0);
    call<Plain>(control, OfTheClass + 1);
    EXPECT_EQ(SendMessageW(field, EM_GETPASSWORDCHAR, 0, 0), 0);
    call<TakesText>(control, OfTheClass + 3, L"text");
    EXPECT_EQ(std::wstring(call<GivesText>(control, OfTheClass + 2)), L"text");
    call<TakesIcon>(control, OfTheClass + 4, static_cast<void*>(GetModuleHandleW(nullptr)), L"SHOWPASS.PNG");
    EXPECT_TRUE(GetWindow(field, GW_HWNDNEXT));
    call<TakesColour>(control, OfTheClass + 6, 0xFFU);
    const Drawing::WindowDc dc(field);
    SendMessageW(GetParent(field), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc.get()),
                 reinterpret_cast<LPARAM>(field));
    EXPECT_EQ(GetTextColor(dc.get()), 0xFFU);
    dialog_.show();
    call<TakesTwoTexts>(control, OfTheClass + 5, L"Title", L"Text");
    EXPECT_EQ(GetFocus(), field);
    control->destroy();
}

TEST_F(CreateControl, keepsTheOperationsOfTheListInTheirPlaces)
{
    ICustomControl* const control = make(ControlClass::ComboBox);
    call<TakesText>(control, OfTheClass, L"one");
    call<TakesText>(control, OfTheClass, L"two");
    for (const std::size_t unnamed : {1U, 2U})
        call<Plain>(control, OfTheClass + unnamed);
    call<TakesInt>(control, OfTheClass + 6, 1);
    EXPECT_EQ(call<GivesInt>(control, OfTheClass + 5), 1);
    const HWND list = GetWindow(static_cast<HWND>(control->getWindowHandle()), GW_CHILD);
    call<Plain>(control, OfTheClass + 3);
    EXPECT_TRUE(SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0));
    call<Plain>(control, OfTheClass + 4);
    EXPECT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 0);
    control->destroy();
}

} // namespace Panekit
