#include "interfaces/process/file_destiny_events.h"
#include "interfaces/process/gui_events.h"
#include "interfaces/process/key_validation.h"
#include "interfaces/testing_tables.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace JobRunner;
using Fakes::expectSlots;

TEST(TheTablesOfTheProcess, haveTheWayToTheFirstThreadInOrder)
{
    expectSlots(0, &IGuiEvents::showEncryptionPasswordWindow, &IGuiEvents::showDecryptionPasswordWindow,
                &IGuiEvents::showFileErrorWindow, &IGuiEvents::closeMessageWindow);
}

TEST(TheTablesOfTheProcess, haveOneOperationForAKeyFileAndOneForTheDestiny)
{
    expectSlots(0, &IDpvKeyValidation::ValidateKeyFile);
    expectSlots(0, &IFileDestinyEvents::OnDestinyProgress);
}

TEST(TheTablesOfTheProcess, holdNoDestructorBecauseNobodyDeletesThroughThem)
{
    EXPECT_FALSE(std::has_virtual_destructor_v<IGuiEvents>);
    EXPECT_FALSE(std::has_virtual_destructor_v<IDpvKeyValidation>);
    EXPECT_FALSE(std::has_virtual_destructor_v<IFileDestinyEvents>);
}
