#pragma once

#include <memory>
#include <string>

namespace JobRunner
{

class IProgressWindowView;
class IFileErrorWindowView;
class IEncryptionPasswordView;
class IDecryptionPasswordView;

/// Makes the views of this system.
class IViewFactory
{
public:
    virtual ~IViewFactory() = default;
    /// `operation` is a `ProgressOperation` and selects the title.
    virtual std::unique_ptr<IProgressWindowView> createProgressWindowView(int operation) = 0;
    virtual std::unique_ptr<IFileErrorWindowView> createFileErrorWindowView() = 0;
    virtual std::unique_ptr<IEncryptionPasswordView> createEncryptionPasswordView(bool selfExtracting) = 0;
    virtual std::unique_ptr<IDecryptionPasswordView> createDecryptionPasswordView() = 0;
    /// Lets the user pick a key file and blocks until then: the path of a file that exists, empty when there is none.
    /// Runs on a task's own thread, while the thread of the password dialog waits for it. `initializeCom` tells
    /// whether that thread has to be made ready for COM first; systems without COM have no use for it.
    virtual std::wstring pickKeyFile(bool initializeCom) = 0;
};

/// The views that this program was built with.
IViewFactory& nativeViews();
/// The views in use: the native ones, or those that a test has put in their place.
IViewFactory& viewFactory();
/// Replaces the views in use; null puts the native ones back. First thread, while no other thread runs.
void setViewFactory(IViewFactory* factory);

/// Module and entry point of the custom controls, set once while the modules load (null when there are none).
void setControlModule(void* module);
void* controlModule();

} // namespace JobRunner
