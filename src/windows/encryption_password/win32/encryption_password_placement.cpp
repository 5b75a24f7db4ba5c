#include "windows/encryption_password/win32/encryption_password_view.h"

#include "windows/encryption_password/encryption_password_layout.h"
#include "windows/framework/win32/placement.h"
#include "windows/framework/win32/scale.h"

#include <algorithm>

namespace JobRunner
{

namespace
{

/// Of a value in the section. A riddle has no limit, and the buttons have to stay on the screen.
constexpr int MostLines = 8;

LayoutSize sizeOf(ICustomControl& control)
{
    const LayoutBox box = boxOf(control);
    return {box.width, box.height};
}

} // namespace

void EncryptionPasswordView::layOut()
{
    inputChoice_->fitToContent();
    const EncryptionLayout layout = layOutEncryption(measure());
    applyFirstRows(layout);
    applyRows(layout);
    showRows();
    for (const int id : Buttons)
        moveItem(dialog_, id, {boxOfItem(dialog_, id).x, layout.buttonsTop});
    endWindowAt(dialog_, layout.dialogBottom);
    InvalidateRect(dialog_, nullptr, TRUE);
}

EncryptionContent EncryptionPasswordView::measure()
{
    EncryptionContent content;
    content.scale = [this](int distance) { return scaleByDpi(dialog_, distance); };
    content.captionColumn = [this](LayoutPoint place)
    {
        moveTo(*inputChoice_, place);
        return inputChoice_->getCaptionLeft();
    };
    content.headerBottom = boxOf(*header_).bottom();
    content.cancelRight = boxOfItem(dialog_, IDC_CANCEL).right();
    content.buttonHeight = boxOfItem(dialog_, IDC_PROCEED).height;
    content.originCaption = sizeOf(*originCaption_);
    content.inputChoice = sizeOf(*inputChoice_);
    content.repeatCaption = sizeOf(*repeatCaption_);
    content.editHeight = boxOf(*password_).height;
    content.passwordMode = state_.inputMode != KeyFileInput;
    content.sectionOpen = state_.sectionOpen();
    const int longest = MostLines * content.originCaption.height;
    for (const Row& row : rows_)
        content.rows.emplace_back([longest, value = row.value](int width)
                                  { return std::min(value->heightForWidth(width), longest); });
    return content;
}

void EncryptionPasswordView::applyFirstRows(const EncryptionLayout& layout)
{
    moveTo(*originCaption_, layout.originCaption);
    moveTo(*origin_, layout.originText);
    setTextWidth(*origin_, layout.valueWidth);
    for (IEditWithIconButtons* const edit : {password_, repeat_, keyFile_})
        edit->setWidth(layout.valueWidth, true);
    moveTo(*password_, layout.firstEdit);
    moveTo(*keyFile_, layout.firstEdit);
    moveTo(*repeat_, layout.repeatEdit);
    moveTo(*repeatCaption_, layout.repeatCaption);
}

void EncryptionPasswordView::applyRows(const EncryptionLayout& layout)
{
    for (std::size_t i = 0; i < rows_.size(); ++i)
    {
        const EncryptionRowPlace& place = layout.rows[i];
        moveTo(*rows_[i].caption, place.caption);
        moveTo(*rows_[i].value, {place.value.x, place.value.y});
        rows_[i].value->setWidth(place.value.width, true);
        rows_[i].value->setHeight(place.value.height);
        if (rows_[i].value != algorithmLink_)
            continue;
        moveTo(*algorithmList_, {place.value.x, place.value.y});
        algorithmList_->setWidth(AlgorithmListWidth, true);
    }
}

void EncryptionPasswordView::showRows()
{
    const bool open = state_.sectionOpen();
    for (const Row& row : rows_)
    {
        showControl(*row.caption, open);
        showControl(*row.value, open && !(row.value == algorithmLink_ && algorithmListShown_));
    }
    showControl(*algorithmList_, open && algorithmListShown_);
}

} // namespace JobRunner
