#pragma once

#include "platform/each_system.h"
#include "platform/registry.h"
#include "platform/utf16.h"

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// While it is there, the native registry is one of the test's own where the system allows that.
std::shared_ptr<void> ownNativeRegistry();

/// A key of the test's own in the registry of each system, which goes away with all that is below it.
class EachRegistry : public EachSystem
{
protected:
    using Bytes = std::vector<std::uint8_t>;
    using Handle = Platform::RegistryHandle;

    static constexpr std::uint32_t AllAccess = Platform::KeyAllAccess | Platform::KeyView32;
    static constexpr std::uint32_t Read = Platform::KeyRead | Platform::KeyView32;

    void SetUp() override
    {
        if (GetParam() == Kind::Native)
            place_ = ownNativeRegistry();
        path_ = L"Software\\JobRunner test " + std::to_wstring(system().processes.currentId());
        ntdll_ = system().processes.loadModule(L"ntdll.dll");
        removeAll(path_);
        base_ = create(Platform::CurrentUser, path_);
    }

    void TearDown() override
    {
        removeAll(path_);
        for (const Handle key : open_)
            if (key != Platform::ClosedKey)
                registry().closeKey(key);
        system().processes.unloadModule(ntdll_);
    }

    Platform::Registry& registry() { return system().registry; }
    bool isWindows() { return GetParam() == Kind::Native && looksLikeWindows(); }

    /// Closed at the end of the test.
    Handle keep(Handle key)
    {
        open_.push_back(key);
        return key;
    }

    /// Before the end of the test. To close it twice would close what the system has opened under that number since.
    std::uint32_t close(Handle key)
    {
        std::erase(open_, key);
        return registry().closeKey(key);
    }

    Handle create(Handle parent, const std::wstring& path, std::uint32_t options = 0)
    {
        Handle key = Platform::ClosedKey;
        EXPECT_EQ(registry().createKey(parent, path, options, AllAccess, key), 0u);
        return keep(key);
    }
    std::uint32_t errorOfCreating(Handle parent, const std::wstring& path, std::uint32_t options = 0)
    {
        Handle key = Platform::ClosedKey;
        const std::uint32_t error = registry().createKey(parent, path, options, AllAccess, key);
        EXPECT_EQ(error == 0, key != Platform::ClosedKey);
        keep(key);
        return error;
    }

    Handle open(Handle parent, const std::wstring& path, std::uint32_t options = 0, std::uint32_t access = Read)
    {
        Handle key = Platform::ClosedKey;
        EXPECT_EQ(registry().openKey(parent, path, options, access, key), 0u);
        return keep(key);
    }
    std::uint32_t errorOfOpening(Handle parent, const std::wstring& path, std::uint32_t options = 0)
    {
        Handle key = Platform::ClosedKey;
        const std::uint32_t error = registry().openKey(parent, path, options, Read, key);
        EXPECT_EQ(error == 0, key != Platform::ClosedKey);
        keep(key);
        return error;
    }

    std::uint32_t set(Handle key, const std::wstring& name, std::uint32_t type, const Bytes& data)
    {
        return registry().setValue(key, name, type, data.data(), static_cast<std::uint32_t>(data.size()));
    }

    struct Value
    {
        std::uint32_t error = 0;
        std::uint32_t type = 0;
        Bytes data{};
        bool operator==(const Value&) const = default;
    };
    Value get(Handle key, const std::wstring& name)
    {
        Value value;
        std::uint32_t size = 0;
        value.error = registry().queryValue(key, name, value.type, nullptr, size);
        if (value.error != 0)
            return value;
        value.data.resize(size + 1); // no data at all would be a null address
        value.error = registry().queryValue(key, name, value.type, value.data.data(), size);
        value.data.resize(size);
        return value;
    }

    std::vector<std::wstring> keysOf(Handle key)
    {
        std::vector<std::wstring> names;
        std::wstring name;
        std::uint32_t error = 0;
        while ((error = registry().enumerateKey(key, static_cast<std::uint32_t>(names.size()), 260, name)) == 0)
            names.push_back(name);
        EXPECT_EQ(error, Platform::ErrorNoMoreItems);
        return names;
    }
    std::vector<std::wstring> valuesOf(Handle key)
    {
        std::vector<std::wstring> names;
        std::wstring name;
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        std::uint32_t error = 0;
        while ((error = registry().enumerateValue(key, static_cast<std::uint32_t>(names.size()), 16384, name, type,
                                                  nullptr, size)) == 0)
            names.push_back(name);
        EXPECT_EQ(error, Platform::ErrorNoMoreItems);
        return names;
    }

    void* function(const char* name)
    {
        void* const found = system().processes.findFunction(ntdll_, name);
        EXPECT_NE(found, nullptr);
        return found;
    }
    std::uint32_t deleteObject(Handle key) { return registry().deleteKeyObject(function("ZwDeleteKey"), key); }

    /// As the system tells it.
    std::wstring fullName(Handle key)
    {
        void* const query = function("NtQueryKey");
        Bytes buffer(2048);
        std::uint32_t needed = 0;
        EXPECT_EQ(registry().queryKey(query, key, 3, buffer.data(), static_cast<std::uint32_t>(buffer.size()), needed),
                  0u);
        return Platform::fromUtf16(std::span(buffer).subspan(4, needed - 4));
    }

    std::uint32_t setLink(Handle link, const std::wstring& target)
    {
        return set(link, L"SymbolicLinkValue", Platform::ValueLink, Platform::toUtf16(target));
    }
    /// A link below the key of the test to another one below it.
    Handle makeLink(const std::wstring& name, const std::wstring& target)
    {
        const Handle link = create(base_, name, Platform::OptionCreateLink);
        EXPECT_EQ(setLink(link, fullName(base_) + L'\\' + target), 0u);
        return link;
    }

    Handle base_ = Platform::ClosedKey;
    std::wstring path_;

private:
    /// Links are removed, not followed.
    void removeAll(const std::wstring& path)
    {
        Handle key = Platform::ClosedKey;
        if (registry().openKey(Platform::CurrentUser, path, Platform::OptionOpenLink, AllAccess, key) != 0)
            return;
        for (const std::wstring& name : keysOf(key))
            removeAll(path + L'\\' + name);
        deleteObject(key);
        registry().closeKey(key);
    }

    std::shared_ptr<void> place_;
    Platform::ModuleHandle ntdll_ = nullptr;
    std::vector<Handle> open_;
};
