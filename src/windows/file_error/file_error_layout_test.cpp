#include "windows/file_error/file_error_layout.h"

#include <gtest/gtest.h>

namespace JobRunner
{

namespace
{

FileErrorContent::HeightForWidth always(int height)
{
    return [height](int) { return height; };
}

FileErrorContent oneRow()
{
    FileErrorContent content;
    content.clientWidth = 411;
    content.headerHeight = 50;
    content.buttonHeight = 25;
    content.sourceCaptionWidth = 40;
    content.sourceCaptionHeight = 13;
    content.message = always(26);
    content.source = always(13);
    return content;
}

FileErrorContent twoRows()
{
    FileErrorContent content = oneRow();
    content.hasTarget = true;
    content.targetCaptionWidth = 38;
    content.targetCaptionHeight = 17;
    content.target = always(13);
    return content;
}

} // namespace

TEST(FileErrorLayout, putsTheMessageBelowTheHeaderAcrossTheWindow)
{
    const FileErrorLayout layout = layOutFileError(oneRow());
    EXPECT_EQ(layout.message, (LayoutBox{15, 65, 381, 26}));
}

TEST(FileErrorLayout, putsTheSourceRowBelowTheMessage)
{
    const FileErrorLayout layout = layOutFileError(oneRow());
    EXPECT_EQ(layout.sourceCaption, (LayoutBox{60, 101, 40, 13}));
    EXPECT_EQ(layout.source, (LayoutBox{107, 101, 289, 13}));
    EXPECT_EQ(layout.source.right(), 411 - 15);
}

TEST(FileErrorLayout, endsHalfAButtonBelowTheButtons)
{
    const FileErrorLayout layout = layOutFileError(oneRow());
    EXPECT_EQ(layout.buttonsTop, 114 + 25);
    EXPECT_EQ(layout.windowBottom, 139 + 25 + 12);
}

TEST(FileErrorLayout, hasNoTargetRowWithoutATarget)
{
    const FileErrorLayout layout = layOutFileError(oneRow());
    EXPECT_EQ(layout.target, LayoutBox{});
    EXPECT_EQ(layout.targetCaption, LayoutBox{});
}

TEST(FileErrorLayout, aTargetRowMakesTheWindowThatMuchHigher)
{
    const FileErrorLayout layout = layOutFileError(twoRows());
    EXPECT_EQ(layout.targetCaption, (LayoutBox{60, 114 + 6, 38, 17}));
    EXPECT_EQ(layout.target, (LayoutBox{107, 120, 289, 13}));
    EXPECT_EQ(layout.windowBottom - layOutFileError(oneRow()).windowBottom, 13 + 6);
}

TEST(FileErrorLayout, theWiderCaptionDecidesTheValueColumn)
{
    FileErrorContent content = twoRows();
    content.targetCaptionWidth = 55;
    const FileErrorLayout layout = layOutFileError(content);
    EXPECT_EQ(layout.source.x, 60 + 55 + 7);
    EXPECT_EQ(layout.target.x, layout.source.x);
    EXPECT_EQ(layout.source.right(), 396);
}

TEST(FileErrorLayout, aCaptionOfNoTargetDoesNotCount)
{
    FileErrorContent content = oneRow();
    content.targetCaptionWidth = 300;
    EXPECT_EQ(layOutFileError(content).source.x, 107);
}

TEST(FileErrorLayout, measuresEachTextAtTheWidthItGets)
{
    FileErrorContent content = twoRows();
    content.message = content.source = content.target = [](int width) { return width; };
    const FileErrorLayout layout = layOutFileError(content);
    EXPECT_EQ(layout.message.height, 381);
    EXPECT_EQ(layout.source.height, 289);
    EXPECT_EQ(layout.target.height, 289);
    EXPECT_EQ(layout.buttonsTop, layout.target.bottom() + 25);
}

TEST(FileErrorLayout, aNarrowWindowStillHasAnOrder)
{
    FileErrorContent content = twoRows();
    content.clientWidth = 0;
    const FileErrorLayout layout = layOutFileError(content);
    EXPECT_LT(layout.message.bottom(), layout.source.y);
    EXPECT_LT(layout.source.bottom(), layout.target.y);
}

} // namespace JobRunner
