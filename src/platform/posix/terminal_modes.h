#pragma once

namespace Platform
{

enum class InputMode
{
    Lines,  ///< as the terminal was found
    Hidden, ///< lines without echo
    Keys    ///< single keys without echo
};

/// Puts the terminal behind `input` into a mode; one terminal per process. Whatever ends the process, by exit or by a
/// signal that can be caught, first puts back what was found. One thread at a time.
void setInputMode(int input, InputMode mode);

/// Puts back what was found, if it was changed. Safe in a signal handler.
void restoreInputMode();

/// True when the process may read and configure the terminal behind `input` (a job in the background may not).
bool ownsTerminal(int input);

} // namespace Platform
