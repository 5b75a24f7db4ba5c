#pragma once

#include "fakes/fake_call_log.h"
#include "fakes/fake_handles.h"
#include "platform/paths.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Fakes
{

struct FakePath
{
    std::uint32_t attributes = Platform::AttributeNormal;
    /// The other name of it; empty for none.
    std::wstring shortPath;
};

/// Files and drives as Windows names them. Each failed call sets the last error. Logs
/// "longPathName PATH SIZE", "shortPathName PATH SIZE", "queryDosDevice NAME SIZE", "attributes PATH" and
/// "setAttributes PATH BITS" with bits as a number. One thread at a time.
class FakePaths : public Platform::Paths
{
public:
    FakePaths(CallLog& log, FakeHandles& handles) : log_(log), handles_(handles) {}

    std::wstring program = L"C:\\Suite\\bin\\JobRunner.exe";
    std::wstring windows = L"C:\\Windows";
    /// By their long paths.
    std::map<std::wstring, FakePath> files;
    /// What a name was mapped to, the newest first.
    std::map<std::wstring, std::vector<std::wstring>> devices{{L"C:", {L"\\Device\\HarddiskVolume1"}}};
    /// Calls that fail, by their words in the log, with the error; a word without arguments means all such calls.
    std::map<std::wstring, std::uint32_t> failures;
    /// Called by each call that is logged, with its words, before it looks.
    std::function<void(const std::wstring&)> onCall;

    std::wstring programFileName(std::uint32_t size) override;
    std::wstring windowsDirectory(std::uint32_t size) override;
    bool canonicalize(const std::wstring& path, std::wstring& canonical) override;
    std::uint32_t longPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) override;
    std::uint32_t shortPathName(const std::wstring& path, wchar_t* buffer, std::uint32_t size) override;
    std::uint32_t queryDosDevice(const std::wstring& name, wchar_t* buffer, std::uint32_t size) override;
    std::uint32_t attributes(const std::wstring& path) override;
    bool setAttributes(const std::wstring& path, std::uint32_t attributes) override;

private:
    /// Whether the call is to go on.
    bool begin(const std::wstring& call, const std::wstring& arguments);
    std::uint32_t fail(std::uint32_t error);
    /// By either name.
    std::map<std::wstring, FakePath>::iterator find(const std::wstring& path);
    std::uint32_t give(const std::wstring& text, wchar_t* buffer, std::uint32_t size);

    CallLog& log_;
    FakeHandles& handles_;
};

} // namespace Fakes
