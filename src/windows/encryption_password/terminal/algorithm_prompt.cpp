#include "windows/encryption_password/terminal/algorithm_prompt.h"

#include "windows/encryption_password/encryption_password_texts.h"
#include "windows/framework/terminal/terminal_dialog.h"

#include <cwctype>

namespace JobRunner
{

namespace
{

constexpr std::size_t Columns = 3;
constexpr std::size_t ColumnWidth = 20;

std::wstring listOfAlgorithms()
{
    std::wstring text;
    for (std::size_t i = 0; i < AlgorithmNames.size(); ++i)
    {
        std::wstring entry = (i < 10 ? L" " : L"") + std::to_wstring(i) + L' ' + AlgorithmNames[i];
        const bool endsRow = i % Columns == Columns - 1 || i + 1 == AlgorithmNames.size();
        if (!endsRow)
            entry.resize(ColumnWidth, L' ');
        text += entry + (endsRow && i + 1 < AlgorithmNames.size() ? L"\n" : L"");
    }
    return text;
}

std::wstring upperCase(std::wstring text)
{
    for (wchar_t& character : text)
        character = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(character)));
    return text;
}

/// -1 for a text that is neither a number nor a name of an algorithm.
int algorithmOf(const std::wstring& typed)
{
    const std::wstring wanted = upperCase(typed);
    for (std::size_t i = 0; i < AlgorithmNames.size(); ++i)
        if (wanted == AlgorithmNames[i] || wanted == std::to_wstring(i))
            return static_cast<int>(i);
    return -1;
}

} // namespace

int askForAlgorithm(TerminalDialog& dialog, int current)
{
    dialog.print(listOfAlgorithms());
    const std::wstring question = L"Algorithm (number or name, Enter for " + algorithmName(current) + L"): ";
    while (const std::optional<std::wstring> line = dialog.readLine(question))
    {
        if (line->empty())
            return current;
        if (const int algorithm = algorithmOf(*line); algorithm >= 0)
            return algorithm;
        dialog.printLine(L"There is no such algorithm: " + *line);
    }
    return current;
}

} // namespace JobRunner
