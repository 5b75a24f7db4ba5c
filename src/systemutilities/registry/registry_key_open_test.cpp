#include "systemutilities/registry/testing_scripted_registry.h"

#include "platform/handles.h"

namespace Halden::SystemUtilities::Registry
{

namespace
{

using Calls = std::vector<std::wstring>;

class OpeningAKey : public ScriptedKey
{
protected:
    void read() { key_->GetDword(L"v", 0); }
    void readAsLink() { key_->GetValues(true); }
    void write() { key_->SetDword(L"v", 0, false); }
    void writeAsLink() { key_->DeleteValue(L"v", true); }

    /// The opening and closing of keys since the last time.
    Calls opened()
    {
        Calls found = calls();
        std::erase_if(
            found, [](const std::wstring& call)
            { return !call.starts_with(L"open") && !call.starts_with(L"close") && !call.starts_with(L"create"); });
        fake_.log.clear();
        return found;
    }
};

const std::wstring Read64 = L"open 7 Key 0 20119";
const std::wstring ReadLink64 = L"open 7 Key 8 20119";
const std::wstring Write64 = L"open 7 Key 0 f013f";
const std::wstring WriteLink64 = L"open 7 Key 8 f013f";

TEST_F(OpeningAKey, happensInTheFirstOperationThatNeedsIt)
{
    EXPECT_EQ(opened(), Calls{});
    read();
    EXPECT_EQ(opened(), Calls{Read64});
}

TEST_F(OpeningAKey, asksForTheViewOfTheObject)
{
    read();
    write();
    key_ = makeKey(false);
    opened();
    read();
    readAsLink();
    write();
    writeAsLink();
    EXPECT_EQ(opened(), (Calls{L"open 7 Key 0 20219", L"open 7 Key 8 20219", L"close 104", L"open 7 Key 0 f023f",
                               L"close 105", L"open 7 Key 8 f023f"}));
}

TEST_F(OpeningAKey, isKeptFromOneReadToTheNext)
{
    read();
    read();
    key_->GetSubKeys();
    key_->GetValues(false);
    EXPECT_EQ(opened(), Calls{Read64});
}

TEST_F(OpeningAKey, isClosedAndDoneAgainForAWriteAfterARead)
{
    read();
    write();
    EXPECT_EQ(opened(), (Calls{Read64, L"close 101", Write64}));
    EXPECT_EQ(key_->Create(false), 103);
}

TEST_F(OpeningAKey, isKeptForAReadAfterAWrite)
{
    write();
    read();
    write();
    EXPECT_EQ(opened(), Calls{Write64});
}

TEST_F(OpeningAKey, isClosedAndDoneAgainForAWriteOfTheOtherKind)
{
    write();
    writeAsLink();
    writeAsLink();
    write();
    EXPECT_EQ(opened(), (Calls{Write64, L"close 101", WriteLink64, L"close 102", Write64}));
}

TEST_F(OpeningAKey, isDoneAgainWithoutClosingForAReadOfTheOtherKind)
{
    read();
    readAsLink();
    readAsLink();
    read();
    EXPECT_EQ(opened(), (Calls{Read64, ReadLink64, Read64}));
    key_.reset();
    EXPECT_EQ(opened(), Calls{L"close 103"});
}

TEST_F(OpeningAKey, losesAWritableHandleToAReadOfTheOtherKind)
{
    write();
    readAsLink();
    writeAsLink();
    EXPECT_EQ(opened(), (Calls{Write64, ReadLink64, L"close 102", WriteLink64}));
}

TEST_F(OpeningAKey, isTriedAgainByTheNextReadWhenThereIsNoKey)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(key_->GetDword(L"v", 77), 77u);
    read();
    EXPECT_EQ(opened(), (Calls{Read64, Read64}));
}

TEST_F(OpeningAKey, forgetsTheHandleWhenTheOtherKindIsNotThere)
{
    read();
    registry_.tell(L"open", 2);
    readAsLink();
    key_.reset();
    EXPECT_EQ(opened(), (Calls{Read64, ReadLink64}));
}

TEST_F(OpeningAKey, keepsTheOldHandleUnderTheNewKindWhenTheOtherKindFails)
{
    read();
    registry_.tell(L"open", 5);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { readAsLink(); }), 5u);
    readAsLink();
    EXPECT_EQ(opened(), (Calls{Read64, ReadLink64}));
    key_.reset();
    EXPECT_EQ(opened(), Calls{L"close 101"});
}

TEST_F(OpeningAKey, leavesNoHandleWhenAWriteCannotBeHadAfterARead)
{
    read();
    registry_.tell(L"open", 5);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { write(); }), 5u);
    key_.reset();
    EXPECT_EQ(opened(), (Calls{Read64, L"close 101", Write64}));
}

TEST_F(OpeningAKey, isNotWritableAgainUntilAWriteHasOpenedIt)
{
    write();
    registry_.tell(L"open", 5);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { writeAsLink(); }), 5u);
    opened();
    read();
    write();
    EXPECT_EQ(opened(), (Calls{Read64, L"close 102", Write64}));
}

TEST_F(OpeningAKey, takesAHandleOfZeroForClosed)
{
    registry_.next = 0;
    read();
    read();
    EXPECT_EQ(opened(), (Calls{Read64, Read64}));
    registry_.next = 0;
    write();
    write();
    EXPECT_EQ(opened(), (Calls{L"close 1", Write64, Write64}));
    registry_.next = 0;
    key_->Create(false);
    key_.reset();
    EXPECT_EQ(opened(), Calls{L"create 7 Key 0 f013f"});
}

TEST_F(OpeningAKey, endsWithTheObject)
{
    read();
    key_.reset();
    EXPECT_EQ(opened(), (Calls{Read64, L"close 101"}));
    key_ = makeKey();
    key_.reset();
    EXPECT_EQ(opened(), Calls{});
}

class ExistenceOfAKey : public OpeningAKey
{
};

TEST_F(ExistenceOfAKey, isLookedUpWithoutAViewOnAHandleThatIsClosedAgain)
{
    EXPECT_TRUE(key_->Exists(false));
    EXPECT_TRUE(key_->Exists(true));
    EXPECT_TRUE(makeKey(false)->Exists(false));
    EXPECT_EQ(opened(), (Calls{L"open 7 Key 0 20019", L"close 101", L"open 7 Key 8 20019", L"close 102",
                               L"open 7 Key 0 20019", L"close 103"}));
}

TEST_F(ExistenceOfAKey, doesNotTouchTheHandleOfTheObject)
{
    write();
    opened();
    EXPECT_TRUE(key_->Exists(true));
    write();
    EXPECT_EQ(opened(), (Calls{L"open 7 Key 8 20019", L"close 102"}));
}

TEST_F(ExistenceOfAKey, isDeniedByCode2AndByNoOther)
{
    registry_.tell(L"open", 2);
    EXPECT_FALSE(key_->Exists(false));
    registry_.tell(L"open", 5);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->Exists(false); }), 5u);
    registry_.tell(L"open", 3);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->Exists(false); }), 3u);
    EXPECT_EQ(opened(), Calls(3, L"open 7 Key 0 20019"));
}

class CreatingAKey : public OpeningAKey
{
};

TEST_F(CreatingAKey, givesAWritableHandleThatIsKept)
{
    EXPECT_EQ(key_->Create(false), 101);
    write();
    read();
    EXPECT_EQ(opened(), Calls{L"create 7 Key 0 f013f"});
    key_.reset();
    EXPECT_EQ(opened(), Calls{L"close 101"});
}

TEST_F(CreatingAKey, makesALinkInTheViewOfTheObject)
{
    EXPECT_EQ(makeKey(false)->Create(true), 101);
    EXPECT_EQ(opened(), (Calls{L"create 7 Key 2 f023f", L"close 101"}));
}

TEST_F(CreatingAKey, leavesAnEarlierHandleOpen)
{
    read();
    EXPECT_EQ(key_->Create(false), 102);
    EXPECT_EQ(key_->Create(false), 103);
    key_.reset();
    EXPECT_EQ(opened(), (Calls{Read64, L"create 7 Key 0 f013f", L"create 7 Key 0 f013f", L"close 103"}));
}

TEST_F(CreatingAKey, doesNotCountAsOpenedAsALink)
{
    key_->Create(true);
    key_->SetLinkTarget(L"SymbolicLinkValue", L"\\Registry");
    EXPECT_EQ(opened(), (Calls{L"create 7 Key 2 f013f", L"close 101", WriteLink64}));
}

TEST_F(CreatingAKey, keepsTheKindOfTheHandleBefore)
{
    writeAsLink();
    key_->Create(false);
    writeAsLink();
    EXPECT_EQ(opened(), (Calls{WriteLink64, L"create 7 Key 0 f013f"}));
}

TEST_F(CreatingAKey, changesNothingWhenItFails)
{
    read();
    registry_.tell(L"create", 5);
    EXPECT_EQ(errorOf("RegCreateKey failed.", [&] { key_->Create(false); }), 5u);
    read();
    write();
    EXPECT_EQ(opened(), (Calls{Read64, L"create 7 Key 0 f013f", L"close 101", Write64}));
}

TEST_F(CreatingAKey, belowThisOneOpensThisOneForWritingAndClosesTheNewOneAtOnce)
{
    key_->CreateSubKey(L"A\\B", false);
    key_->CreateSubKey(L"C", true);
    EXPECT_EQ(opened(),
              (Calls{Write64, L"create 101 A\\B 0 f013f", L"close 102", L"create 101 C 2 f013f", L"close 103"}));
    makeKey(false)->CreateSubKey(L"D", false);
    EXPECT_EQ(opened(), (Calls{L"open 7 Key 0 f023f", L"create 104 D 0 f023f", L"close 105", L"close 104"}));
}

TEST_F(CreatingAKey, belowThisOneNeedsThisOne)
{
    registry_.tell(L"open", 2);
    EXPECT_EQ(errorOf("RegOpenKey failed.", [&] { key_->CreateSubKey(L"A", false); }), 2u);
    EXPECT_EQ(opened(), Calls{Write64});
}

TEST_F(CreatingAKey, belowThisOneClosesNothingWhenItFails)
{
    registry_.tell(L"create", 1018);
    EXPECT_EQ(errorOf("RegCreateKey failed.", [&] { key_->CreateSubKey(L"A", false); }), 1018u);
    EXPECT_EQ(opened(), (Calls{Write64, L"create 101 A 0 f013f"}));
}

} // namespace

} // namespace Halden::SystemUtilities::Registry
