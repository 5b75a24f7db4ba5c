#pragma once

#include "windows/framework/layout_box.h"

#include <functional>
#include <vector>

// Where the controls of the encryption password dialog go. Pure functions over measured sizes, in pixels.

namespace JobRunner
{

/// Height that a value of the "More" section has once it is so wide.
using ValueHeight = std::function<int(int width)>;

/// What the dialog measures before it is laid out. The captions and the input choice have been fitted.
struct EncryptionContent
{
    LayoutScale scale;
    CaptionColumn captionColumn;
    int headerBottom = 0;
    int cancelRight = 0;
    int buttonHeight = 0;
    LayoutSize originCaption;
    LayoutSize inputChoice;
    LayoutSize repeatCaption;
    int editHeight = 0;
    bool passwordMode = true;
    bool sectionOpen = false;
    /// The rows of the "More" section, from above.
    std::vector<ValueHeight> rows;
};

struct EncryptionRowPlace
{
    LayoutPoint caption;
    LayoutBox value;
};

struct EncryptionLayout
{
    LayoutPoint originCaption;
    LayoutPoint inputChoice;
    LayoutPoint repeatCaption;
    /// Of the origin text and of the three edits.
    int valueWidth = 0;
    LayoutPoint originText;
    /// The password edit and, in the same place, the key file edit.
    LayoutPoint firstEdit;
    LayoutPoint repeatEdit;
    /// Hidden rows have their places too.
    std::vector<EncryptionRowPlace> rows;
    /// Bottom of the lowest control that can be seen, but for the buttons.
    int lowestBottom = 0;
    /// The buttons keep their x and size.
    int buttonsTop = 0;
    int dialogBottom = 0;
};

/// Width of the algorithm list, which takes the place of the algorithm's link. The same at every density.
inline constexpr int AlgorithmListWidth = 100;

EncryptionLayout layOutEncryption(const EncryptionContent& content);

} // namespace JobRunner
