#include "platform/testing_registry.h"

// Keys that lead to others, on each system.

namespace
{

using namespace Platform;

using Names = std::vector<std::wstring>;

class RegistryLinks : public EachRegistry
{
};

TEST_P(RegistryLinks, aLinkLeadsToItsTarget)
{
    EXPECT_EQ(set(create(base_, L"target\\deep"), L"value", ValueBinary, {1}), 0u);
    makeLink(L"link", L"target");
    EXPECT_EQ(keysOf(open(base_, L"link")), Names{L"deep"});
    EXPECT_EQ(get(open(base_, L"LINK\\deep"), L"value").data, (Bytes{1}));
    EXPECT_EQ(fullName(open(base_, L"link\\deep")), fullName(open(base_, L"target\\deep")));
    EXPECT_EQ(keysOf(base_), (Names{L"link", L"target"}));
}

TEST_P(RegistryLinks, aLinkIsOpenedItselfWhenAskedFor)
{
    create(base_, L"target\\deep");
    makeLink(L"link", L"target");
    const Handle link = open(base_, L"link", OptionOpenLink);
    EXPECT_EQ(fullName(link), fullName(base_) + L"\\link");
    EXPECT_EQ(get(link, L"SymbolicLinkValue"), (Value{0, ValueLink, toUtf16(fullName(base_) + L"\\target")}));
    EXPECT_EQ(keysOf(link), Names{});
    // That is about the end of a path alone, and a key that is no link is opened all the same.
    EXPECT_EQ(fullName(open(base_, L"link\\deep", OptionOpenLink)), fullName(base_) + L"\\target\\deep");
    EXPECT_EQ(fullName(create(base_, L"link", OptionOpenLink)), fullName(base_) + L"\\link");
}

TEST_P(RegistryLinks, whatIsMadeBelowALinkIsMadeBelowItsTarget)
{
    create(base_, L"target");
    makeLink(L"link", L"target");
    create(base_, L"link\\made");
    EXPECT_EQ(keysOf(open(base_, L"target")), Names{L"made"});
}

TEST_P(RegistryLinks, aLinkLeadsOnThroughAnother)
{
    create(base_, L"target\\deep");
    makeLink(L"second", L"target");
    makeLink(L"first", L"second");
    makeLink(L"inner", L"second\\deep");
    EXPECT_EQ(keysOf(open(base_, L"first")), Names{L"deep"});
    EXPECT_EQ(fullName(open(base_, L"inner")), fullName(base_) + L"\\target\\deep");
}

TEST_P(RegistryLinks, aLinkToNowhereIsNotFoundUntilItsTargetIsMade)
{
    makeLink(L"link", L"target");
    EXPECT_EQ(errorOfOpening(base_, L"link"), ErrorFileNotFound);
    EXPECT_EQ(errorOfOpening(base_, L"link\\below"), ErrorFileNotFound);
    EXPECT_EQ(errorOfOpening(base_, L"link", OptionOpenLink), 0u);
    create(base_, L"link"); // makes it
    EXPECT_EQ(keysOf(base_), (Names{L"link", L"target"}));
    EXPECT_EQ(errorOfOpening(base_, L"link"), 0u);
}

TEST_P(RegistryLinks, aLinkWithoutATargetLeadsNowhere)
{
    create(base_, L"link", OptionCreateLink);
    EXPECT_EQ(errorOfOpening(base_, L"link"), ErrorFileNotFound);
    const Handle link = makeLink(L"other", L"target");
    create(base_, L"target");
    EXPECT_EQ(errorOfOpening(base_, L"other"), 0u);
    EXPECT_EQ(registry().deleteValue(link, L"SymbolicLinkValue"), 0u);
    EXPECT_EQ(errorOfOpening(base_, L"other"), ErrorFileNotFound);
}

TEST_P(RegistryLinks, aLinkToWhatIsNoKeyOfTheRegistryLeadsNowhere)
{
    const Handle link = create(base_, L"link", OptionCreateLink);
    for (const wchar_t* target : {L"\\REGISTRY\\USER\\nobody\\Software", L"\\elsewhere\\Software", L"\\REGISTRY\\USE"})
    {
        EXPECT_EQ(setLink(link, target), 0u);
        EXPECT_NE(errorOfOpening(base_, L"link"), 0u);
        EXPECT_NE(errorOfOpening(base_, L"link\\below"), 0u);
    }
}

TEST_P(RegistryLinks, aLoopOfLinksEndsWithAnError)
{
    makeLink(L"self", L"self");
    makeLink(L"one", L"two");
    makeLink(L"two", L"one");
    makeLink(L"deeper", L"deeper\\below");
    for (const wchar_t* path : {L"self", L"one", L"two\\below", L"deeper"})
    {
        EXPECT_NE(errorOfOpening(base_, path), 0u);
        EXPECT_NE(errorOfCreating(base_, path), 0u);
    }
    EXPECT_EQ(errorOfOpening(base_, L"self", OptionOpenLink), 0u);
}

TEST_P(RegistryLinks, aLinkIsNotMadeWhereAKeyIs)
{
    create(base_, L"key");
    makeLink(L"link", L"key");
    EXPECT_EQ(errorOfCreating(base_, L"key", OptionCreateLink), ErrorAlreadyExists);
    EXPECT_EQ(errorOfCreating(base_, L"link", OptionCreateLink), ErrorAlreadyExists);
    makeLink(L"to nowhere", L"nowhere");
    EXPECT_EQ(errorOfCreating(base_, L"to nowhere", OptionCreateLink), ErrorAlreadyExists);
    EXPECT_EQ(errorOfOpening(base_, L"link"), 0u);
}

TEST_P(RegistryLinks, aLinkHoldsNothingButItsTarget)
{
    create(base_, L"target");
    const Handle link = makeLink(L"link", L"target");
    EXPECT_EQ(set(link, L"SymbolicLinkValue", ValueText, {0x41, 0}), ErrorAccessDenied);
    EXPECT_EQ(set(link, L"other", ValueLink, {0x41, 0}), ErrorAccessDenied);
    EXPECT_EQ(valuesOf(link), Names{L"SymbolicLinkValue"});
    if (isWindows())
        return; // Wine goes on to the target from the handle of a link
    EXPECT_EQ(errorOfOpening(link, L"below"), ErrorFileNotFound);
    EXPECT_EQ(errorOfCreating(link, L"below"), ErrorAccessDenied);
    EXPECT_EQ(keysOf(link), Names{});
}

TEST_P(RegistryLinks, deletingAPathThatEndsInALinkDeletesItsTarget)
{
    create(base_, L"target\\deep");
    makeLink(L"link", L"target");
    EXPECT_EQ(registry().deleteSubKey(base_, L"link"), ErrorAccessDenied);
    EXPECT_EQ(registry().deleteSubKey(base_, L"link\\deep"), 0u);
    EXPECT_EQ(registry().deleteSubKey(base_, L"link"), 0u);
    EXPECT_EQ(keysOf(base_), Names{L"link"});
}

TEST_P(RegistryLinks, theObjectOfALinkIsTheLinkAndItsTargetStays)
{
    create(base_, L"target\\deep");
    EXPECT_EQ(deleteObject(makeLink(L"link", L"target")), 0u);
    EXPECT_EQ(keysOf(base_), Names{L"target"});
    EXPECT_EQ(errorOfOpening(base_, L"target\\deep"), 0u);
}

TEST_P(RegistryLinks, aHandleThroughALinkStaysWhereItWentWhenTheLinkIsBent)
{
    EXPECT_EQ(set(create(base_, L"before"), L"value", ValueBinary, {1}), 0u);
    EXPECT_EQ(set(create(base_, L"after"), L"value", ValueBinary, {2}), 0u);
    const Handle link = makeLink(L"link", L"before");
    const Handle through = open(base_, L"link");
    EXPECT_EQ(setLink(link, fullName(base_) + L"\\after"), 0u);
    EXPECT_EQ(get(through, L"value").data, (Bytes{1}));
    EXPECT_EQ(get(open(base_, L"link"), L"value").data, (Bytes{2}));
}

INSTANTIATE_EACH_SYSTEM(RegistryLinks);

} // namespace
