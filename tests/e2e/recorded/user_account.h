#pragma once

#include "scenarios/sample_folder.h"
#include "statistics_testing/installed_component.h"
#include "statistics_testing/recorded_statistics.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace EndToEnd
{

using StatisticsTesting::Component;

/// A user whose settings and records are empty, for the programs that a test starts; what was there before comes back
/// at the end. The statistics component is the given one, or there is none. One at a time; before other threads run.
class UserAccount
{
public:
    explicit UserAccount(std::optional<Component> component = Component::Shipped);
    ~UserAccount();
    UserAccount(const UserAccount&) = delete;
    UserAccount& operator=(const UserAccount&) = delete;

    // Values of the suite's own key.
    void storeNumber(const std::wstring& name, std::uint32_t value) const;
    void storeText(const std::wstring& name, const std::wstring& text) const;

    /// What the component was told since the last call.
    std::vector<std::string> told() const;

private:
    class Place;

    StatisticsTesting::RecordedStatistics records_;
    std::unique_ptr<Place> place_;
};

} // namespace EndToEnd
