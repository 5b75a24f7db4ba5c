#include "zelplatform/sfx_comment.h"

#include "platform/utf8.h"
#include "zelplatform/files.h"

#include <cstddef>
#include <utility>

namespace ZelPlatform
{
namespace
{

constexpr std::size_t MaximumCommentBytes = std::size_t{1024} * 1024;

} // namespace

SfxComment::SfxComment(std::wstring file) : file_(std::move(file)) {}

std::wstring SfxComment::load() const
{
    const auto text = readFile(file_, MaximumCommentBytes);
    return text ? Platform::fromUtf8(*text) : builtInSfxComment();
}

void SfxComment::save(const wchar_t* comment) const
{
    if (!comment || file_.empty())
        return;
    const std::string text = Platform::toUtf8(comment);
    // A comment that could not be read again must not take the place of one that can.
    if (text.size() <= MaximumCommentBytes)
        replacePrivateFile(file_, text);
}

std::wstring builtInSfxComment()
{
    return std::wstring(L"This file was encrypted with the Halden suite. ") + VendorDomain;
}

} // namespace ZelPlatform
