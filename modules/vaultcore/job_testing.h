#pragma once

#include "vaultcore/container/key_material.h"
#include "vaultcore/decryption_job.h"
#include "vaultcore/encryption_job.h"
#include "vaultcore/result_names.h"
#include "vaultcore/testing_support.h"

// What the tests of the encryption and decryption jobs share.

namespace VaultCore
{

/// A key without a derivation; each letter gives another one.
inline std::unique_ptr<Key> testKey(char letter)
{
    KeyMaterial material;
    material.type = KeyTypeSymmetric;
    material.secret = SecureBytes(32);
    for (std::uint8_t& byte : material.secret.bytes())
        byte = static_cast<std::uint8_t>(letter);
    return createKey(std::move(material));
}

/// Answers by script, and keeps what the engine hands in.
class TestProvider final : public IPasswordProvider
{
public:
    int ProvideKey(const wchar_t* file, IKey** key) override
    {
        asked.push_back(file);
        return answer(key);
    }
    IKey* GetStoredKey(int index) override { return stored.at(static_cast<std::size_t>(index)).get(); }
    int GetStoredKeyCount() override { return static_cast<int>(stored.size()); }
    bool AddStoredKey(IKey* key) override
    {
        auto* own = dynamic_cast<Key*>(key);
        EXPECT_NE(own, nullptr);
        stored.emplace_back(own);
        return true;
    }

    /// Gives these keys one after the other.
    void give(const std::string& letters)
    {
        answer = [this, letters, next = std::size_t{0}](IKey** key) mutable
        {
            *key = testKey(letters.at(next++)).release();
            return KeyProvided;
        };
    }

    std::vector<std::wstring> asked;
    std::vector<std::unique_ptr<Key>> stored;
    std::function<int(IKey**)> answer = [](IKey**) { return KeyCancelJob; };
};

class ContentJobTest : public JobTest
{
protected:
    ContentJobTest()
    {
        order.key = testKey('k');
        order.algorithm = 3;
    }

    static std::vector<std::wstring> texts(const std::vector<fs::path>& entries)
    {
        std::vector<std::wstring> found;
        for (const fs::path& entry : entries)
            found.push_back(wide(entry));
        return found;
    }

    void encrypt(const std::vector<fs::path>& entries)
    {
        EncryptionJob(files, recorder.receivers(), order).run(texts(entries));
    }

    void decrypt(const std::vector<fs::path>& entries, bool deletesEncrypted = false, const fs::path& path = {})
    {
        const DecryptionOrder wanted{path.empty() ? L"" : wide(path), deletesEncrypted, &provider};
        DecryptionJob(files, recorder.receivers(), wanted).run(texts(entries));
    }

    /// Encrypts without a trace in the recorder; the source goes.
    fs::path made(const fs::path& source)
    {
        EncryptionOrder silent = order;
        silent.destiny = 1;
        EncryptionJob(files, {}, silent).run(texts({source}));
        EXPECT_FALSE(fs::exists(source));
        return withEnding(source);
    }

    static fs::path withEnding(const fs::path& path) { return fs::path(path) += ".zel"; }

    static std::size_t temporariesIn(const fs::path& folder)
    {
        std::size_t count = 0;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
            count += isTemporaryName(entry.path().filename().native()) ? 1U : 0U;
        return count;
    }

    /// A report as the recorder writes it down.
    static std::wstring report(const wchar_t* receiver, std::uint64_t done, std::uint64_t total)
    {
        std::wstring text = receiver;
        text += L' ';
        text += std::to_wstring(done);
        text += L'/';
        return text += std::to_wstring(total);
    }

    std::size_t countOf(const std::wstring& line) const
    {
        return static_cast<std::size_t>(std::count(recorder.log.begin(), recorder.log.end(), line));
    }

    WatchedFileSystem files;
    Recorder recorder;
    TestProvider provider;
    EncryptionOrder order;
};

using Log = std::vector<std::wstring>;

inline constexpr std::uint64_t ContentChunkForTests = std::uint64_t{1} << 20;

} // namespace VaultCore
