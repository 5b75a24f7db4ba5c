#pragma once

#include "systemutilities/registry/i_registry_key.h"

namespace Halden::SystemUtilities::Registry
{

/// The key through the registry of the platform.
class RegistryKey : public IRegistryKey
{
public:
    RegistryKey(Platform::RegistryHandle root, std::wstring path, bool view64);
    ~RegistryKey() override;
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    bool Exists(bool openLink) override;
    Platform::RegistryHandle Create(bool createLink) override;
    void DeleteKey() override;
    std::wstring GetString(const std::wstring& name, const std::wstring& defaultValue) override;
    std::vector<std::wstring> GetMultiString(const std::wstring& name,
                                             const std::vector<std::wstring>& defaultValue) override;
    std::uint32_t GetDword(const std::wstring& name, std::uint32_t defaultValue) override;
    std::uint64_t GetQword(const std::wstring& name, std::uint64_t defaultValue) override;
    Bytes GetBinary(const std::wstring& name) override;
    void SetString(const std::wstring& name, const std::wstring& value) override;
    void SetMultiString(const std::wstring& name, const std::vector<std::wstring>& value) override;
    void SetDword(const std::wstring& name, std::uint32_t value, bool bigEndian) override;
    void SetBinary(const std::wstring& name, const Bytes& value) override;
    void SetQword(const std::wstring& name, std::uint64_t value) override;
    void SetExpandString(const std::wstring& name, const std::wstring& value) override;
    void DeleteValue(const std::wstring& name, bool openLink) override;
    void SetLinkTarget(const std::wstring& name, const std::wstring& target) override;
    std::vector<std::pair<std::wstring, std::wstring>> GetLinks() override;
    void SetRawValue(const std::wstring& name, std::uint32_t type, const Bytes& data) override;
    bool GetRawValue(const std::wstring& name, std::uint32_t& type, Bytes& data) override;
    void CreateSubKey(const std::wstring& subKey, bool createLink) override;
    void DeleteSubKey(const std::wstring& subKey, bool isLink) override;
    std::vector<std::wstring> GetSubKeys() override;
    std::vector<RegistryValue> GetValues(bool openLink) override;
    std::wstring GetNtPath() override;

private:
    bool isOpen() const;
    void close();
    std::uint32_t viewFlag() const;
    std::uint32_t writeAccess() const;
    /// False when there is no such key.
    bool openForReading(bool openLink);
    void openForWriting(bool openLink);
    template <class Number> Number readNumber(const std::wstring& name, std::uint32_t type, Number defaultValue);

    bool writable_ = false; ///< the handle was opened or created for writing
    Platform::RegistryHandle handle_ = Platform::ClosedKey;
    std::wstring path_;
    Platform::RegistryHandle root_;
    bool view64_;
    bool openLink_ = false; ///< the handle was opened as a link
};

} // namespace Halden::SystemUtilities::Registry
