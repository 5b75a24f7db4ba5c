#include "windows/framework/view_callback.h"

#include "fakes/fake_views.h"
#include "fakes/slot_of.h"
#include "windows/file_error/file_error_window.h"
#include "windows/file_error/i_file_error_window_view.h"
#include "windows/progress/i_progress_window_view.h"
#include "windows/text_editors/i_riddle_window_view.h"
#include "windows/text_editors/i_sfx_comment_window_view.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

using namespace JobRunner;

namespace
{

/// A virtual destructor takes two places.
constexpr std::size_t BehindTheDestructor = 2;

/// The operations of one table, in order, from that place on.
template <class... Members> void expectSlotsFrom(std::size_t first, Members... members)
{
    const std::vector<std::size_t> slots{Fakes::slotOf(members)...};
    std::vector<std::size_t> expected(slots.size());
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ(slots, expected);
}

template <class... Members> void expectSlots(Members... members)
{
    expectSlotsFrom(BehindTheDestructor, members...);
}

/// The callbacks directly behind the pointer to the table of `view`, in order.
template <class View, class... Callbacks> void expectCallbacks(const View& view, const Callbacks&... callbacks)
{
    std::ptrdiff_t expected = sizeof(void*);
    for (const void* const callback : {static_cast<const void*>(&callbacks)...})
    {
        EXPECT_EQ(static_cast<const char*>(callback) - reinterpret_cast<const char*>(&view), expected);
        expected += static_cast<std::ptrdiff_t>(sizeof(ViewCallback));
    }
}

} // namespace

TEST(TheTableOfTheViews, hasTheProgressInOrder)
{
    using T = IProgressWindowView;
    expectSlots(&T::create, &T::waitUntilCreated, &T::close, &T::isHidden, &T::hide, &T::show, &T::setFileProgress,
                &T::setTotalProgress, &T::setElapsedTime, &T::setTimeLeft, &T::setSpeed, &T::setElapsedBytes,
                &T::setBytesLeft, &T::setTotalBytes, &T::onPaused, &T::onResumed);
}

TEST(TheTableOfTheViews, hasTheFileErrorInOrder)
{
    using T = IFileErrorWindowView;
    expectSlots(&T::setTitle, &T::setHeader, &T::setSource, &T::setTarget, &T::setMessage, &T::doModal);
}

TEST(TheTableOfTheViews, hasTheFileErrorWindowInAnotherOrderThanItsView)
{
    using T = FileErrorWindow;
    expectSlots(&T::setTitle, &T::setHeader, &T::setMessage, &T::setSource, &T::setTarget);
}

TEST(TheTableOfTheViews, hasTheEncryptionPasswordInOrder)
{
    using T = IEncryptionPasswordView;
    expectSlots(&T::setDestiny, &T::setKeyFile, &T::setSfxComment, &T::doModal, &T::getPassword, &T::getPasswordRepeat,
                &T::getKeyFile, &T::getDestiny, &T::getRiddle, &T::getAlgorithm, &T::getSfxComment,
                &T::isSfxCommentDefault, &T::isPasswordMode, &T::showError, &T::setRepeatMismatch);
}

TEST(TheTableOfTheViews, hasTheDecryptionPasswordInOrder)
{
    using T = IDecryptionPasswordView;
    expectSlots(&T::setPassword, &T::setKeyFile, &T::setDecryptionMode, &T::setHeaderText, &T::setFileName, &T::doModal,
                &T::getPassword, &T::getKeyFile, &T::isPasswordMode, &T::showError);
}

TEST(TheTableOfTheViews, hasNoDestructorInTheSmallEditors)
{
    using Riddle = IRiddleWindowView;
    expectSlotsFrom(0, &Riddle::setText, &Riddle::getText, &Riddle::doModal, &Riddle::release);
    using Comment = ISfxCommentWindowView;
    expectSlotsFrom(0, &Comment::setText, &Comment::getText, &Comment::doModal, &Comment::release,
                    &Comment::isSetDefault);
}

TEST(TheCallbacksOfAView, standBehindItsTableInOrder)
{
    static_assert(sizeof(ViewCheck) == sizeof(ViewCallback));
    Fakes::FakeViewFactory factory;
    const auto progress = factory.createProgressWindowView(OperationEncrypt);
    expectCallbacks<IProgressWindowView>(*progress, progress->onCancel, progress->onPause);
    const auto encryption = factory.createEncryptionPasswordView(false);
    expectCallbacks<IEncryptionPasswordView>(*encryption, encryption->onOk, encryption->onIgnore, encryption->onCancel,
                                             encryption->onBrowseKeyFile, encryption->onPasswordsChanged);
    const auto decryption = factory.createDecryptionPasswordView();
    expectCallbacks<IDecryptionPasswordView>(*decryption, decryption->onOk, decryption->onIgnore, decryption->onCancel,
                                             decryption->onBrowseKeyFile);
}

TEST(ViewCallback, passesItsContextAndSkipsANullFunction)
{
    int calls = 0;
    const ViewCallback set{[](void* context) { ++*static_cast<int*>(context); }, &calls};
    set();
    EXPECT_EQ(calls, 1);
    ViewCallback{}();
    ViewCallback{nullptr, &calls}();
    EXPECT_EQ(calls, 1);
}

TEST(ViewCheck, countsAsTrueUnset)
{
    EXPECT_TRUE(ViewCheck{}());
    bool answer = false;
    const ViewCheck set{[](void* context) { return *static_cast<bool*>(context); }, &answer};
    EXPECT_FALSE(set());
    answer = true;
    EXPECT_TRUE(set());
}
