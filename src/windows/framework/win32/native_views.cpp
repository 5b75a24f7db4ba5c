#include "windows/framework/view_factory.h"

#include "windows/file_error/win32/file_error_window_view.h"
#include "windows/progress/win32/progress_window_view.h"

namespace JobRunner
{

namespace
{

class Win32Views : public IViewFactory
{
public:
    std::unique_ptr<IProgressWindowView> createProgressWindowView(int operation) override
    {
        return std::make_unique<ProgressWindowView>(operation);
    }

    std::unique_ptr<IFileErrorWindowView> createFileErrorWindowView() override
    {
        return std::make_unique<FileErrorWindowView>();
    }
};

} // namespace

IViewFactory& nativeViews()
{
    static Win32Views views;
    return views;
}

} // namespace JobRunner
