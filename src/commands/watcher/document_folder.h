#pragma once

#include <string>

namespace JobRunner
{

// What lies beside a document. Any thread.

/// True when the document is there and its folder holds nothing else but work files. A folder in it counts as
/// something else.
bool IsDocumentAlone(const std::wstring& file);

/// A file that applications keep beside an open document, by its name alone.
bool IsWorkFile(const std::wstring& file);

} // namespace JobRunner
