#include "windows/framework/view_callback.h"

#include "fakes/fake_views.h"
#include "fakes/slot_of.h"
#include "windows/file_error/file_error_window.h"
#include "windows/file_error/i_file_error_window_view.h"
#include "windows/progress/i_progress_window_view.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

using namespace JobRunner;

namespace
{

/// A virtual destructor takes two places.
constexpr std::size_t BehindTheDestructor = 2;

/// The operations of one table, in order.
template <class... Members> void expectSlots(Members... members)
{
    const std::vector<std::size_t> slots{Fakes::slotOf(members)...};
    std::vector<std::size_t> expected(slots.size());
    std::iota(expected.begin(), expected.end(), BehindTheDestructor);
    EXPECT_EQ(slots, expected);
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

TEST(TheCallbacksOfAView, standBehindItsTableInOrder)
{
    Fakes::FakeViewFactory factory;
    const auto view = factory.createProgressWindowView(OperationEncrypt);
    const auto distance = [&view](const ViewCallback& callback)
    { return reinterpret_cast<const char*>(&callback) - reinterpret_cast<const char*>(view.get()); };
    EXPECT_EQ(distance(view->onCancel), static_cast<std::ptrdiff_t>(sizeof(void*)));
    EXPECT_EQ(distance(view->onPause), static_cast<std::ptrdiff_t>(sizeof(void*) + sizeof(ViewCallback)));
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
