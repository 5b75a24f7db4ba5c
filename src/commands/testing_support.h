#pragma once

#include "bridges/module_factories.h"
#include "commands/encrypt_command.h"
#include "commands/encrypt_sfx_command.h"
#include "fakes/fake_documents.h"
#include "fakes/fake_engine.h"
#include "fakes/fake_gui_events.h"
#include "fakes/fake_platform.h"
#include "fakes/fake_views.h"
#include "fakes/recording_tracker.h"
#include "telemetry/usage_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace JobRunner
{

using Calls = std::vector<std::wstring>;

// What the tests of the commands share.

/// A job over engine, documents, views and system in memory. All of them write into the log of the system.
class JobFixture : public testing::Test
{
protected:
    JobFixture()
    {
        setVaultCoreFactory(&Fakes::FakeEngine::createFactory);
        setZelPlatformFactory(&Fakes::FakeZelPlatform::createFactory);
        engine.keyFiles[KeyFile] = {};
    }
    ~JobFixture() override
    {
        setVaultCoreFactory(nullptr);
        setZelPlatformFactory(nullptr);
    }

    ReleasePtr<ZelPlatform::IJobRunnerDocument> document()
    {
        return ReleasePtr<ZelPlatform::IJobRunnerDocument>(new Fakes::FakeDocument(log, answers));
    }

    /// Made and run as the process does it; the log then holds the run alone.
    template <class CommandOfKind> void runCommand()
    {
        CommandOfKind command(document(), &gui, tracker);
        log.clear();
        command.Run();
        calls = log.calls();
    }

    /// The calls of the last run behind this one.
    Calls behind(const std::wstring& call) const
    {
        const auto found = std::find(calls.begin(), calls.end(), call);
        return found == calls.end() ? Calls{L"never called: " + call} : Calls(found + 1, calls.end());
    }

    /// The last calls of the log, or all when there are not so many.
    Calls lastCalls(std::size_t count) const { return lastOf(log.calls(), count); }
    Calls lastTracked(std::size_t count) const { return lastOf(tracker->calls(), count); }

    /// Told how far the first half of a file of 1000 bytes takes the job.
    static void reportHalfAFile(const Fakes::EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        callbacks.fileList->OnFileListBuilt(0, 1000);
        callbacks.progress->OnFileProgress(500, 1000);
        callbacks.overall->OnOperationFinished();
    }

    /// A file of 2 MiB ends, and the user cancels during the next one.
    void cancelInTheSecondFile(const Fakes::EngineCallbacks& callbacks)
    {
        callbacks.overall->OnOperationStarted();
        callbacks.progress->OnFileProgress(2U << 20, 2U << 20);
        callbacks.overall->OnFileFinished(nullptr, nullptr, 0);
        views.factory.lastProgressView->onCancel();
        EXPECT_EQ(callbacks.progress->OnFileProgress(1, 4U << 20), 0);
        callbacks.overall->OnOperationFinished();
    }

    static constexpr const wchar_t* KeyFile = L"C:\\k.zelkey";

    Fakes::FakePlatform platform;
    Fakes::FakeViews views;
    Fakes::CallLog& log = platform.log;
    Fakes::FakeGuiEvents gui{log};
    Fakes::FakeEngine engine{log};
    Fakes::FakeZelPlatform documents{log};
    std::shared_ptr<Fakes::RecordingTracker> tracker = std::make_shared<Fakes::RecordingTracker>(log);
    Fakes::JobAnswers answers;
    Calls calls; ///< of the last run

private:
    static Calls lastOf(const Calls& all, std::size_t count)
    {
        return Calls(all.end() - static_cast<std::ptrdiff_t>(std::min(count, all.size())), all.end());
    }
};

class AnEncryption : public JobFixture
{
protected:
    AnEncryption()
    {
        answers.encryption = true;
        answers.algorithm = 14;
        answers.destiny = 0;
    }

    static std::wstring usage(const std::wstring& rest)
    {
        return L"TrackEvent(winzel encryption usage statistics, " + rest + L")";
    }

    void run() { runCommand<EncryptCommand>(); }

    /// The same with a user who confirms this.
    void run(const Fakes::EncryptionAnswer& answer)
    {
        gui.encryptionAnswers = {answer};
        run();
    }

    /// The events of the parameters, which stand between the one view and the three results.
    Calls parameterEvents() const
    {
        const Calls tracked = tracker->calls();
        return tracked.size() < 4 ? Calls{} : Calls(tracked.begin() + 1, tracked.end() - 3);
    }

    static constexpr const wchar_t* View = L"TrackView(jobrunner/encryption, Encryption Thread (JobRunner))";
};

class ASelfExtractingEncryption : public JobFixture
{
protected:
    ASelfExtractingEncryption()
    {
        answers.sfxEncryption = true;
        answers.sfxComment = std::wstring(L"Made with the suite. ") + Halden::ZEL::Telemetry::MakerDomain;
    }

    /// Under the category of the plain encryption, which the events of the key have.
    static std::wstring plainUsage(const std::wstring& rest)
    {
        return L"TrackEvent(winzel encryption usage statistics, " + rest + L")";
    }

    static std::wstring usage(const std::wstring& rest)
    {
        return L"TrackEvent(winzel encryption sfx usage statistics, " + rest + L")";
    }

    static std::wstring viewEvent(const std::wstring& action) { return L"TrackViewEvent(" + action + L", , none)"; }

    /// The next password window is used like this; its end shows in the log.
    void use(const Fakes::EncryptionPasswordUser& user)
    {
        const std::shared_ptr<Fakes::CallLog> end(&log, [](Fakes::CallLog* ended) { ended->add(WindowDestroyed); });
        views.factory.encryptionUsers.push_back([user, end](Fakes::FakeEncryptionPasswordView& view)
                                                { return user(view); });
    }

    static bool typeSecret(Fakes::FakeEncryptionPasswordView& view)
    {
        view.type(L"secret", L"secret");
        return view.proceed();
    }

    void run() { runCommand<EncryptSfxCommand>(); }

    /// The same with a user who confirms a password, and before that does this.
    void runWithPassword(const std::function<void(Fakes::EncryptionPasswordRecord&)>& before = nullptr)
    {
        use(
            [&](Fakes::FakeEncryptionPasswordView& view)
            {
                if (before)
                    before(view.fields());
                return typeSecret(view);
            });
        run();
    }

    void runWithKeyFile(const std::wstring& path)
    {
        use(
            [&](Fakes::FakeEncryptionPasswordView& view)
            {
                view.chooseKeyFile(path);
                return view.proceed();
            });
        run();
    }

    const Fakes::EncryptionPasswordRecord& shownWindow() { return *views.factory.encryptionPasswords.back(); }

    static constexpr const wchar_t* View = L"TrackView(jobrunner/encryption_sfx, Encryption SFX Thread (JobRunner))";
    static constexpr const wchar_t* WindowDestroyed = L"window destroyed";
};

} // namespace JobRunner
