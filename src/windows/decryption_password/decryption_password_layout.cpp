#include "windows/decryption_password/decryption_password_layout.h"

namespace JobRunner
{

namespace
{
constexpr int Margin = 20;
constexpr int Gap = 6;
} // namespace

DecryptionLayout layOutDecryption(const DecryptionContent& content)
{
    const int margin = content.scale(Margin);
    const int gap = content.scale(Gap);
    const int top = content.headerBottom + gap;
    const int column = content.inputChoiceWidth + gap + margin;
    const int edit = content.editHeight;
    const int textInEdit = (edit - content.originTextHeight) / 2;

    DecryptionLayout layout;
    layout.valueWidth = content.cancelRight - column;
    layout.originText = {column, top};
    layout.edit = {column, top + content.originTextHeight + edit / 3 + textInEdit};
    layout.inputChoice = {margin, layout.edit.y + textInEdit};
    layout.originCaption = {content.captionColumn(layout.inputChoice), top};
    return layout;
}

} // namespace JobRunner
