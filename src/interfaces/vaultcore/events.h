#pragma once

#include <cstdint>

namespace VaultCore
{

class IPasswordProvider;

/// Start and end of the job and of each file. Called on the engine's threads.
class IOverallProgressEvents
{
public:
    virtual void OnOperationStarted() = 0;
    virtual void OnFileStarted(const wchar_t* name) = 0;
    /// `file` belongs to the engine; an `error` of 0 means success. `text` is the engine's own word on the file and may
    /// be null. The open engine gives the message of a failure; after a decryption the path of the result, for an
    /// unpacked package that of the folder; and otherwise an empty text. The double-click job decides by it.
    virtual void OnFileFinished(const void* file, const wchar_t* text, std::uint32_t error) = 0;
    virtual void OnOperationFinished() = 0;

protected:
    ~IOverallProgressEvents() = default;
};

/// What the engine found before it works on the first file.
class IFileListBuilderEvents
{
public:
    /// `totalSize` is the size of the whole job in bytes.
    virtual void OnFileListBuilt(std::uint32_t word, std::uint64_t totalSize) = 0;
    /// Answers 1 to go on.
    virtual int OnFileListEntry(std::uint32_t first, std::uint32_t second, std::uint32_t third) = 0;

protected:
    ~IFileListBuilderEvents() = default;
};

/// Bytes done of the file under work. The same interface serves the treatment of a source file after its job.
class IFileProgressEvents
{
public:
    /// Answers 1 to go on, 0 to stop the job. May block for as long as the user pauses.
    virtual int OnFileProgress(std::uint64_t done, std::uint64_t total) = 0;

protected:
    ~IFileProgressEvents() = default;
};

/// Answers of `OnFileError`. 1 and 3 are not used.
enum FileErrorAction : int
{
    FileErrorRepeat = 0,
    FileErrorSkip = 2,
    FileErrorAbort = 4,
};

/// A file that the engine cannot work on.
class IFileConflictEvents
{
public:
    virtual int OnFileConflict(std::uint32_t first, std::uint32_t second) = 0;
    /// Answers a `FileErrorAction`. May block until the user has decided.
    virtual int OnFileError(const wchar_t* source, const wchar_t* target, const wchar_t* message) = 0;

protected:
    ~IFileConflictEvents() = default;
};

/// Collects the callbacks of one job. The callbacks are not owned and outlive the job; null leaves one out.
class IOperationEvents
{
public:
    virtual void Release() = 0;
    virtual void SetFileListBuilderEvents(IFileListBuilderEvents* events) = 0;
    virtual void SetOverallProgressEvents(IOverallProgressEvents* events) = 0;
    virtual void SetFileProgressEvents(IFileProgressEvents* events) = 0;
    virtual void SetDestinyProgressEvents(IFileProgressEvents* events) = 0;
    virtual void SetFileConflictEvents(IFileConflictEvents* events) = 0;

protected:
    ~IOperationEvents() = default;
};

/// The same for a decryption, which also asks for keys.
class IDecryptionEvents : public IOperationEvents
{
public:
    virtual void SetPasswordProvider(IPasswordProvider* provider) = 0;

protected:
    ~IDecryptionEvents() = default;
};

} // namespace VaultCore
