#include "platform/foundation/Weakly.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

struct Listener {
    virtual ~Listener() = default;
    virtual void heard(const std::string& word) = 0;
};

struct Base : std::enable_shared_from_this<Base> {
    virtual ~Base() = default;
};

struct Screen : Base, Listener {
    explicit Screen(std::string& record)
        : record_(record) {}
    ~Screen() override { record_ += "gone "; }
    void heard(const std::string& word) override { record_ += word + " "; }
    void leave() {
        owner.reset();
        record_ += "left ";
    }
    int count(int by) { return counted += by; }

    std::shared_ptr<Screen> owner;
    int counted = 0;

private:
    std::string& record_;
};

TEST(Weakly, AnObjectThatHasGoneIsNotCalled) {
    std::string record;
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
    EXPECT_EQ(record, "member lambda delegate ");

    screen.reset();
    EXPECT_EQ(record, "member lambda delegate gone ") << "nothing above retains the object";
    member("late");
    lambda();
    EXPECT_EQ(counter(3), 0);
    EXPECT_EQ(delegate.lock(), nullptr);
    EXPECT_EQ(record, "member lambda delegate gone ");
}

TEST(Weakly, AnObjectThatReleasesItselfLivesToTheEndOfTheCall) {
    std::string record;
    auto screen = std::make_shared<Screen>(record);
    const auto leave = weakly(screen.get(), &Screen::leave);
    screen->owner = screen;
    screen.reset();
    leave();
    EXPECT_EQ(record, "left gone ");
}

}
}
