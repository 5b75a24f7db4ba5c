#pragma once

#include "oracle/files.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Faults
{

/// What becomes of the files that a job works on.
enum class Fate
{
    Keep,
    Delete,
    Wipe,
};

enum class Kind
{
    Encrypt,
    Pack,
    Decrypt,
    /// Without results: the files go.
    Remove,
};

/// A file that a job has to bring forth.
struct Result
{
    std::string path;
    /// In plain.
    std::string content;
    /// Its name inside a package.
    std::string packedName;
};

/// One file that a job works on, as a path, with all that comes out of it.
struct Work
{
    std::string source;
    std::vector<Result> results;
};

/// A job as it was ordered.
struct Order
{
    Kind kind = Kind::Encrypt;
    Fate fate = Fate::Keep;
    /// The whole folder, before.
    Files before;
    std::vector<Work> works;
    /// Entries of the job's list.
    std::vector<std::string> entries;
};

// Orders over files of a size each that the program treats in its own way: one of several pieces, small ones in a
// folder of their own, an empty one. An encryption names each file by itself: one that is run again takes what it finds
// in a folder, results of the first run as well, and seals them once more.

Order encryption(Fate fate);
Order packing(Fate fate);
/// `fate` is that of the encrypted files.
Order decryption(Fate fate);
/// Of one package that a program has made of all the files, the small ones in their folder.
Order unpacking(Fate fate, const std::string& package);
Order removal(Fate fate);

} // namespace Faults
