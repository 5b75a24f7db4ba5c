#pragma once

#include "windows/framework/layout_box.h"

#include <functional>

namespace JobRunner
{

/// What the file error window measures before it is laid out. Pixels. A text's height depends on the width it gets.
struct FileErrorContent
{
    using HeightForWidth = std::function<int(int width)>;

    int clientWidth = 0;
    int headerHeight = 0;
    int buttonHeight = 0;
    int sourceCaptionWidth = 0;
    int sourceCaptionHeight = 0;
    bool hasTarget = false;
    int targetCaptionWidth = 0;
    int targetCaptionHeight = 0;
    HeightForWidth message;
    HeightForWidth source;
    /// Used with a target only.
    HeightForWidth target;
};

/// Places in client coordinates. The boxes of the target stay empty without one.
struct FileErrorLayout
{
    LayoutBox message;
    LayoutBox sourceCaption;
    LayoutBox source;
    LayoutBox targetCaption;
    LayoutBox target;
    int buttonsTop = 0;
    /// Where the window ends.
    int windowBottom = 0;
};

FileErrorLayout layOutFileError(const FileErrorContent& content);

} // namespace JobRunner
