#pragma once

#include "platform/posix/descriptor.h"
#include "platform/posix/handle_table.h"

#include <cstdint>
#include <memory>

namespace Platform
{

/// A process that was opened; signalled once it has ended.
class ProcessObject : public SystemObject
{
public:
    /// Null when there is no such process, or when it has ended.
    static std::shared_ptr<ProcessObject> open(std::uint32_t id);
    /// A child of this process that nobody else waits for. It may have ended already; nobody has seen that yet.
    static std::shared_ptr<ProcessObject> ofChild(std::uint32_t id);

    int descriptor() const override { return descriptor_.get(); }
    void onSignalled() override;

private:
    ProcessObject(std::uint32_t id, Descriptor descriptor) : id_(id), descriptor_(std::move(descriptor)) {}

    const std::uint32_t id_;
    const Descriptor descriptor_;
};

/// Takes notice of the end of a child of this process, if it has ended, so that it leaves the system's table.
void takeNoticeOfEnd(std::uint32_t process);

} // namespace Platform
