#include "windows/framework/win32/help_topic.h"

#include <gtest/gtest.h>

using namespace JobRunner;

TEST(HelpRequest, namesNoFileButTheTopicAlone)
{
    EXPECT_EQ(helpRequest(L"decryption_context_dialog.htm"), L"::/decryption_context_dialog.htm");
}
