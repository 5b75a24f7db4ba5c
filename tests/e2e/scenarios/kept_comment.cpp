#include "scenarios/kept_comment.h"

#include "scenarios/sample_folder.h"

#include <fstream>

namespace fs = std::filesystem;

namespace EndToEnd
{

KeptComment::KeptComment() : file_(settingsFolder() / "jobrunner" / "sfx-comment.txt"), former_(saved())
{
    fs::remove(file_);
}

KeptComment::~KeptComment()
{
    std::error_code ignored;
    if (former_)
        std::ofstream(file_, std::ios::binary | std::ios::trunc) << *former_;
    else
        fs::remove(file_, ignored);
}

std::optional<std::string> KeptComment::saved() const
{
    return fs::exists(file_) ? std::optional(contentOf(file_)) : std::nullopt;
}

} // namespace EndToEnd
