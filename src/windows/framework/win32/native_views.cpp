#include "windows/framework/view_factory.h"

#include "windows/decryption_password/win32/decryption_password_view.h"
#include "windows/encryption_password/win32/encryption_password_view.h"
#include "windows/file_error/win32/file_error_window_view.h"
#include "windows/framework/win32/key_file_dialog.h"
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

    std::unique_ptr<IEncryptionPasswordView> createEncryptionPasswordView(bool selfExtracting) override
    {
        return std::make_unique<EncryptionPasswordView>(selfExtracting);
    }

    std::unique_ptr<IDecryptionPasswordView> createDecryptionPasswordView() override
    {
        return std::make_unique<DecryptionPasswordView>();
    }

    std::wstring pickKeyFile(bool initializeCom) override { return showKeyFileDialog(initializeCom); }
};

} // namespace

IViewFactory& nativeViews()
{
    static Win32Views views;
    return views;
}

} // namespace JobRunner
