#include "fakes/fake_views.h"

#include <locale>
#include <sstream>

namespace Fakes
{

namespace
{

template <class... Arguments> std::wstring callText(Arguments... arguments)
{
    std::wostringstream text;
    text.imbue(std::locale::classic());
    text.precision(15);
    const wchar_t* gap = L"";
    ((text << gap << arguments, gap = L" "), ...);
    return text.str();
}

template <class Value> Value takeFirst(std::deque<Value>& values)
{
    if (values.empty())
        return {};
    Value first = std::move(values.front());
    values.pop_front();
    return first;
}

} // namespace

std::vector<std::wstring> ProgressViewLog::calls() const
{
    const std::lock_guard guard(lock_);
    return calls_;
}

void ProgressViewLog::clear()
{
    const std::lock_guard guard(lock_);
    calls_.clear();
}

std::wstring ProgressViewLog::last(const std::wstring& name) const
{
    const std::lock_guard guard(lock_);
    for (auto call = calls_.rbegin(); call != calls_.rend(); ++call)
        if (call->starts_with(name + L' '))
            return call->substr(name.size() + 1);
    return {};
}

std::size_t ProgressViewLog::count(const std::wstring& name) const
{
    const std::lock_guard guard(lock_);
    std::size_t found = 0;
    for (const std::wstring& call : calls_)
        if (call == name || call.starts_with(name + L' '))
            ++found;
    return found;
}

bool ProgressViewLog::hidden() const
{
    const std::lock_guard guard(lock_);
    return hidden_;
}

bool ProgressViewLog::open() const
{
    const std::lock_guard guard(lock_);
    return open_;
}

void ProgressViewLog::add(std::wstring call)
{
    const std::lock_guard guard(lock_);
    calls_.push_back(std::move(call));
}

void ProgressViewLog::setHidden(bool hidden)
{
    const std::lock_guard guard(lock_);
    hidden_ = hidden;
}

void ProgressViewLog::setOpen(bool open)
{
    const std::lock_guard guard(lock_);
    open_ = open;
}

void FakeProgressWindowView::create()
{
    log_->setOpen(true);
    log_->add(L"create");
}

void FakeProgressWindowView::waitUntilCreated()
{
    log_->add(L"waitUntilCreated");
}

void FakeProgressWindowView::close()
{
    log_->setOpen(false);
    log_->add(L"close");
}

bool FakeProgressWindowView::isHidden()
{
    return log_->hidden();
}

void FakeProgressWindowView::hide()
{
    log_->setHidden(true);
    log_->add(L"hide");
}

void FakeProgressWindowView::show()
{
    log_->setHidden(false);
    log_->add(L"show");
}

void FakeProgressWindowView::setFileProgress(const wchar_t* fileName, double percent, bool wiping)
{
    std::wstring call = callText(L"setFileProgress", fileName, percent);
    log_->add(wiping ? call + L" wiping" : call);
}

void FakeProgressWindowView::setTotalProgress(double percent, bool force)
{
    std::wstring call = callText(L"setTotalProgress", percent);
    log_->add(force ? call + L" force" : call);
}

void FakeProgressWindowView::setElapsedTime(int seconds)
{
    log_->add(callText(L"setElapsedTime", seconds));
}

void FakeProgressWindowView::setTimeLeft(int seconds)
{
    log_->add(callText(L"setTimeLeft", seconds));
}

void FakeProgressWindowView::setSpeed(std::uint64_t bytesPerSecond)
{
    log_->add(callText(L"setSpeed", bytesPerSecond));
}

void FakeProgressWindowView::setElapsedBytes(std::uint64_t bytes)
{
    log_->add(callText(L"setElapsedBytes", bytes));
}

void FakeProgressWindowView::setBytesLeft(std::uint64_t bytes)
{
    log_->add(bytes == JobRunner::UnknownBytes ? L"setBytesLeft unknown" : callText(L"setBytesLeft", bytes));
}

void FakeProgressWindowView::setTotalBytes(std::uint64_t bytes)
{
    log_->add(bytes == JobRunner::UnknownBytes ? L"setTotalBytes unknown" : callText(L"setTotalBytes", bytes));
}

void FakeProgressWindowView::onPaused()
{
    log_->add(L"onPaused");
}

void FakeProgressWindowView::onResumed()
{
    log_->add(L"onResumed");
}

void FakeFileErrorWindowView::setTitle(const wchar_t* text)
{
    record_->calls.push_back(callText(L"setTitle", text));
}

void FakeFileErrorWindowView::setHeader(const wchar_t* text)
{
    record_->calls.push_back(callText(L"setHeader", text));
}

void FakeFileErrorWindowView::setSource(const wchar_t* path)
{
    record_->calls.push_back(callText(L"setSource", path));
}

void FakeFileErrorWindowView::setTarget(const wchar_t* path)
{
    record_->calls.push_back(callText(L"setTarget", path));
}

void FakeFileErrorWindowView::setMessage(const wchar_t* text)
{
    record_->calls.push_back(callText(L"setMessage", text));
}

int FakeFileErrorWindowView::doModal()
{
    record_->calls.push_back(L"doModal");
    return record_->answer;
}

std::unique_ptr<JobRunner::IProgressWindowView> FakeViewFactory::createProgressWindowView(int operation)
{
    progressViews.push_back(std::make_shared<ProgressViewLog>(operation));
    auto view = std::make_unique<FakeProgressWindowView>(progressViews.back());
    lastProgressView = view.get();
    return view;
}

std::unique_ptr<JobRunner::IFileErrorWindowView> FakeViewFactory::createFileErrorWindowView()
{
    fileErrors.push_back(std::make_shared<FileErrorRecord>());
    if (!fileErrorAnswers.empty())
    {
        fileErrors.back()->answer = fileErrorAnswers.front();
        fileErrorAnswers.pop_front();
    }
    return std::make_unique<FakeFileErrorWindowView>(fileErrors.back());
}

std::unique_ptr<JobRunner::IEncryptionPasswordView> FakeViewFactory::createEncryptionPasswordView(bool selfExtracting)
{
    encryptionPasswords.push_back(std::make_shared<EncryptionPasswordRecord>());
    encryptionPasswords.back()->selfExtracting = selfExtracting;
    return std::make_unique<FakeEncryptionPasswordView>(encryptionPasswords.back(), takeFirst(encryptionUsers));
}

std::unique_ptr<JobRunner::IDecryptionPasswordView> FakeViewFactory::createDecryptionPasswordView()
{
    decryptionPasswords.push_back(std::make_shared<DecryptionPasswordRecord>());
    return std::make_unique<FakeDecryptionPasswordView>(decryptionPasswords.back(), takeFirst(decryptionUsers));
}

std::wstring FakeViewFactory::pickKeyFile(bool initializeCom)
{
    keyFileDialogs.push_back({initializeCom, std::this_thread::get_id()});
    return takeFirst(pickedKeyFiles);
}

} // namespace Fakes
