#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UIToolbar.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

using Item = std::shared_ptr<UIBarButtonItem>;

class Bars : public support::ScreenTest {
protected:
    Item titled(const std::string& title, std::function<void()> action = {}) {
        return UIBarButtonItem::withTitle(title, UIBarButtonItemStyle::Bordered, std::move(action));
    }
    std::shared_ptr<UIToolbar> toolbar() { return add<UIToolbar>(CGRectMake(0, 436, 320, 44)); }
    /// With the items, the last of them on top.
    std::shared_ptr<UINavigationBar>
    navigationBar(std::vector<std::shared_ptr<UINavigationItem>> items) {
        auto bar = add<UINavigationBar>(CGRectMake(0, 20, 320, 44));
        for (auto& item : items)
            bar->pushNavigationItem(std::move(item), false);
        return bar;
    }
    static std::shared_ptr<UINavigationItem> entitled(const std::string& title) {
        return std::make_shared<UINavigationItem>(title);
    }
    std::vector<std::string> buttons(UIView& bar) {
        return labels(UIAccessibilityRole::Button, bar);
    }
};

TEST_F(Bars, FlexibleSpacesShareWhatTheButtonsLeave) {
    const auto bar = toolbar();
    const auto space =
        UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem::FlexibleSpace, {});
    const auto plain = [](const std::string& label) {
        auto item = UIBarButtonItem::withImage(plainImage(20, 20, 0xFFFFFFFF),
                                               UIBarButtonItemStyle::Plain, {});
        item->setAccessibilityLabel(label);
        return item;
    };
    bar->setItems({plain("back"), space, plain("home"), space, plain("forward")});
    EXPECT_LT(placeOfButton("back").minX(), 10);
    EXPECT_NEAR(placeOfButton("home").midX(), 160, 1);
    EXPECT_GT(placeOfButton("forward").maxX(), 310);
    bar->setFrame(CGRectMake(0, 276, 480, 44));
    EXPECT_GT(placeOfButton("forward").maxX(), 470);
}

TEST_F(Bars, AReplacedItemTakesThePlaceOfTheOld) {
    const auto bar = toolbar();
    std::string heard;
    const auto refresh =
        UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem::Refresh, {});
    const auto stop = UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem::Stop,
                                                               [&] { heard += "stop "; });
    const auto home = titled("Home", [&] {
        bar->setItems({stop});
        heard += "home ";
    });
    bar->setItems({home, refresh});
    const CGRect old = placeOfButton("Refresh");
    bar->setItems({home, stop});
    EXPECT_EQ(placeOfButton("Stop"), old);
    EXPECT_EQ(placeOfButton("Refresh"), CGRect{});
    act("button Stop; button Home");
    EXPECT_EQ(heard, "stop home ");
    EXPECT_THAT(buttons(*bar), ElementsAre("Stop"));
}

TEST_F(Bars, ADisabledItemIsFaintAndDoesNothing) {
    const auto bar = toolbar();
    int presses = 0;
    const auto item = titled("Go", [&] { ++presses; });
    bar->setItems({item});
    const auto isBright = [](std::uint32_t pixel) {
        return (pixel & 0xFF) > 0xF0;
    };
    EXPECT_TRUE(anyPixel(*bar, bar->bounds(), isBright));
    item->setEnabled(false);
    EXPECT_FALSE(anyPixel(*bar, bar->bounds(), isBright));
    tapButton("Go");
    EXPECT_EQ(presses, 0);
    item->setEnabled(true);
    tapButton("Go");
    EXPECT_EQ(presses, 1);
    item->setTitle("Went");
    EXPECT_THAT(buttons(*bar), ElementsAre("Went"));
}

TEST_F(Bars, TheBackButtonHasThePreviousTitle) {
    const std::pair<std::string, std::string> cases[] = {
        {"Vistrel", "Vistrel"},
        {"", "Back"},
        {"http://a.very.long.address.example.com/with/a/path", "Back"}};
    for (const auto& [previous, button] : cases) {
        navigation().topViewController()->setTitle(previous);
        const auto next = std::make_shared<UIViewController>();
        next->setTitle("Next");
        push(next);
        UIView& bar = *navigation().navigationBar();
        EXPECT_THAT(buttons(bar), ElementsAre(button));
        EXPECT_THAT(labels(UIAccessibilityRole::Heading, bar), ElementsAre("Next"));
        act("button " + button + "; wait 1");
        EXPECT_THAT(labels(UIAccessibilityRole::Heading, bar), ElementsAre(previous));
        EXPECT_THAT(buttons(bar), IsEmpty());
    }
}

TEST_F(Bars, ALeftItemReplacesTheBackButton) {
    const auto item = entitled("Two");
    item->setLeftBarButtonItem(titled("Donate"));
    item->setRightBarButtonItem(titled("Done"));
    const auto bar = navigationBar({entitled("One"), item});
    EXPECT_THAT(buttons(*bar), UnorderedElementsAre("Donate", "Done"));
    EXPECT_GT(placeOfButton("Done").minX(), placeOfButton("Donate").maxX());
    item->setLeftBarButtonItem(nullptr);
    EXPECT_THAT(buttons(*bar), UnorderedElementsAre("One", "Done"));
    act("button One; wait 1");
    EXPECT_EQ(bar->topItem()->title(), "One");
}

TEST_F(Bars, ARightItemFadesInAndOut) {
    const auto item = entitled("Music");
    const auto bar = navigationBar({item});
    const auto spinner =
        std::make_shared<UIActivityIndicatorView>(UIActivityIndicatorViewStyle::White);
    spinner->startAnimating();
    const auto activity = UIBarButtonItem::withCustomView(spinner);
    for (int round = 0; round < 3; ++round) {
        item->setRightBarButtonItem(activity, true);
        EXPECT_EQ(spinner->superview(), bar.get());
        advance(0.1);
        EXPECT_GT(spinner->presentationState().alpha, 0);
        EXPECT_LT(spinner->presentationState().alpha, 1);
        advance(1);
        EXPECT_EQ(spinner->presentationState().alpha, 1);
        EXPECT_EQ(spinner->frame(), CGRectMake(295, 12, 20, 20));
        item->setRightBarButtonItem(nullptr, true);
        EXPECT_EQ(spinner->superview(), bar.get()) << "still fading";
        if (round == 1)
            continue; // back before it has faded
        advance(1);
        EXPECT_EQ(spinner->superview(), nullptr);
    }
}

TEST_F(Bars, ALongTitleEndsBeforeTheButtons) {
    const auto item = entitled(std::string(80, 'W'));
    item->setRightBarButtonItem(titled("Edit"));
    const auto bar = navigationBar({entitled("Vistrel"), item});
    const auto title = find(UIAccessibilityRole::Heading, item->title());
    ASSERT_NE(title, nullptr);
    EXPECT_GE(title->frame().minX(), placeOfButton("Vistrel").maxX());
    EXPECT_LE(title->frame().maxX(), placeOfButton("Edit").minX());
    item->setTitle("Short");
    pixelOf(*bar, 0, 0);
    EXPECT_NEAR(find(UIAccessibilityRole::Heading, "Short")->frame().midX(), 160, 1);
}

TEST_F(Bars, TheTintColoursTheBar) {
    const auto bar = std::make_shared<UINavigationBar>();
    bar->setTintColor(UIColor::colorWithRedGreenBlueAlpha(0.156F, 0.155F, 0.198F, 1));
    const auto dark = pixelOf(*bar, 160, 30);
    EXPECT_NEAR(static_cast<double>((dark >> 16) & 0xFF), 0.156 * 255, 8);
    EXPECT_NEAR(static_cast<double>(dark & 0xFF), 0.198 * 255, 8);
    bar->setTintColor(std::nullopt);
    EXPECT_GT(pixelOf(*bar, 160, 30) & 0xFF, 120u);
}

}
}
