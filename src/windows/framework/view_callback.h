#pragma once

namespace JobRunner
{

/// A function and the context that it gets. Public data of a view; an unset pair is skipped.
struct ViewCallback
{
    void (*function)(void* context) = nullptr;
    void* context = nullptr;

    void operator()() const
    {
        if (function)
            function(context);
    }
};

/// The same for a callback that decides. An unset pair counts as true.
struct ViewCheck
{
    bool (*function)(void* context) = nullptr;
    void* context = nullptr;

    bool operator()() const { return !function || function(context); }
};

} // namespace JobRunner
