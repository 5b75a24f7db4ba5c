#pragma once

#include "commands/dc_decrypt_sub_command.h"
#include "commands/dc_delete_sub_command.h"
#include "commands/dc_encrypt_sub_command.h"
#include "fakes/fake_gui_events.h"
#include "jobprocess/platform_session.h"
#include "whole_jobs/whole_job.h"

namespace EndToEnd
{

/// A step of a double click on `locked`, with the real engine on real files.
class AStepOfADoubleClick : public WholeJob
{
protected:
    AStepOfADoubleClick()
    {
        // The step works on one file.
        files.resize(1);
        document = files[0];
        locked = encrypted(document);
    }

    /// Encrypts the document with what the next encryption dialog is given; it goes.
    void lock() { encrypt("\"destiny\": 1"); }

    void startEngine() { ASSERT_TRUE(session.start()); }

    JobRunner::DcDecryptSubCommand& decryptStep()
    {
        decryption = std::make_unique<JobRunner::DcDecryptSubCommand>(locked.wstring(), &gui, tracker);
        decryption->Run();
        return *decryption;
    }

    /// With what the decrypt step was given.
    bool encryptStep()
    {
        JobRunner::DcEncryptSubCommand step(decryption->lastFileText(), locked.wstring(), decryption->password(),
                                            decryption->keyFile(), &gui, tracker);
        step.Run();
        return step.succeeded();
    }

    /// The number of the algorithm in the head of an encrypted file.
    static int algorithmOf(const Path& file) { return contentOf(file).at(10); }

    Path document;
    Path locked;
    const std::string content = contentOf(files[0]);
    const std::string changed = content + " and what the user has added";
    Fakes::FakeGuiEvents gui;
    JobRunner::PlatformSession session;
    std::unique_ptr<JobRunner::DcDecryptSubCommand> decryption; ///< ends before the engine does
};

} // namespace EndToEnd
