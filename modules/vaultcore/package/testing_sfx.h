#pragma once

#include "interfaces/vaultcore/encryptor.h"
#include "vaultcore/container/testing_rsa.h"
#include "vaultcore/job_testing.h"
#include "vaultcore/package/sfx_job.h"

// What the tests of the package's job share.

namespace VaultCore
{

class SfxTest : public ContentJobTest
{
protected:
    SfxTest() { put(program, "MZ the program"); }

    void pack(const std::vector<fs::path>& entries, std::uint32_t destiny = DestinyKeep)
    {
        order.destiny = destiny;
        const SfxOrder wanted{order, "About \xc3\xa4", wide(program)};
        SfxJob(files, recorder.receivers(), wanted).run(texts(entries));
    }

    /// The decryption job on a package, into the folder `into`.
    void unpack(const fs::path& package, const std::string& letters = "k")
    {
        fs::create_directory(into);
        provider.give(letters);
        decrypt({package}, false, into);
    }

    const fs::path program = base / "package.stub";
    const fs::path into = base / "into";
};

} // namespace VaultCore
