#pragma once

#include "fakes/fake_call_log.h"
#include "platform/registry_on_tree.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Fakes
{

/// A tree in memory.
class FakeRegistryStorage : public Platform::RegistryStorage
{
public:
    std::uint32_t read(const Reading& reading) override;
    std::uint32_t change(const Change& change) override;

private:
    std::mutex lock_;
    Platform::RegistryTree tree_;
};

/// A registry in memory that answers as Windows does, and in which a test can play any failure. Safe on any thread.
///
/// Logs, with PATH from "HKCU" or "HKLM" on (whatever the handle was opened through), or "closed" for what is no
/// handle, options and access in hexadecimal, other numbers in decimal:
///   "openKey PATH OPTIONS ACCESS"      "createKey PATH OPTIONS ACCESS"   "closeKey PATH"
///   "queryValue PATH NAME ROOM"        "setValue PATH NAME TYPE SIZE"    "deleteValue PATH NAME"
///   "deleteSubKey PATH"                "enumerateKey PATH INDEX CAPACITY"
///   "enumerateValue PATH INDEX CAPACITY ROOM"
///   "deleteKeyObject PATH"             "queryKey PATH CLASS ROOM"
/// ROOM is in bytes, or "null" when there is no buffer.
class FakeRegistry : public Platform::Registry
{
public:
    explicit FakeRegistry(CallLog& log) : log_(log) {}

    // What a test sets up. Paths are below the current user; nothing of it is logged.

    using Bytes = std::vector<std::uint8_t>;

    /// Makes the key, and those above it.
    void add(const std::wstring& path);
    /// Makes a link that leads to the other path.
    void addLink(const std::wstring& path, const std::wstring& target);
    /// Sets a value, in a key that is made when it is missing.
    void put(const std::wstring& path, const std::wstring& name, std::uint32_t type, const Bytes& data);
    void putDword(const std::wstring& path, const std::wstring& name, std::uint32_t value);
    /// With its terminator.
    void putText(const std::wstring& path, const std::wstring& name, const std::wstring& text);
    /// The key goes away with all that is below it, whoever has it open.
    void remove(const std::wstring& path);

    bool has(const std::wstring& path);
    struct Value
    {
        std::uint32_t type = 0;
        Bytes data{};
    };
    std::optional<Value> value(const std::wstring& path, const std::wstring& name);
    /// What `queryKey` tells of this path.
    static std::wstring fullName(const std::wstring& path);

    // Failures.

    /// The key cannot be opened, created or deleted by a path that ends in it.
    void deny(const std::wstring& path);
    /// Every call of this operation gives this instead: an error, or for the last two operations a status.
    void fail(const std::wstring& operation, std::uint32_t result);
    /// The call with this number from now on alone, 0 being the next.
    void failCall(const std::wstring& operation, int call, std::uint32_t result);
    /// Every call of an enumeration with this index.
    void failIndex(const std::wstring& operation, std::uint32_t index, std::uint32_t result);
    /// Takes all failures back.
    void succeed();

    std::size_t openHandles() const { return registry_.openHandles(); }

    std::uint32_t openKey(Platform::RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                          std::uint32_t access, Platform::RegistryHandle& opened) override;
    std::uint32_t createKey(Platform::RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                            std::uint32_t access, Platform::RegistryHandle& created) override;
    std::uint32_t closeKey(Platform::RegistryHandle key) override;
    std::uint32_t queryValue(Platform::RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                             std::uint32_t& size) override;
    std::uint32_t setValue(Platform::RegistryHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                           std::uint32_t size) override;
    std::uint32_t deleteValue(Platform::RegistryHandle key, const std::wstring& name) override;
    std::uint32_t deleteSubKey(Platform::RegistryHandle key, const std::wstring& path) override;
    std::uint32_t enumerateKey(Platform::RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                               std::wstring& name) override;
    std::uint32_t enumerateValue(Platform::RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                 std::wstring& name, std::uint32_t& type, void* data, std::uint32_t& size) override;
    std::uint32_t deleteKeyObject(void* function, Platform::RegistryHandle key) override;
    std::uint32_t queryKey(void* function, Platform::RegistryHandle key, std::uint32_t informationClass, void* buffer,
                           std::uint32_t length, std::uint32_t& needed) override;

private:
    struct Failure
    {
        std::wstring operation;
        std::optional<int> calls; ///< still to come before the one that fails
        std::optional<std::uint32_t> index;
        std::uint32_t result;
    };

    std::wstring pathOf(Platform::RegistryHandle key) const;
    std::wstring pathOf(Platform::RegistryHandle key, const std::wstring& path) const;
    std::uint32_t opened(std::uint32_t result, Platform::RegistryHandle key, const std::wstring& path);
    bool isDenied(const std::wstring& path) const;
    /// Logs the call; gives the failure that a test asked for.
    std::optional<std::uint32_t> enter(const std::wstring& operation, const std::wstring& path,
                                       const std::wstring& rest = L"", std::optional<std::uint32_t> index = {});
    Platform::RegistryHandle made(const std::wstring& path, std::uint32_t options);

    CallLog& log_;
    FakeRegistryStorage storage_;
    Platform::RegistryOnTree registry_{storage_};
    mutable std::mutex lock_;
    std::map<Platform::RegistryHandle, std::wstring> paths_;
    std::vector<std::wstring> denied_;
    std::vector<Failure> failures_;
};

} // namespace Fakes
