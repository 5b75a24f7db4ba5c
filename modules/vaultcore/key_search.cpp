#include "vaultcore/key_search.h"

#include "interfaces/vaultcore/exception.h"

#include <exception>
#include <utility>

namespace VaultCore
{

void KeySearch::unlock(ContainerReader& reader, const std::wstring& file)
{
    if (provider_ == nullptr)
        throw FileFailure(FailureCause::NoKey, 0);
    if (unlockWithStored(reader))
        return;
    for (;;)
    {
        std::unique_ptr<Key> key = ask(file);
        try
        {
            if (!fits(reader, *key))
                continue; // the next question for the same file tells that this one did not fit
        }
        catch (const ContainerFailure& failure)
        {
            // Damage shows behind a slot that the key has opened: nobody is asked for it again at the next file.
            if (failure.fault == ContainerFault::Damaged)
                keep(std::move(key));
            throw;
        }
        keep(std::move(key));
        return;
    }
}

void KeySearch::keep(std::unique_ptr<Key> key)
{
    if (provider_->AddStoredKey(key.get()))
        static_cast<void>(key.release());
}

bool KeySearch::fits(ContainerReader& reader, const Key& key)
{
    try
    {
        return reader.unlock(key, *derivations_);
    }
    catch (const ContainerFailure& failure)
    {
        if (failure.fault == ContainerFault::WrongKey)
            return false;
        throw;
    }
}

bool KeySearch::unlockWithStored(ContainerReader& reader)
{
    const std::lock_guard lock(mutex_);
    const int count = provider_->GetStoredKeyCount();
    for (int i = 0; i < count; ++i)
    {
        const auto* key = dynamic_cast<const Key*>(provider_->GetStoredKey(i));
        if (key != nullptr && fits(reader, *key))
            return true;
    }
    return false;
}

std::unique_ptr<Key> KeySearch::ask(const std::wstring& file)
{
    IKey* provided = nullptr;
    const int answer = provide(file, provided);
    if (answer == KeyCancelJob)
    {
        reports_.stop();
        throw FileFailure(FailureCause::Cancelled, 0);
    }
    if (answer != KeyProvided)
        throw FileFailure(FailureCause::Skipped, 0);
    if (provided == nullptr)
        throw FileFailure(FailureCause::NoKey, 0);
    if (auto* key = dynamic_cast<Key*>(provided))
        return std::unique_ptr<Key>(key);
    provided->Release();
    throw FileFailure(FailureCause::ForeignKey, 0);
}

/// What the provider throws is a failure of this file, not the end of the process.
int KeySearch::provide(const std::wstring& file, IKey*& key)
{
    try
    {
        return provider_->ProvideKey(file.c_str(), &key);
    }
    catch (const Exception& exception)
    {
        throw FileFailure(FailureCause::Content, 0, exception.GetText());
    }
    catch (const std::exception&)
    {
        throw FileFailure(FailureCause::NoKey, 0);
    }
}

} // namespace VaultCore
