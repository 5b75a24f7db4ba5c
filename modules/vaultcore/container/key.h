#pragma once

#include "interfaces/vaultcore/key.h"

#include <memory>
#include <string>

namespace VaultCore
{

struct KeyMaterial;

/// A key of this engine. Its secret is kept in memory that is wiped when it ends.
class Key : public IKey
{
public:
    /// `GetKeyType` of a password key.
    static constexpr int TypePassword = 0;

    virtual ~Key() = default;
    void Release() override { delete this; }
    void notCalled1() override {}
    /// An independent copy, for options that outlive the caller's key.
    virtual std::unique_ptr<Key> clone() const = 0;
    /// What the key is made of; for the containers alone. Lives as long as the key.
    virtual const KeyMaterial& material() const = 0;
};

/// The password's UTF-8 form is the key.
std::unique_ptr<Key> createPasswordKey(const std::wstring& password);
/// Throws `VaultCore::Exception` with a message for the user when the file is missing, unreadable, a folder, empty,
/// truncated, damaged or no key file.
std::unique_ptr<Key> loadKeyFile(const std::wstring& path);

} // namespace VaultCore
