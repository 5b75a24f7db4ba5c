#pragma once

#include <string>

namespace JobRunner
{

/// Opens a document in its associated application and blocks, without a time limit, until the application seems to
/// have let go of it. False only when the shell refuses to start anything. Job thread.
bool OpenDocumentAndWait(const std::wstring& path);

} // namespace JobRunner
