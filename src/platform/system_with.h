#pragma once

#include "platform/platform.h"

#include <type_traits>

namespace Platform
{

/// The replacement that is a `Concern`, or else the original.
template <class Concern> Concern& chosen(Concern& original)
{
    return original;
}

template <class Concern, class First, class... Others>
Concern& chosen(Concern& original, First& first, Others&... others)
{
    if constexpr (std::is_base_of_v<Concern, First>)
        return first;
    else
        return chosen<Concern>(original, others...);
}

/// A system with some of its concerns replaced, whose objects outlive it. For tests and benchmarks.
template <class... Replacements> System systemWith(const System& system, Replacements&... replacements)
{
    return {chosen<Modules>(system.modules, replacements...),
            chosen<Threads>(system.threads, replacements...),
            chosen<Messages>(system.messages, replacements...),
            chosen<MessageBoxes>(system.messageBoxes, replacements...),
            chosen<Shell>(system.shell, replacements...),
            chosen<Handles>(system.handles, replacements...),
            chosen<Processes>(system.processes, replacements...),
            chosen<Desktop>(system.desktop, replacements...),
            chosen<Files>(system.files, replacements...),
            chosen<Registry>(system.registry, replacements...),
            chosen<Statistics>(system.statistics, replacements...),
            chosen<Crashes>(system.crashes, replacements...),
            chosen<Locale>(system.locale, replacements...),
            chosen<Paths>(system.paths, replacements...),
            system.separator};
}

} // namespace Platform
