#pragma once

#include "fakes/fake_platform.h"
#include "platform/registry.h"
#include "platform/system_with.h"
#include "systemutilities/registry/i_registry_key.h"
#include "systemutilities/registry/testing_failure.h"

#include <gtest/gtest.h>

#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace Halden::SystemUtilities::Registry
{

/// A registry that holds nothing: each call gives what the test has told for it, so any result can come from any call
/// at any time. What is not told succeeds, and an enumeration ends. Opened keys are 101, 102 and so on. Logs each call
/// with its arguments; options and access are hexadecimal.
class ScriptedRegistry : public Platform::Registry
{
public:
    struct Answer
    {
        std::uint32_t result = Platform::ErrorSuccess;
        std::uint32_t type = 0;
        Bytes data{}; ///< as much of it as there is room for; its size is told when nothing else is
        std::wstring name{};
        std::uint32_t size = 0; ///< told instead of the size of the data
    };

    explicit ScriptedRegistry(Fakes::CallLog& log) : log_(log) {}

    /// The next answer to this operation, named as in the log.
    void tell(const std::wstring& operation, Answer answer) { answers_[operation].push_back(std::move(answer)); }
    void tell(const std::wstring& operation, std::uint32_t result) { tell(operation, Answer{result}); }

    /// What was last written.
    Bytes written;
    /// The next key that is opened.
    Platform::RegistryHandle next = 101;

    std::uint32_t openKey(Platform::RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                          std::uint32_t access, Platform::RegistryHandle& opened) override
    {
        return give(L"open", parent, path, options, access, opened);
    }
    std::uint32_t createKey(Platform::RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                            std::uint32_t access, Platform::RegistryHandle& created) override
    {
        return give(L"create", parent, path, options, access, created);
    }
    std::uint32_t closeKey(Platform::RegistryHandle key) override { return call(L"close", key).result; }

    std::uint32_t queryValue(Platform::RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                             std::uint32_t& size) override
    {
        return fill(call(L"query", key, name, type, data ? L"into" : L"size", size), type, data, size);
    }
    std::uint32_t setValue(Platform::RegistryHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                           std::uint32_t size) override
    {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        written.assign(bytes, bytes + size);
        return call(L"set", key, name, type, size).result;
    }
    std::uint32_t deleteValue(Platform::RegistryHandle key, const std::wstring& name) override
    {
        return call(L"deleteValue", key, name).result;
    }
    std::uint32_t deleteSubKey(Platform::RegistryHandle key, const std::wstring& path) override
    {
        return call(L"deleteSubKey", key, path).result;
    }
    std::uint32_t enumerateKey(Platform::RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                               std::wstring& name) override
    {
        const Answer answer = call(L"enumerateKey", key, index, capacity);
        name = answer.name;
        return answer.result;
    }
    std::uint32_t enumerateValue(Platform::RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                                 std::wstring& name, std::uint32_t& type, void* data, std::uint32_t& size) override
    {
        const Answer answer = call(L"enumerateValue", key, index, capacity, data ? L"into" : L"size", size);
        name = answer.name;
        return fill(answer, type, data, size);
    }
    std::uint32_t deleteKeyObject(void* function, Platform::RegistryHandle key) override
    {
        return call(static_cast<const wchar_t*>(function), key).result;
    }
    std::uint32_t queryKey(void* function, Platform::RegistryHandle key, std::uint32_t informationClass, void* buffer,
                           std::uint32_t length, std::uint32_t& needed) override
    {
        const Answer answer =
            call(static_cast<const wchar_t*>(function), key, informationClass, buffer ? L"into" : L"size", length);
        if (buffer)
            std::memcpy(buffer, answer.data.data(), std::min<std::size_t>(length, answer.data.size()));
        needed = answer.size ? answer.size : static_cast<std::uint32_t>(answer.data.size());
        return answer.result;
    }

private:
    template <class... Arguments> Answer call(const std::wstring& operation, const Arguments&... arguments)
    {
        std::wostringstream text;
        text << operation;
        ((text << L' ' << arguments), ...);
        log_.add(text.str());
        std::deque<Answer>& told = answers_[operation];
        if (told.empty())
            return Answer{operation.starts_with(L"enumerate") ? Platform::ErrorNoMoreItems : Platform::ErrorSuccess};
        const Answer answer = told.front();
        told.pop_front();
        return answer;
    }

    std::uint32_t give(const std::wstring& operation, Platform::RegistryHandle parent, const std::wstring& path,
                       std::uint32_t options, std::uint32_t access, Platform::RegistryHandle& handle)
    {
        std::wostringstream text;
        text << std::hex << options << L' ' << access;
        const std::uint32_t result = call(operation, parent, path, text.str()).result;
        if (result == Platform::ErrorSuccess)
            handle = next++;
        return result;
    }

    static std::uint32_t fill(const Answer& answer, std::uint32_t& type, void* data, std::uint32_t& size)
    {
        if (answer.result != Platform::ErrorSuccess)
            return answer.result;
        type = answer.type;
        if (data && !answer.data.empty())
            std::memcpy(data, answer.data.data(), std::min<std::size_t>(size, answer.data.size()));
        size = answer.size ? answer.size : static_cast<std::uint32_t>(answer.data.size());
        return answer.result;
    }

    Fakes::CallLog& log_;
    std::map<std::wstring, std::deque<Answer>> answers_;
};

/// A system that has ntdll.dll or not. A function is the text of its name. To unload sets the last error.
class ScriptedNtdll : public Fakes::FakeProcesses
{
public:
    ScriptedNtdll(Fakes::CallLog& log, Fakes::FakeThreads& threads, Fakes::FakeHandles& handles)
        : FakeProcesses(log, threads, handles), log_(log), handles_(handles)
    {
    }

    bool loads = true;
    bool finds = true;

    Platform::ModuleHandle loadModule(const std::wstring& name) override
    {
        log_.add(L"load " + name);
        handles_.setLastError(126);
        return loads ? this : nullptr;
    }
    void unloadModule(Platform::ModuleHandle module) override
    {
        log_.add(module == this ? L"unload" : L"unload something else");
        handles_.setLastError(1);
    }
    void* findFunction(Platform::ModuleHandle module, const char* name) override
    {
        name_.assign(name, name + std::strlen(name));
        log_.add(L"find " + name_);
        handles_.setLastError(127);
        return finds && module == this ? name_.data() : nullptr;
    }

private:
    Fakes::CallLog& log_;
    Fakes::FakeHandles& handles_;
    std::wstring name_;
};

/// One key, "Key" below the handle 7, over the two of them.
class ScriptedKey : public testing::Test
{
protected:
    ScriptedKey() { Platform::setPlatform(&system_); }

    std::unique_ptr<IRegistryKey> makeKey(bool view64 = true) { return CreateRegistryKey(7, L"Key", view64); }
    std::vector<std::wstring> calls() const { return fake_.log.calls(); }

    Fakes::FakePlatform fake_;
    ScriptedRegistry registry_{fake_.log};
    ScriptedNtdll ntdll_{fake_.log, fake_.threads, fake_.handles};
    Platform::System system_ = Platform::systemWith(fake_.system(), registry_, ntdll_);
    std::unique_ptr<IRegistryKey> key_ = makeKey();
};

} // namespace Halden::SystemUtilities::Registry
