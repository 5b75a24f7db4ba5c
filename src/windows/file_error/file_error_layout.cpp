#include "windows/file_error/file_error_layout.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

// The same at every density of the screen.
constexpr int Margin = 15;
constexpr int CaptionLeft = 60;
constexpr int BelowMessage = 10;
constexpr int BesideCaption = 7;

} // namespace

FileErrorLayout layOutFileError(const FileErrorContent& content)
{
    FileErrorLayout layout;
    const int messageWidth = content.clientWidth - 2 * Margin;
    layout.message = {Margin, content.headerHeight + Margin, messageWidth, content.message(messageWidth)};
    layout.sourceCaption = {CaptionLeft, layout.message.bottom() + BelowMessage, content.sourceCaptionWidth,
                            content.sourceCaptionHeight};

    int captionRight = layout.sourceCaption.right();
    if (content.hasTarget)
        captionRight = std::max(captionRight, CaptionLeft + content.targetCaptionWidth);
    const int column = captionRight + BesideCaption;
    const int width = content.clientWidth - Margin - column;
    layout.source = {column, layout.sourceCaption.y, width, content.source(width)};

    int lowest = layout.source.bottom();
    if (content.hasTarget)
    {
        const int top = layout.source.bottom() + content.sourceCaptionHeight / 2;
        layout.targetCaption = {CaptionLeft, top, content.targetCaptionWidth, content.targetCaptionHeight};
        layout.target = {column, top, width, content.target(width)};
        lowest = layout.target.bottom();
    }
    layout.buttonsTop = lowest + content.buttonHeight;
    layout.windowBottom = layout.buttonsTop + content.buttonHeight + content.buttonHeight / 2;
    return layout;
}

} // namespace JobRunner
