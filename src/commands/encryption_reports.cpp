#include "commands/encryption_reports.h"

#include "interfaces/vaultcore/exception.h"
#include "interfaces/vaultcore/key.h"
#include "platform/message_box.h"
#include "platform/platform.h"
#include "telemetry/usage_events.h"
#include "telemetry/usage_names.h"

namespace JobRunner
{

using namespace Halden::ZEL::Telemetry;

void trackKeyFileType(IEventTracker& tracker, VaultCore::IKey& key)
{
    const int type = key.GetKeyType();
    // Intended: a key of a further type works and is not reported.
    if (type == VaultCore::KeyTypeSymmetric)
        tracker.TrackEvent(UsageCategory::Encryption, UsageEvent::UseSymmetricKeyFile, L"", NoEventValue);
    if (type == VaultCore::KeyTypePublicRsa)
        tracker.TrackEvent(UsageCategory::Encryption, UsageEvent::UsePublicKeyFile, L"", NoEventValue);
}

void trackAlgorithmAndDestiny(IEventTracker& tracker, const wchar_t* category, std::uint32_t algorithm,
                              std::uint32_t destiny)
{
    tracker.TrackEvent(category, UsageEvent::UseAlgorithmPrefix + algorithmName(algorithm), L"", NoEventValue);
    tracker.TrackEvent(category, UsageEvent::UseDestinyPrefix + destinyName(destiny), L"", NoEventValue);
}

void reportKeyFileFailure(IEventTracker& tracker, const VaultCore::Exception& failure)
{
    tracker.TrackViewEvent(UsageEvent::CannotLoadKeyFile, L"", NoEventValue);
    // Intended: a box without an owner, on the calling thread and past the first one, with the icon of a plain remark.
    Platform::platform().messageBoxes.show(std::wstring(L"Cannot load key file: ") + failure.GetText(),
                                           L"Cannot load key file", Platform::BoxOk | Platform::BoxIconInformation);
}

} // namespace JobRunner
