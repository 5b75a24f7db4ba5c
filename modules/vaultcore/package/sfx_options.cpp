#include "vaultcore/package/sfx_options.h"

#include "platform/utf8.h"
#include "vaultcore/package/package_program.h"

namespace VaultCore
{

void SfxOptions::SetSfxComment(const wchar_t* comment)
{
    comment_ = comment != nullptr ? Platform::toUtf8(comment) : std::string();
}

SfxOrder SfxOptions::order() const
{
    return {options_.order(), comment_, packageProgram()};
}

} // namespace VaultCore
