#pragma once

#include <string>

namespace JobRunner
{

class IRiddleWindowView;
class ISfxCommentWindowView;

/// Lets the user edit the riddle, and releases the view. False when the user cancelled and nothing changed.
bool editRiddle(IRiddleWindowView& view, std::wstring& riddle);
/// The same for a package's description, with the wish to keep it as the default.
bool editSfxComment(ISfxCommentWindowView& view, std::wstring& comment, bool& keepAsDefault);

} // namespace JobRunner
