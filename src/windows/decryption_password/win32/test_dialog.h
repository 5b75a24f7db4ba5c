#pragma once

// For the tests of the decryption password dialog.

#include "fakes/fake_views.h"
#include "resources/resource.h"
#include "windows/decryption_password/win32/decryption_password_view.h"
#include "windows/framework/win32/dialog_visitor.h"
#include "windows/framework/win32/open_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace JobRunner
{

/// A test with the real dialog and the real controls.
class DecryptionDialog : public testing::Test
{
protected:
    using Visit = std::function<void(const OpenDialog&)>;

    void SetUp() override { ASSERT_TRUE(RealControls::areLoaded()); }

    /// Opens the dialog, does this in it, and closes it unless that has ended it.
    void open(const Visit& visit)
    {
        const DialogVisitor visitor([&](HWND window) { visitAndClose(window, visit); });
        view->doModal();
    }

    static void visitAndClose(HWND window, const Visit& visit)
    {
        const OpenDialog dialog(window);
        visit(dialog);
        dialog.close();
    }

    std::unique_ptr<DecryptionPasswordView> view = std::make_unique<DecryptionPasswordView>();
};

} // namespace JobRunner
