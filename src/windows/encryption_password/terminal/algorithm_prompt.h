#pragma once

namespace JobRunner
{

class TerminalDialog;

/// Lists the algorithms and asks for one, by its number or its name, until it is known. The current one when the line
/// is empty or the input has ended.
int askForAlgorithm(TerminalDialog& dialog, int current);

} // namespace JobRunner
