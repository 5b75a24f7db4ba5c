#pragma once

#include "fakes/fake_views.h"
#include "schedules/staged_view.h"

namespace Schedules
{

/// Makes staged progress windows, and the other views as the fakes do.
class StagedViews final : public Fakes::FakeViewFactory
{
public:
    StagedViews(bool paced, Desk& desk, Record& record) : paced_(paced), desk_(desk), record_(record) {}

    std::unique_ptr<JobRunner::IProgressWindowView> createProgressWindowView(int operation) override
    {
        return std::make_unique<StagedView>(operation, paced_, desk_, record_);
    }

private:
    const bool paced_;
    Desk& desk_;
    Record& record_;
};

} // namespace Schedules
