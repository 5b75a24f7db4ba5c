#pragma once

#include "scenarios/sample_folder.h"

namespace EndToEnd
{

/// Key files as make_key makes them.
class KeyFiles
{
public:
    /// Made at the first call and kept until the tests end: a new RSA key takes its time.
    static const KeyFiles& shared();

private:
    KeyFiles();

    SampleFolder folder_;

public:
    const Path symmetric = folder_.path() / "my own.zelkey";
    const Path otherSymmetric = folder_.path() / "other.zelkey";
    const Path publicRsa = folder_.path() / "public.zelkey";
    const Path privateRsa = folder_.path() / "private.zelkey";
    const Path pair = folder_.path() / "pair.zelkey";
};

} // namespace EndToEnd
