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

} // namespace JobRunner
