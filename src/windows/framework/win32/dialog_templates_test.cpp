#include "windows/framework/win32/dialog.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <string>
#include <vector>

namespace JobRunner
{

namespace
{

/// What a template says of a dialog or of one of its items. Dialog units.
struct Described
{
    int id;
    std::wstring kind;
    std::wstring text;
    int x, y, width, height;
    bool operator==(const Described&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Described& item)
{
    return stream << item.id << ' ' << testing::PrintToString(item.kind) << ' ' << testing::PrintToString(item.text)
                  << ' ' << item.x << ' ' << item.y << ' ' << item.width << ' ' << item.height;
}

/// Reads an extended dialog template of this program's resources from its start to its end.
class Template
{
public:
    explicit Template(int number)
    {
        const HRSRC found = FindResourceW(resourceModule(), MAKEINTRESOURCEW(number), MAKEINTRESOURCEW(5));
        if (!found)
            return;
        start_ = at_ = static_cast<const char*>(LockResource(LoadResource(resourceModule(), found)));
        readDialog();
    }

    DWORD style = 0;
    DWORD extendedStyle = 0;
    Described dialog{};
    std::wstring font;
    int points = 0;
    std::vector<Described> items;

private:
    template <class Value> Value read()
    {
        Value value{};
        std::memcpy(&value, at_, sizeof value);
        at_ += sizeof value;
        return value;
    }
    int readShort() { return read<short>(); }

    /// A text, or an ordinal number as "#number".
    std::wstring readText()
    {
        const auto first = read<WORD>();
        if (first == 0xFFFF)
            return L'#' + std::to_wstring(read<WORD>());
        std::wstring text;
        for (auto letter = static_cast<wchar_t>(first); letter != 0; letter = static_cast<wchar_t>(read<WORD>()))
            text += letter;
        return text;
    }

    void align()
    {
        const auto beyond = (at_ - start_) % 4;
        at_ += beyond == 0 ? 0 : 4 - beyond;
    }

    void readDialog()
    {
        read<DWORD>(); // version and mark of an extended template
        read<DWORD>(); // help
        extendedStyle = read<DWORD>();
        style = read<DWORD>();
        const int count = readShort();
        readPlace(dialog);
        readText(); // menu
        readText(); // class
        dialog.text = readText();
        points = readShort();
        read<DWORD>(); // weight, slant and character set
        font = readText();
        for (int item = 0; item < count; ++item)
            readItem();
    }

    void readItem()
    {
        align();
        read<DWORD>(); // help
        read<DWORD>(); // extended style
        const auto itemStyle = read<DWORD>();
        Described item{};
        readPlace(item);
        item.id = read<int>();
        item.kind = kindOf(readText(), itemStyle);
        item.text = readText();
        at_ += read<WORD>();
        items.push_back(item);
    }

    void readPlace(Described& described)
    {
        described.x = readShort();
        described.y = readShort();
        described.width = readShort();
        described.height = readShort();
    }

    static std::wstring kindOf(const std::wstring& windowClass, DWORD itemStyle)
    {
        if (windowClass == L"#130")
            return L"static";
        if (lstrcmpiW(windowClass.c_str(), L"msctls_progress32") == 0)
            return L"bar";
        if (windowClass != L"#128")
            return windowClass;
        switch (itemStyle & BS_TYPEMASK)
        {
        case BS_DEFPUSHBUTTON:
            return L"default button";
        case BS_GROUPBOX:
            return L"group box";
        default:
            return L"button";
        }
    }

    const char* start_ = nullptr;
    const char* at_ = nullptr;
};

} // namespace

TEST(DialogTemplates, ofTheProgressIs144)
{
    const Template progress(144);
    EXPECT_EQ(progress.dialog, (Described{0, L"", L"Progress Window", 0, 0, 251, 162}));
    EXPECT_EQ(progress.font, L"MS Shell Dlg");
    EXPECT_EQ(progress.points, 8);
    EXPECT_EQ(progress.style & WS_CAPTION, static_cast<DWORD>(WS_CAPTION));
    EXPECT_EQ(progress.style & (WS_SYSMENU | WS_VISIBLE), 0u);
    EXPECT_EQ(progress.extendedStyle, static_cast<DWORD>(WS_EX_APPWINDOW | WS_EX_CONTROLPARENT));
    const std::vector<Described> expected = {
        {1046, L"static", L"First progress bar:", 7, 1, 237, 8},
        {11045, L"bar", L"", 7, 14, 237, 24},
        {1047, L"static", L"Second progress bar:", 7, 47, 191, 8},
        {1045, L"bar", L"", 7, 60, 237, 24},
        {11046, L"group box", L"", 7, 87, 237, 49},
        {1240, L"static", L"Elapsed Time:", 14, 98, 54, 8},
        {1241, L"static", L"Time Left:", 14, 110, 54, 8},
        {1242, L"static", L"Speed:", 14, 122, 54, 8},
        {1227, L"static", L"n/a", 73, 98, 57, 8},
        {1228, L"static", L"n/a", 73, 110, 57, 8},
        {1229, L"static", L"n/a", 73, 122, 57, 8},
        {1243, L"static", L"Elapsed Bytes:", 133, 98, 54, 8},
        {1244, L"static", L"Bytes Left:", 133, 110, 54, 8},
        {1245, L"static", L"Total Bytes:", 133, 122, 54, 8},
        {1230, L"static", L"n/a", 192, 98, 41, 8},
        {1231, L"static", L"n/a", 192, 110, 43, 8},
        {1233, L"static", L"n/a", 192, 122, 43, 8},
        {1226, L"button", L"Cancel", 74, 141, 50, 14},
        {1090, L"button", L"Pause", 128, 141, 50, 14},
    };
    EXPECT_EQ(progress.items, expected);
}

TEST(DialogTemplates, ofTheFileErrorIs303)
{
    const Template fileError(303);
    EXPECT_EQ(fileError.dialog, (Described{0, L"", L"File Error", 0, 0, 274, 118}));
    EXPECT_EQ(fileError.font, L"MS Sans Serif");
    EXPECT_EQ(fileError.points, 8);
    EXPECT_EQ(fileError.style & WS_CAPTION, static_cast<DWORD>(WS_CAPTION));
    EXPECT_TRUE(fileError.style & WS_SYSMENU);
    EXPECT_EQ(fileError.extendedStyle, static_cast<DWORD>(WS_EX_APPWINDOW));
    const std::vector<Described> expected = {
        {1, L"default button", L"Try Again", 114, 100, 50, 15},
        {5, L"button", L"Skip File", 166, 100, 50, 15},
        {2, L"button", L"Abort", 217, 100, 50, 15},
    };
    EXPECT_EQ(fileError.items, expected);
}

} // namespace JobRunner
