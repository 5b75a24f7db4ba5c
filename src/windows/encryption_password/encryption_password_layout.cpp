#include "windows/encryption_password/encryption_password_layout.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

constexpr int Margin = 20;
constexpr int Gap = 6;
constexpr int AboveButtons = 20;
constexpr int BelowButtons = 14;

void layOutFirstRows(const EncryptionContent& content, EncryptionLayout& layout)
{
    const int margin = content.scale(Margin);
    const int gap = content.scale(Gap);
    const int edit = content.editHeight;
    const int caption = content.originCaption.height;
    const int captionInEdit = (edit - caption) / 2;
    const int top = content.headerBottom + gap;
    const int widest = std::max({content.originCaption.width, content.inputChoice.width, content.repeatCaption.width});
    const int column = gap + widest + margin;

    layout.valueWidth = content.cancelRight - column;
    layout.originText = {column, top};
    layout.firstEdit = {column, top + caption + edit / 3 + captionInEdit};
    layout.repeatEdit = {column, layout.firstEdit.y + edit / 3 + edit};
    layout.inputChoice = {margin, layout.firstEdit.y + captionInEdit};
    const int captionColumn = content.captionColumn(layout.inputChoice);
    layout.repeatCaption = {captionColumn, layout.repeatEdit.y + captionInEdit};
    layout.originCaption = {captionColumn, top};
}

void layOutSection(const EncryptionContent& content, EncryptionLayout& layout)
{
    const int step = content.inputChoice.height + 1;
    const LayoutPoint above = content.passwordMode ? layout.repeatEdit : layout.firstEdit;
    int bottom = above.y + content.editHeight;
    layout.lowestBottom = bottom;
    for (const ValueHeight& heightFor : content.rows)
    {
        const LayoutBox value{above.x, bottom + step, layout.valueWidth, heightFor(layout.valueWidth)};
        layout.rows.push_back({{layout.originCaption.x, value.y}, value});
        bottom = value.bottom();
    }
    if (content.sectionOpen)
        layout.lowestBottom = bottom;
}

} // namespace

EncryptionLayout layOutEncryption(const EncryptionContent& content)
{
    EncryptionLayout layout;
    layOutFirstRows(content, layout);
    layOutSection(content, layout);
    layout.buttonsTop = layout.lowestBottom + content.scale(AboveButtons);
    layout.dialogBottom = layout.buttonsTop + content.buttonHeight + content.scale(BelowButtons);
    return layout;
}

} // namespace JobRunner
