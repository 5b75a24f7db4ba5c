#include "vaultcore/deleter.h"

#include "interfaces/vaultcore/exception.h"
#include "vaultcore/deletion_job.h"
#include "vaultcore/file_list.h"
#include "vaultcore/operation_events.h"

namespace VaultCore
{
void Deleter::Start(IFileList* files, IDeletionOptions* options, IOperationEvents* events)
{
    if (thread_.joinable())
        throw Exception(L"The deletion has been started already.");
    const auto* ownOptions = dynamic_cast<DeletionOptions*>(options);
    const auto* source = dynamic_cast<IEventSource*>(events);
    if (files == nullptr || ownOptions == nullptr || source == nullptr)
        throw Exception(L"The deletion cannot start without a file list, options and events of this engine.");
    // All of it is read here, on the caller's thread: later changes do not reach a job that has begun.
    thread_ = std::jthread(
        [this, entries = entriesOf(*files), wipe = ownOptions->method() == DeletionMethodWipe,
         receivers = source->receivers()]
        {
            DeletionJob(*files_, receivers, wipe).run(entries);
            finished_.store(true);
        });
}

} // namespace VaultCore
