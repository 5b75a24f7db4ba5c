#include "windows/file_error/file_error_window.h"

#include "windows/file_error/i_file_error_window_view.h"

#include <utility>

namespace JobRunner
{

FileErrorWindow::FileErrorWindow(std::unique_ptr<IFileErrorWindowView> view) : view_(std::move(view)) {}

FileErrorWindow::~FileErrorWindow() = default;

void FileErrorWindow::setTitle(const wchar_t* text)
{
    view_->setTitle(text);
}

void FileErrorWindow::setHeader(const wchar_t* text)
{
    view_->setHeader(text);
}

void FileErrorWindow::setMessage(const wchar_t* text)
{
    view_->setMessage(text);
}

void FileErrorWindow::setSource(const wchar_t* path)
{
    view_->setSource(path);
}

void FileErrorWindow::setTarget(const wchar_t* path)
{
    view_->setTarget(path);
}

int FileErrorWindow::doModal()
{
    return view_->doModal();
}

} // namespace JobRunner
