#pragma once

#include "engine/engine_job.h"
#include "oracle/sealed.h"

#include <string>

namespace Faults
{

/// The jobs of the engine, by name.
inline constexpr const char* EngineOrderNames[] = {
    "encryptAndKeep", "encryptAndDelete", "encryptAndWipe", "packAndKeep",     "packAndDelete", "packAndWipe",
    "decryptAndKeep", "decryptAndDelete", "unpackAndKeep",  "unpackAndDelete", "delete",        "wipe"};

inline std::string packageOfTree()
{
    Files files;
    for (const Work& work : encryption(Fate::Keep).works)
        files[work.source] = work.results[0].content;
    return packed(files);
}

inline Order engineOrder(const std::string& name)
{
    const Fate fate = name.ends_with("Keep") ? Fate::Keep : name.ends_with("ipe") ? Fate::Wipe : Fate::Delete;
    if (name.starts_with("encrypt"))
        return withStub(encryption(fate));
    if (name.starts_with("pack"))
        return withStub(packing(fate));
    if (name.starts_with("decrypt"))
        return withStub(decryption(fate));
    if (name.starts_with("unpack"))
        return withStub(unpacking(fate, packageOfTree()));
    return withStub(removal(fate));
}

} // namespace Faults
