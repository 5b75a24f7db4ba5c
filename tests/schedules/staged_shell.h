#pragma once

#include "fakes/fake_shell.h"

namespace Schedules
{

/// Takes no lock where a display's thread comes by, so that there are fewer schedules that make no difference.
class StagedShell final : public Fakes::FakeShell
{
public:
    explicit StagedShell(Fakes::CallLog& log) : FakeShell(log, L'/') {}
    std::wstring compactPath(const std::wstring& path, std::uint32_t) override { return path; }
};

} // namespace Schedules
