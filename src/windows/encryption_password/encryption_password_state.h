#pragma once

#include "windows/encryption_password/encryption_password_texts.h"
#include "windows/framework/secret_text.h"

#include <string>

namespace JobRunner
{

/// States of the "More" section.
enum EncryptionSection : int
{
    SectionOpen = 1,
    SectionCollapsed = 2,
};

/// What is typed in.
enum EncryptionInputMode : int
{
    PasswordInput = 1,
    KeyFileInput = 2,
};

/// What the encryption password dialog holds, and how its choices change it, on every system.
struct EncryptionPasswordState
{
    /// 0 until the dialog opens.
    int section = 0;
    /// 0 until the dialog opens.
    int inputMode = 0;
    SecretText password;
    SecretText repeat;
    std::wstring keyFile;
    int destiny = DestinyDelete;
    int algorithm = FirstAlgorithm;
    std::wstring riddle;
    std::wstring sfxComment;
    bool sfxCommentDefault = false;

    bool passwordMode() const { return inputMode == PasswordInput; }
    bool sectionOpen() const { return section == SectionOpen; }

    /// What the button of the section makes of its state.
    int otherSection() const { return section == SectionCollapsed ? SectionOpen : SectionCollapsed; }
    /// Text of that button. It offers what a press would do.
    const wchar_t* sectionButton() const
    {
        return section == SectionOpen ? EncryptionText::LessButton : EncryptionText::MoreButton;
    }
    /// The input mode behind an item of the input choice, and the way back.
    static int modeOfItem(int index) { return index + 1; }
    int inputItem() const { return inputMode - 1; }
    /// False when the mode stays, and then nothing else has to change.
    bool changeInputMode(int mode)
    {
        const bool changed = mode != inputMode;
        inputMode = mode;
        return changed;
    }
};

} // namespace JobRunner
