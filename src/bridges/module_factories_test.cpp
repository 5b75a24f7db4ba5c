#include "bridges/module_factories.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"

#include <gtest/gtest.h>

using namespace Fakes;
using namespace JobRunner;

TEST(AModuleFactory, isANewOneOnEachCallAndEndsThroughItsRelease)
{
    CallLog log;
    FakeEngine engine(log);
    setVaultCoreFactory(&FakeEngine::createFactory);
    {
        const auto first = createVaultCoreFactory();
        const auto second = createVaultCoreFactory();
        EXPECT_NE(first, second);
        EXPECT_EQ(engine.liveObjects(), 2);
    }
    EXPECT_EQ(engine.liveObjects(), 0);
    EXPECT_EQ(log.callsOf(L"factory.Release").size(), 2U);
    setVaultCoreFactory(nullptr);
}

TEST(AModuleFactory, ofTheDocumentsIsNotThatOfTheEngine)
{
    CallLog log;
    FakeZelPlatform module(log);
    setZelPlatformFactory(&FakeZelPlatform::createFactory);
    createZelPlatformFactory().reset();
    const std::vector<std::wstring> expected{L"zelplatform.createFactory", L"zelplatform.Release"};
    EXPECT_EQ(log.calls(), expected);
    setZelPlatformFactory(nullptr);
}
