#pragma once

#include "fakes/fake_password_views.h"
#include "windows/file_error/i_file_error_window_view.h"
#include "windows/framework/view_factory.h"
#include "windows/progress/i_progress_window_view.h"

#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Fakes
{

/// What a progress view was told; it outlives the view. Safe on any thread.
class ProgressViewLog
{
public:
    explicit ProgressViewLog(int operation) : operation_(operation) {}

    int operation() const { return operation_; }
    /// Every call in order, as "setFileProgress a.txt 50 wiping" or "close". Calls of `isHidden` are left out.
    std::vector<std::wstring> calls() const;
    /// Forgets the calls so far.
    void clear();
    /// Arguments of the last call of that name, as one text; empty when there was none.
    std::wstring last(const std::wstring& name) const;
    std::size_t count(const std::wstring& name) const;
    bool hidden() const;
    bool open() const;

    void add(std::wstring call);
    void setHidden(bool hidden);
    void setOpen(bool open);

private:
    const int operation_;
    mutable std::mutex lock_;
    std::vector<std::wstring> calls_;
    bool hidden_ = true;
    bool open_ = false;
};

/// Records what it is told. A test clicks by calling the callbacks.
class FakeProgressWindowView : public JobRunner::IProgressWindowView
{
public:
    explicit FakeProgressWindowView(std::shared_ptr<ProgressViewLog> log) : log_(std::move(log)) {}

    void create() override;
    void waitUntilCreated() override;
    void close() override;
    bool isHidden() override;
    void hide() override;
    void show() override;
    void setFileProgress(const wchar_t* fileName, double percent, bool wiping) override;
    void setTotalProgress(double percent, bool force) override;
    void setElapsedTime(int seconds) override;
    void setTimeLeft(int seconds) override;
    void setSpeed(std::uint64_t bytesPerSecond) override;
    void setElapsedBytes(std::uint64_t bytes) override;
    void setBytesLeft(std::uint64_t bytes) override;
    void setTotalBytes(std::uint64_t bytes) override;
    void onPaused() override;
    void onResumed() override;

private:
    std::shared_ptr<ProgressViewLog> log_;
};

/// What one file error window was told and what it answered.
struct FileErrorRecord
{
    std::vector<std::wstring> calls; ///< as "setTitle text", in order, ending in "doModal"
    int answer = JobRunner::FileErrorAbortJob;
};

class FakeFileErrorWindowView : public JobRunner::IFileErrorWindowView
{
public:
    explicit FakeFileErrorWindowView(std::shared_ptr<FileErrorRecord> record) : record_(std::move(record)) {}

    void setTitle(const wchar_t* text) override;
    void setHeader(const wchar_t* text) override;
    void setSource(const wchar_t* path) override;
    void setTarget(const wchar_t* path) override;
    void setMessage(const wchar_t* text) override;
    int doModal() override;

private:
    std::shared_ptr<FileErrorRecord> record_;
};

/// One use of the dialog that picks a key file.
struct KeyFileDialogRecord
{
    bool initializeCom = false;
    std::thread::id thread;
};

/// Makes the fake views and keeps what they were told, in the order in which they were made.
class FakeViewFactory : public JobRunner::IViewFactory
{
public:
    std::unique_ptr<JobRunner::IProgressWindowView> createProgressWindowView(int operation) override;
    std::unique_ptr<JobRunner::IFileErrorWindowView> createFileErrorWindowView() override;
    std::unique_ptr<JobRunner::IEncryptionPasswordView> createEncryptionPasswordView(bool selfExtracting) override;
    std::unique_ptr<JobRunner::IDecryptionPasswordView> createDecryptionPasswordView() override;
    std::wstring pickKeyFile(bool initializeCom) override;

    std::vector<std::shared_ptr<ProgressViewLog>> progressViews;
    /// The view made last; dangles once its owner has ended it.
    FakeProgressWindowView* lastProgressView = nullptr;
    std::vector<std::shared_ptr<FileErrorRecord>> fileErrors;
    /// Answers of the file error windows to come; abort when there is none left.
    std::deque<int> fileErrorAnswers;

    std::vector<std::shared_ptr<EncryptionPasswordRecord>> encryptionPasswords;
    std::vector<std::shared_ptr<DecryptionPasswordRecord>> decryptionPasswords;
    /// Users of the password dialogs to come; one who cancels when there is none left.
    std::deque<EncryptionPasswordUser> encryptionUsers;
    std::deque<DecryptionPasswordUser> decryptionUsers;

    std::vector<KeyFileDialogRecord> keyFileDialogs;
    /// What the key file dialogs to come give; a cancelled one when there is none left.
    std::deque<std::wstring> pickedKeyFiles;
};

/// Puts fake views in place for the time of a test.
class FakeViews
{
public:
    FakeViews() { JobRunner::setViewFactory(&factory); }
    ~FakeViews() { JobRunner::setViewFactory(nullptr); }
    FakeViews(const FakeViews&) = delete;
    FakeViews& operator=(const FakeViews&) = delete;

    FakeViewFactory factory;
};

} // namespace Fakes
