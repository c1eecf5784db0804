#include "platform/linux/loop/GLibEventLoop.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(GLibEventLoopTest, WorkRunsInTheOrderOfItsTimesThenOfScheduling) {
    GLibEventLoop loop;
    std::vector<std::string> order;
    const auto note = [&](const char* text) {
        return [&order, text] {
            order.emplace_back(text);
        };
    };
    loop.schedule(0.02, [&] {
        order.emplace_back("late");
        loop.quit(7);
    });
    loop.schedule(0.01, note("early"));
    loop.schedule(0, note("first"));
    const auto dropped = loop.schedule(0, note("dropped"));
    loop.schedule(0, note("second"));
    host::EventLoop::Token victim = 0;
    loop.schedule(0, [&] { loop.cancel(victim); });
    victim = loop.schedule(0, note("cancelled by work that is due with it"));
    loop.cancel(dropped);
    loop.cancel(dropped);
    loop.cancel(12345);
    const double start = loop.now();
    EXPECT_EQ(loop.run(), 7);
    EXPECT_THAT(order, ElementsAre("first", "second", "early", "late"));
    EXPECT_GE(loop.now() - start, 0.02);
}

TEST(GLibEventLoopTest, WorkThatReschedulesItselfLetsOtherSourcesRun) {
    GLibEventLoop loop;
    int turns = 0;
    std::function<void()> again = [&] {
        ++turns;
        loop.schedule(0, again);
    };
    loop.schedule(0, again);
    g_timeout_add(
        5,
        [](gpointer data) {
            static_cast<GLibEventLoop*>(data)->quit(0);
            return gboolean{G_SOURCE_REMOVE};
        },
        &loop);
    EXPECT_EQ(loop.run(), 0);
    EXPECT_GT(turns, 1);
}

TEST(GLibEventLoopTest, ALoopSleepsWhenItsWorkIsDoneOrCancelled) {
    GLibEventLoop loop;
    GMainContext* context = g_main_context_default();
    for (const bool isDone : {true, false}) {
        if (isDone) {
            loop.schedule(0, [&] { loop.quit(0); });
            loop.run();
        } else {
            loop.cancel(loop.schedule(0.001, [] {}));
        }
        ASSERT_TRUE(g_main_context_acquire(context));
        for (int turn = 0; turn < 100; ++turn)
            g_main_context_iteration(context, FALSE);
        gint timeout = 0;
        gint priority = 0;
        g_main_context_prepare(context, &priority);
        GPollFD descriptors[16];
        g_main_context_query(context, priority, &timeout, descriptors, 16);
        g_main_context_release(context);
        EXPECT_EQ(timeout, -1) << (isDone ? "done" : "cancelled");
    }
}

}
}
