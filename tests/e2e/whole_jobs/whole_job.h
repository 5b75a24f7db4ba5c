#pragma once

#include "fakes/fake_message_boxes.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "interfaces/vaultcore/factory.h"
#include "platform/modules.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "scenarios/kept_comment.h"
#include "scenarios/sample_folder.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

// Whole jobs in one process: the real start, modules, engine, threads and end. Only the user is played, in views and
// message boxes in memory, and the tracker writes down what it is told.

namespace EndToEnd
{

/// Finds the modules where the shipped program has them.
class ModulesOfProgram final : public Platform::Modules
{
public:
    Platform::ModuleHandle load(const std::wstring& fullPath) override { return native_.load(fullPath); }
    void* findExport(Platform::ModuleHandle module, const char* name) override;
    void unload(Platform::ModuleHandle module) override { native_.unload(module); }
    std::wstring fileName(Platform::ModuleHandle module) override
    {
        return module ? native_.fileName(module) : programUnderTest().wstring();
    }
    std::wstring moduleFileName(const std::wstring& name) override { return native_.moduleFileName(name); }

    /// When it is set, it is given the engine's `createFactory` and gives what is found in its place.
    std::function<VaultCore::CreateFactoryFunction(VaultCore::CreateFactoryFunction)> replaceEngine;

private:
    Platform::Modules& native_ = Platform::nativeSystem().modules;
};

/// The real shell behind the command line of a test.
class ShellWithArguments final : public Platform::Shell
{
public:
    std::vector<std::wstring> arguments;
    /// When it is set, it takes the place of the shell that opens documents.
    std::function<bool(Platform::ShellExecution&)> onExecute;

    std::vector<std::wstring> commandLineArguments() override { return arguments; }
    Platform::SystemVersion version() override { return native_.version(); }
    std::wstring currentDirectory() override { return native_.currentDirectory(); }
    std::wstring combinePath(const std::wstring& folder, const std::wstring& file) override
    {
        return native_.combinePath(folder, file);
    }
    std::wstring compactPath(const std::wstring& path, std::uint32_t size) override
    {
        return native_.compactPath(path, size);
    }
    bool deleteFile(const std::wstring& path) override { return native_.deleteFile(path); }
    std::intptr_t findExecutable(const std::wstring& file, std::wstring& executable) override
    {
        return native_.findExecutable(file, executable);
    }
    bool execute(Platform::ShellExecution& execution) override
    {
        return onExecute ? onExecute(execution) : native_.execute(execution);
    }

private:
    Platform::Shell& native_ = Platform::nativeSystem().shell;
};

/// Views whose user can press Cancel as soon as the progress window is there, and does something about a file's error.
class PlayedViews final : public Fakes::FakeViewFactory
{
public:
    std::unique_ptr<JobRunner::IProgressWindowView> createProgressWindowView(int operation) override;
    std::unique_ptr<JobRunner::IFileErrorWindowView> createFileErrorWindowView() override;

    bool cancelsAtOnce = false;
    std::function<void()> onFileError;
};

class WholeJob : public testing::Test
{
protected:
    WholeJob();
    ~WholeJob() override;

    /// Runs the process on a job file; all that it tells, a line each.
    std::string run(const Path& job, int exitCode = 0);
    std::string encrypt(const std::string& fields = R"("destiny": 0)")
    {
        return run(folder.addJob("encrypt", files, fields));
    }
    std::string encryptSfx(const std::string& fields = R"("destiny": 0)")
    {
        return run(folder.addJob("encrypt-sfx", files, fields));
    }
    std::string decrypt(const std::vector<Path>& encrypted)
    {
        return run(folder.addJob("decrypt", encrypted, R"("mode": 0)"));
    }

    /// The next encryption dialog is confirmed with a password, after this was done in it.
    void typeNewPassword(const std::function<void(Fakes::EncryptionPasswordRecord&)>& before = nullptr);
    void chooseKeyFileForEncryption(const Path& key);
    /// The next decryption dialog is confirmed with the password of `typeNewPassword`, or with another.
    void typePassword(const std::wstring& password = Password);
    void chooseKeyFileForDecryption(const Path& key);

    /// Key files: a symmetric one, and the three of an RSA pair.
    Path key(const char* kind);

    /// A field of a job file that holds a number.
    static std::string field(const char* name, int value)
    {
        return std::string("\"") + name + "\": " + std::to_string(value);
    }
    static Path encrypted(Path file) { return file += ".zel"; }

    static constexpr const wchar_t* Password = L"open sesame";

    SampleFolder folder;
    /// 3 MiB and a little, and one byte.
    std::vector<Path> files = {folder.addFile("large.bin", std::string((3U << 20) + 700, 'x')),
                               folder.addFile("small.txt", "y")};
    PlayedViews views;
    Fakes::CallLog boxLog;
    Fakes::FakeMessageBoxes boxes{boxLog};
    std::shared_ptr<Fakes::RecordingTracker> tracker = std::make_shared<Fakes::RecordingTracker>();
    ModulesOfProgram modules;
    ShellWithArguments shell;

private:
    Platform::System system_;
};

} // namespace EndToEnd
