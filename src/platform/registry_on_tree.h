#pragma once

#include "platform/registry_tree.h"

#include <functional>
#include <mutex>

namespace Platform
{

/// Where a tree is kept. Any thread.
class RegistryStorage
{
public:
    using Reading = std::function<std::uint32_t(const RegistryTree&)>;
    using Change = std::function<std::uint32_t(RegistryTree&)>;

    virtual ~RegistryStorage() = default;
    /// Shows the tree as it is at one moment. Gives the result of `reading`, or why there is no tree to be read.
    virtual std::uint32_t read(const Reading& reading) = 0;
    /// Has the newest tree changed while nobody else changes it. Nothing is changed unless the result is 0.
    virtual std::uint32_t change(const Change& change) = 0;
};

/// A registry whose current user is a tree in a storage, which outlives it. The other roots hold nothing, and nothing
/// can be made in them. Both views are one. Creating and deleting below a key needs no right of its handle, as on
/// Windows; a value that is missing leaves type and size as they are.
class RegistryOnTree : public Registry
{
public:
    explicit RegistryOnTree(RegistryStorage& storage) : storage_(storage) {}

    std::size_t openHandles() const;

    std::uint32_t openKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options, std::uint32_t access,
                          RegistryHandle& opened) override;
    std::uint32_t createKey(RegistryHandle parent, const std::wstring& path, std::uint32_t options,
                            std::uint32_t access, RegistryHandle& created) override;
    std::uint32_t closeKey(RegistryHandle key) override;
    std::uint32_t queryValue(RegistryHandle key, const std::wstring& name, std::uint32_t& type, void* data,
                             std::uint32_t& size) override;
    std::uint32_t setValue(RegistryHandle key, const std::wstring& name, std::uint32_t type, const void* data,
                           std::uint32_t size) override;
    std::uint32_t deleteValue(RegistryHandle key, const std::wstring& name) override;
    std::uint32_t deleteSubKey(RegistryHandle key, const std::wstring& path) override;
    std::uint32_t enumerateKey(RegistryHandle key, std::uint32_t index, std::uint32_t capacity,
                               std::wstring& name) override;
    std::uint32_t enumerateValue(RegistryHandle key, std::uint32_t index, std::uint32_t capacity, std::wstring& name,
                                 std::uint32_t& type, void* data, std::uint32_t& size) override;
    std::uint32_t deleteKeyObject(void* function, RegistryHandle key) override;
    std::uint32_t queryKey(void* function, RegistryHandle key, std::uint32_t informationClass, void* buffer,
                           std::uint32_t length, std::uint32_t& needed) override;

private:
    /// What a handle stands for.
    struct OpenKey
    {
        RegistryKeyId id = 0;
        std::uint32_t access = 0;
    };

    std::uint32_t find(RegistryHandle handle, std::uint32_t access, std::uint32_t otherRoot, OpenKey& key) const;
    std::uint32_t findObject(RegistryHandle handle, OpenKey& key) const;
    RegistryHandle add(const OpenKey& key);

    RegistryStorage& storage_;
    mutable std::mutex lock_;
    std::map<RegistryHandle, OpenKey> keys_;
    RegistryHandle last_ = 0;
};

} // namespace Platform
