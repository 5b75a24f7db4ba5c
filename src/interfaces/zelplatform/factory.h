#pragma once

#include "interfaces/zelplatform/documents.h"

namespace ZelPlatform
{

class IJobDocumentStore
{
public:
    /// Documents that the store gave out stay valid.
    virtual void Release() = 0;
    /// Reads a configuration file. Null when it cannot; the caller owns the document.
    virtual IJobRunnerDocument* LoadJobDocument(const wchar_t* path) = 0;
    virtual void notCalled1() = 0;
    /// Remembers the comment as the user's default for self-extracting files. A failure stays silent.
    virtual void SaveSfxComment(const wchar_t* comment) = 0;

protected:
    ~IJobDocumentStore() = default;
};

class IFactory
{
public:
    virtual void Release() = 0;
    virtual void notCalled1() = 0;
    /// A new store, owned by the caller.
    virtual IJobDocumentStore* CreateJobDocumentStore() = 0;

protected:
    ~IFactory() = default;
};

/// Types of the module's exports, by their names. `initialize` takes the folder of the crypto engine.
using InitializeFunction = bool (*)(const wchar_t* engineFolder);
using CreateFactoryFunction = IFactory* (*)();
using UninitializeFunction = void (*)();

} // namespace ZelPlatform
