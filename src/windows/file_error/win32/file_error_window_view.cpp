#include "windows/file_error/win32/file_error_window_view.h"

#include "resources/resource.h"
#include "windows/file_error/file_error_layout.h"
#include "windows/framework/win32/controls.h"
#include "windows/framework/win32/dialog.h"
#include "windows/framework/win32/placement.h"

#include <ranges>

namespace JobRunner
{

namespace
{

constexpr int Buttons[] = {IDC_TRY_AGAIN, IDC_SKIP_FILE, IDC_ABORT_JOB};
constexpr COLORREF FirstHeaderColour = RGB(8, 56, 141);
constexpr COLORREF SecondHeaderColour = RGB(5, 22, 52);

// Where a text control is made; the layout places it later.
constexpr int ProvisionalWidth = 100;
constexpr int ProvisionalHeight = 50;

int answerOf(INT_PTR dialogResult)
{
    if (dialogResult == IDC_TRY_AGAIN)
        return FileErrorTryAgain;
    if (dialogResult == IDC_SKIP_FILE)
        return FileErrorSkipFile;
    return FileErrorAbortJob;
}

FileErrorContent::HeightForWidth heightOf(ISimpleText* text)
{
    return [text](int width) { return text->heightForWidth(width); };
}

void place(ISimpleText& text, const LayoutBox& box)
{
    text.move(box.x, box.y);
    text.setWidth(box.width, true);
    text.setHeight(box.height);
}

} // namespace

void FileErrorWindowView::setTitle(const wchar_t* text)
{
    title_ = text;
}

void FileErrorWindowView::setHeader(const wchar_t* text)
{
    headerText_ = text;
}

void FileErrorWindowView::setSource(const wchar_t* path)
{
    sourcePath_ = path;
}

void FileErrorWindowView::setTarget(const wchar_t* path)
{
    targetPath_ = path;
}

void FileErrorWindowView::setMessage(const wchar_t* text)
{
    message_ = text;
}

int FileErrorWindowView::doModal()
{
    return answerOf(DialogBoxParamW(resourceModule(), MAKEINTRESOURCEW(IDD_FILE_ERROR), GetActiveWindow(), procedure,
                                    reinterpret_cast<LPARAM>(this)));
}

INT_PTR CALLBACK FileErrorWindowView::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = viewOf<FileErrorWindowView>(dialog, message, lParam);
    if (self && message == WM_INITDIALOG)
        self->dialog_ = dialog;
    return self ? self->onMessage(message, wParam) : FALSE;
}

INT_PTR FileErrorWindowView::onMessage(UINT message, WPARAM wParam)
{
    switch (message)
    {
    case WM_INITDIALOG:
        onInit();
        return TRUE;
    case WM_ERASEBKGND:
        onErase(reinterpret_cast<HDC>(wParam));
        SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, 1);
        return TRUE;
    case WM_COMMAND: // the close box arrives as the abort button
        for (const int button : Buttons)
            if (LOWORD(wParam) == button)
                return EndDialog(dialog_, button);
        return FALSE;
    case WM_DESTROY:
        onDestroy();
        return TRUE;
    default:
        return FALSE;
    }
}

void FileErrorWindowView::onInit()
{
    centreDialog(dialog_);
    background_.prepare(dialog_);
    SetWindowTextW(dialog_, title_.c_str());
    SetWindowLongPtrW(dialog_, GWL_STYLE, GetWindowLongPtrW(dialog_, GWL_STYLE) | WS_CLIPCHILDREN);
    makeControls();
    layOut();
}

void FileErrorWindowView::onErase(HDC dc)
{
    background_.prepare(dialog_); // the height of the dialog changes
    // All but the header, which is the first of them.
    const auto texts = controls_ | std::views::drop(1);
    background_.paint(dialog_, dc, {texts.begin(), texts.end()});
}

void FileErrorWindowView::onDestroy()
{
    for (ICustomControl* const control : controls_)
        control->destroy();
    controls_.clear();
    background_.free();
    dialog_ = nullptr;
}

void FileErrorWindowView::makeControls()
{
    makeHeader();
    sourceCaption_ = makeCaption(L"Source:");
    source_ = makePath(sourcePath_);
    targetCaption_ = target_ = nullptr;
    if (!targetPath_.empty())
    {
        targetCaption_ = makeCaption(L"Target:");
        target_ = makePath(targetPath_);
    }
    text_ = makeText(message_.c_str());
}

void FileErrorWindowView::makeHeader()
{
    RECT client{};
    GetClientRect(dialog_, &client);
    header_ = createControlAs<ICopyDialogGradient>(ControlClass::CopyDialogGradient, dialog_, 0, 0,
                                                   static_cast<int>(client.right), static_cast<int>(client.bottom));
    controls_.push_back(header_);
    header_->setHeight(header_->heightForWidth(0));
    header_->setIcon(resourceModule(), L"QUESTION32.PNG");
    header_->setText(headerText_.c_str());
    header_->setColors(FirstHeaderColour, SecondHeaderColour);
}

ISimpleText* FileErrorWindowView::makeText(const wchar_t* text)
{
    auto* const control =
        createControlAs<ISimpleText>(ControlClass::SimpleText, dialog_, 0, 0, ProvisionalWidth, ProvisionalHeight);
    controls_.push_back(control);
    control->setText(text);
    return control;
}

ISimpleText* FileErrorWindowView::makeCaption(const wchar_t* text)
{
    ISimpleText* const control = makeText(text);
    control->setCaptionStyle(true);
    control->fitToContent();
    return control;
}

ISimpleText* FileErrorWindowView::makePath(const std::wstring& path)
{
    ISimpleText* const control = makeText(path.c_str());
    control->setPathStyle();
    return control;
}

void FileErrorWindowView::layOut()
{
    RECT client{};
    GetClientRect(dialog_, &client);
    const LayoutBox caption = boxOf(*sourceCaption_);
    FileErrorContent content;
    content.clientWidth = static_cast<int>(client.right);
    content.headerHeight = boxOf(*header_).bottom();
    content.buttonHeight = boxOfItem(dialog_, IDC_TRY_AGAIN).height;
    content.sourceCaptionWidth = caption.width;
    content.sourceCaptionHeight = caption.height;
    content.hasTarget = target_ != nullptr;
    content.message = heightOf(text_);
    content.source = heightOf(source_);
    if (target_)
    {
        const LayoutBox fitted = boxOf(*targetCaption_);
        content.targetCaptionWidth = fitted.width;
        content.targetCaptionHeight = fitted.height;
        content.target = heightOf(target_);
    }

    const FileErrorLayout layout = layOutFileError(content);
    place(*text_, layout.message);
    sourceCaption_->move(layout.sourceCaption.x, layout.sourceCaption.y);
    place(*source_, layout.source);
    if (target_)
    {
        targetCaption_->move(layout.targetCaption.x, layout.targetCaption.y);
        place(*target_, layout.target);
    }
    for (const int id : Buttons)
        moveItem(dialog_, id, {boxOfItem(dialog_, id).x, layout.buttonsTop});
    endWindowAt(dialog_, layout.windowBottom);
}

} // namespace JobRunner
