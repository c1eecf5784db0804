#include "platform/linux/NativeCallback.h"

#include "platform/foundation/Weakly.h"
#include "platform/linux/NativeReference.h"
#include "tests/linux/MainLoop.h"

namespace vistrel {
namespace {

/// Completes on the next turn of the loop, as native functions do.
void answerLater(int answer, GCancellable* cancellable, GAsyncReadyCallback ready, gpointer data) {
    GTask* task = g_task_new(nullptr, cancellable, ready, data);
    g_task_return_int(task, answer);
    g_object_unref(task);
}

struct Owner : std::enable_shared_from_this<Owner> {
    explicit Owner(std::string& text)
        : record(text) {}
    ~Owner() { record += "gone "; }
    void activated(GVariant* word) {
        record += std::string(g_variant_get_string(word, nullptr)) + " ";
        if (onActivated)
            onActivated();
    }
    void answered(GAsyncResult* result) {
        record += std::to_string(g_task_propagate_int(G_TASK(result), nullptr)) + " ";
    }
    void later() { record += "later "; }

    std::string& record;
    SignalConnection connection;
    std::function<void()> onActivated;
};

class NativeCallbackTest : public testing::Test {
protected:
    std::shared_ptr<Owner> makeOwner() {
        auto owner = std::make_shared<Owner>(record_);
        owner->connection = connectSignal<void(GVariant*)>(action_.get(), "activate",
                                                           weakly(owner.get(), &Owner::activated));
        return owner;
    }
    void activate(const char* word) {
        g_action_activate(G_ACTION(action_.get()), g_variant_new_string(word));
    }

    std::string record_;
    NativeReference<GSimpleAction> action_ =
        NativeReference<GSimpleAction>::adopt(g_simple_action_new("go", G_VARIANT_TYPE_STRING));
};

TEST_F(NativeCallbackTest, AConnectionEndsWithItsOwner) {
    auto owner = makeOwner();
    activate("one");
    owner.reset();
    activate("two");
    EXPECT_EQ(record_, "one gone ");
    EXPECT_EQ(g_signal_handler_find(action_.get(), G_SIGNAL_MATCH_ID,
                                    g_signal_lookup("activate", G_TYPE_SIMPLE_ACTION), 0, nullptr,
                                    nullptr, nullptr),
              0u);
}

TEST_F(NativeCallbackTest, AHandlerMayEndItsConnectionAndItsOwner) {
    auto owner = makeOwner();
    owner->onActivated = [&] {
        owner.reset();
        record_ += "left ";
    };
    activate("one");
    EXPECT_EQ(record_, "one left gone ") << "the owner lives until its handler returns";

    owner = makeOwner();
    owner->onActivated = [&] {
        owner->connection = {};
    };
    activate("two");
    activate("three");
    EXPECT_EQ(record_, "one left gone two ");
}

TEST_F(NativeCallbackTest, TheNativeObjectMayGoBeforeTheConnection) {
    auto owner = makeOwner();
    action_ = {};
    owner.reset();
    EXPECT_EQ(record_, "gone ");
}

TEST_F(NativeCallbackTest, WhatComesLaterReachesALivingOwnerOnly) {
    for (const bool lives : {true, false}) {
        record_.clear();
        auto owner = makeOwner();
        callAsync(weakly(owner.get(), &Owner::answered), answerLater, 7, nullptr);
        callLater(weakly(owner.get(), &Owner::later), 5);
        EXPECT_EQ(record_, "") << "never from inside the asking";
        if (!lives)
            owner.reset();
        turnFor(0.05);
        EXPECT_EQ(record_, lives ? "7 later " : "gone ");
    }
}

}
}
