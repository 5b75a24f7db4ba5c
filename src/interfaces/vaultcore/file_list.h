#pragma once

namespace VaultCore
{

/// The files, folders and patterns of one job. An entry is a path; its last segment may hold `*` and `?`.
/// Not safe for concurrent changes; reading from several threads is.
class IFileList
{
public:
    /// Destroys a list that the caller owns.
    virtual void Release() = 0;
    /// Appends one entry. The text is copied.
    virtual void Add(const wchar_t* path) = 0;
    virtual void notCalled1() = 0;
    virtual int GetCount() = 0;
    /// Text of the entry at `index`, counted from 0; owned by the list. Null for an index outside the list.
    virtual const wchar_t* GetItem(int index) = 0;

protected:
    ~IFileList() = default;
};

} // namespace VaultCore
