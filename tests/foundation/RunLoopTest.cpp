#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSTimer.h"
#include "platform/foundation/Weakly.h"
#include "platform/host/Host.h"
#include "tests/support/Heard.h"
#include "tests/support/HostTest.h"

namespace vistrel {
namespace {

class NSTimerTest : public support::HostTest {
protected:
    std::function<void()> note() {
        return [this] {
            fired_.push_back(NSRunLoop::now() - start_);
        };
    }
    double start_ = 1000;
    std::vector<double> fired_;
};

TEST_F(NSTimerTest, FiresOnceAndIsThenInvalid) {
    const auto timer = NSTimer::scheduledTimer(30, NSTimer::Repeats::No, note());
    NSTimer::scheduledTimer(2, NSTimer::Repeats::No, note());
    advance(29.9);
    EXPECT_THAT(fired_, ElementsAre(2));
    EXPECT_TRUE(timer->isValid());
    advance(86'400);
    EXPECT_THAT(fired_, ElementsAre(2, 30));
    EXPECT_FALSE(timer->isValid());
    EXPECT_EQ(loop().pendingWork(), 0U);
}

TEST_F(NSTimerTest, RepeatsWithoutDriftAndSkipsMissedFirings) {
    const auto timer = NSTimer::scheduledTimer(1, NSTimer::Repeats::Yes, [this] {
        note()();
        if (fired_.size() == 2)
            advance(2.5); // a slow action
    });
    advance(3);
    advance(1);
    timer->invalidate();
    timer->invalidate();
    advance(5);
    EXPECT_THAT(fired_, ElementsAre(1, 2, 5));
    EXPECT_EQ(loop().pendingWork(), 0U);
}

TEST_F(NSTimerTest, InvalidatingFromTheActionIsTheLastFiring) {
    std::shared_ptr<NSTimer> timer;
    timer = NSTimer::scheduledTimer(0, NSTimer::Repeats::Yes, [&] {
        note()();
        timer->invalidate();
        timer.reset();
    });
    advance(1);
    EXPECT_EQ(fired_.size(), 1U);
}

TEST_F(NSTimerTest, CancelledPerformsAreForgotten) {
    const auto token = NSRunLoop::performAfterDelay(1, note());
    NSRunLoop::performAfterDelay(-5, note());
    NSRunLoop::cancelPerform(token);
    NSRunLoop::cancelPerform(0);
    advance(2);
    EXPECT_THAT(fired_, ElementsAre(0));
}

TEST_F(NSTimerTest, WorkScheduledAfterTheLoopHasGoneIsDropped) {
    host::install(nullptr);
    EXPECT_EQ(NSRunLoop::performAfterDelay(0, note()), 0U);
    host::install(&deterministicHost().host);
    advance(1);
    EXPECT_THAT(fired_, IsEmpty());
}

class NSNotificationCenterTest : public ::testing::Test {
protected:
    ~NSNotificationCenterTest() override {
        for (const int& observer : observers_)
            center_.removeObserver(&observer);
    }
    void observe(int index, const std::string& name, const void* object,
                 const std::function<void()>& also = {}) {
        center_.addObserver(&observers_[index], name, object,
                            [this, index, also](const NSNotification& notification) {
                                heard_(std::to_string(index) + notification.name);
                                if (also)
                                    also();
                            });
    }
    NSNotificationCenter& center_ = NSNotificationCenter::defaultCenter();
    int observers_[4] = {};
    support::Heard heard_;
};

TEST_F(NSNotificationCenterTest, ReachesObserversOfTheNameAndTheSender) {
    int sender = 0;
    int other = 0;
    observe(0, "A", nullptr);
    observe(1, "A", &sender);
    observe(2, "B", nullptr);
    center_.postNotification("A", &other);
    center_.postNotification("A", &sender);
    center_.postNotification("C", &sender);
    EXPECT_EQ(heard_.take(), "0A, 0A, 1A");
    center_.removeObserver(&observers_[1], "A", &other);
    center_.removeObserver(&observers_[0], "B");
    center_.postNotification("A", &sender);
    EXPECT_EQ(heard_.take(), "0A, 1A") << "neither names a registration";
    center_.removeObserver(&observers_[1], "A", &sender);
    center_.postNotification("A", &sender);
    EXPECT_EQ(heard_.take(), "0A");
}

TEST_F(NSNotificationCenterTest, HandlersMayRegisterRemoveAndPost) {
    observe(0, "A", nullptr, [this] {
        center_.removeObserver(&observers_[1]);
        center_.removeObserver(&observers_[0]);
        observe(3, "A", nullptr);
        center_.postNotification("B");
    });
    observe(1, "A", nullptr);
    observe(2, "B", nullptr);
    center_.postNotification("A");
    EXPECT_EQ(heard_.take(), "0A, 2B") << "a removed observer is no longer called";
    center_.postNotification("A");
    EXPECT_EQ(heard_.take(), "3A");
}

struct Listener {
    virtual ~Listener() = default;
    virtual void heard(const std::string& word) = 0;
};

struct Base : std::enable_shared_from_this<Base> {
    virtual ~Base() = default;
};

struct Screen : Base, Listener {
    explicit Screen(support::Heard& record)
        : record_(record) {}
    ~Screen() override { record_("gone"); }
    void heard(const std::string& word) override { record_(word); }
    void leave() {
        owner.reset();
        record_("left");
    }
    int count(int by) { return counted += by; }

    std::shared_ptr<Screen> owner;
    int counted = 0;

private:
    support::Heard& record_;
};

TEST(Weakly, AnObjectThatHasGoneIsNotCalled) {
    support::Heard record;
    auto screen = std::make_shared<Screen>(record);
    const std::function<void(const std::string&)> member = weakly(screen.get(), &Screen::heard);
    const std::function<int(int)> counter = weakly(screen.get(), &Screen::count);
    const std::function<void()> lambda =
        weakly(screen.get(), [](Screen& self) { self.heard("lambda"); });
    const std::weak_ptr<Listener> delegate = weakReference<Listener>(screen.get());

    member("member");
    lambda();
    delegate.lock()->heard("delegate");
    EXPECT_EQ(counter(3), 3);
    EXPECT_EQ(record.take(), "member, lambda, delegate");

    screen.reset();
    EXPECT_EQ(record.take(), "gone") << "nothing above retains the object";
    member("late");
    lambda();
    EXPECT_EQ(counter(3), 0);
    EXPECT_EQ(delegate.lock(), nullptr);
    EXPECT_EQ(record.take(), "");
}

TEST(Weakly, AnObjectThatReleasesItselfLivesToTheEndOfTheCall) {
    support::Heard record;
    auto screen = std::make_shared<Screen>(record);
    const auto leave = weakly(screen.get(), &Screen::leave);
    screen->owner = screen;
    screen.reset();
    leave();
    EXPECT_EQ(record.take(), "left, gone");
}

}
}
