#pragma once

#include <cstdint>
#include <string>

namespace JobRunner
{

/// Last-write time of a file in whole seconds; 0 for one that cannot be asked for it. Any thread.
std::int64_t GetModificationTime(const std::wstring& path);

/// The middle step of the double-click job: opens the decrypted document in its application, waits until the user has
/// finished with it, and tells whether it changed. Job thread.
class DcOpenSubCommand
{
public:
    explicit DcOpenSubCommand(std::wstring path);
    DcOpenSubCommand(const DcOpenSubCommand&) = delete;
    DcOpenSubCommand& operator=(const DcOpenSubCommand&) = delete;
    virtual ~DcOpenSubCommand();

    /// Without a time limit. Tells the user when no application can be started.
    void Execute();

    bool WasOpened() const { return opened_; }
    /// By the last-write time alone; a document that is gone counts as modified.
    bool WasModified() const { return modified_; }

private:
    std::wstring path_;
    bool opened_ = false;
    bool modified_ = false;
};

} // namespace JobRunner
