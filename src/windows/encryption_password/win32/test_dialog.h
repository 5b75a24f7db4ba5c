#pragma once

// For the tests of the encryption password dialog.

#include "fakes/fake_views.h"
#include "resources/resource.h"
#include "windows/encryption_password/win32/encryption_password_view.h"
#include "windows/framework/win32/dialog_visitor.h"
#include "windows/framework/win32/open_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace JobRunner
{

// The edits, in the order of their making.
inline constexpr std::size_t PasswordEdit = 0;
inline constexpr std::size_t RepeatEdit = 1;
inline constexpr std::size_t KeyFileEdit = 2;

/// A test with the real dialog and the real controls.
class EncryptionDialog : public testing::Test
{
protected:
    using Visit = std::function<void(const OpenDialog&)>;

    void SetUp() override { ASSERT_TRUE(RealControls::areLoaded()); }

    /// Opens the dialog, does this in it, and closes it unless that has ended it. True when it was confirmed.
    bool open(const Visit& visit) { return open(*view, visit); }
    static bool open(IEncryptionPasswordView& view, const Visit& visit)
    {
        const DialogVisitor visitor([&](HWND window) { visitAndClose(window, visit); });
        return view.doModal();
    }
    void beSelfExtracting() { view = std::make_unique<EncryptionPasswordView>(true); }

    static void visitAndClose(HWND window, const Visit& visit)
    {
        const OpenDialog dialog(window);
        visit(dialog);
        dialog.close();
    }

    std::unique_ptr<EncryptionPasswordView> view = std::make_unique<EncryptionPasswordView>(false);
};

} // namespace JobRunner
