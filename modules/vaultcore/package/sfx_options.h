#pragma once

#include "vaultcore/encryptor.h"
#include "vaultcore/package/sfx_job.h"

namespace VaultCore
{

class SfxOptions final : public ISfxOptions
{
public:
    void Release() override { delete this; }
    void SetAlgorithm(std::uint32_t algorithm) override { options_.SetAlgorithm(algorithm); }
    /// As `EncryptionOptions`.
    void SetKey(IKey* key) override { options_.SetKey(key); }
    void SetRiddle(const wchar_t* riddle) override { options_.SetRiddle(riddle); }
    void notCalled1() override {}
    void notCalled2() override {}
    /// A package has no extra text.
    void SetExtraText(const wchar_t*) override {}
    void SetDestiny(std::uint32_t destiny) override { options_.SetDestiny(destiny); }
    void SetSfxComment(const wchar_t* comment) override;
    /// With the program of this engine.
    SfxOrder order() const;

private:
    EncryptionOptions options_;
    std::string comment_;
};

} // namespace VaultCore
