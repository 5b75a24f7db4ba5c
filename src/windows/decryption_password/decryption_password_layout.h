#pragma once

#include "windows/framework/layout_box.h"

// Where the controls of the decryption password dialog go. A pure function over measured sizes, in pixels.

namespace JobRunner
{

/// What the dialog measures before it is laid out. The origin caption, the origin text and the input choice have been
/// fitted.
struct DecryptionContent
{
    LayoutScale scale;
    CaptionColumn captionColumn;
    int headerBottom = 0;
    int cancelRight = 0;
    int inputChoiceWidth = 0;
    int originTextHeight = 0;
    int editHeight = 0;
};

struct DecryptionLayout
{
    LayoutPoint originCaption;
    LayoutPoint inputChoice;
    LayoutPoint originText;
    /// Of both edits.
    LayoutPoint edit;
    /// Of the origin text and of both edits.
    int valueWidth = 0;
};

DecryptionLayout layOutDecryption(const DecryptionContent& content);

} // namespace JobRunner
