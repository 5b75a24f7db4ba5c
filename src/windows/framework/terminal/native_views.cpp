#include "platform/posix/terminal.h"
#include "windows/decryption_password/terminal/decryption_password_view.h"
#include "windows/encryption_password/terminal/encryption_password_view.h"
#include "windows/file_error/terminal/file_error_window_view.h"
#include "windows/framework/terminal/key_file_prompt.h"
#include "windows/framework/view_factory.h"
#include "windows/progress/terminal/progress_window_view.h"

namespace JobRunner
{

namespace
{

class TerminalViews : public IViewFactory
{
public:
    std::unique_ptr<IProgressWindowView> createProgressWindowView(int operation) override
    {
        return std::make_unique<ProgressWindowView>(operation, Platform::terminal());
    }

    std::unique_ptr<IFileErrorWindowView> createFileErrorWindowView() override
    {
        return std::make_unique<FileErrorWindowView>(Platform::terminal());
    }

    std::unique_ptr<IEncryptionPasswordView> createEncryptionPasswordView(bool selfExtracting) override
    {
        return std::make_unique<EncryptionPasswordView>(selfExtracting, Platform::terminal());
    }

    std::unique_ptr<IDecryptionPasswordView> createDecryptionPasswordView() override
    {
        return std::make_unique<DecryptionPasswordView>(Platform::terminal());
    }

    std::wstring pickKeyFile(bool) override { return askForKeyFile(Platform::terminal()); }
};

} // namespace

IViewFactory& nativeViews()
{
    static TerminalViews views;
    return views;
}

} // namespace JobRunner
