#pragma once

#include <string>

namespace Platform
{

/// The code of the program and of the modules that stand beside it, as opposed to that of the system. May be asked
/// while a thread crashes: it takes no memory and no lock.
class OwnCode
{
public:
    OwnCode();

    /// Does the instruction belong to the program itself? Takes little stack.
    bool isOfTheProgram(const void* instruction) const;
    /// The same for the program and what stands in its folder.
    bool contains(const void* instruction) const;

private:
    std::wstring folder_; ///< as the system names it, with a separator at its end
};

} // namespace Platform
