#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UIToolbar.h"
#include "platform/uikit/UIWebView.h"
#include "tests/web/WebBrowserTest.h"
#include "web/UIToolbarAdditions.h"

namespace vistrel {
namespace {

TEST_F(WebBrowserTest, AFormIsSentAgainOnlyWhenTheUserAgrees) {
    const auto browser = openPage();
    page().submitForm("http://site.example/form");
    page().finishLoad();
    const auto resend = [&] {
        return page().navigate(
            {"http://site.example/form", "POST", {}, host::WebNavigationType::FormResubmitted});
    };
    browser->refreshAction();
    EXPECT_FALSE(resend());
    EXPECT_EQ(alertTitle(), "Send Again?");
    ASSERT_TRUE(tapAlertButton("Cancel"));
    EXPECT_EQ(countOfCalls("reload"), 1);
    EXPECT_FALSE(resend());
    ASSERT_TRUE(tapAlertButton("Send"));
    EXPECT_EQ(countOfCalls("reload"), 2);
    EXPECT_TRUE(resend());
    EXPECT_FALSE(resend()) << "agreed to once";
    settle();
    ASSERT_TRUE(tapAlertButton("Cancel"));
    settle();
    // The page's own move, without a button.
    EXPECT_FALSE(page().navigate(
        {"http://site.example/form", "POST", {}, host::WebNavigationType::BackForward}));
    ASSERT_TRUE(tapAlertButton("Send"));
    EXPECT_EQ(countOfCalls("goBack"), 1);
    EXPECT_EQ(countOfCalls("reload"), 2);
    page().finishLoad(); // of another page: the agreement is over
    EXPECT_FALSE(resend());
    settle();
}

TEST_F(WebBrowserTest, OneLoginServesThePageAndWhatComesAfterItAtThatOriginOnly) {
    auto& storage = NSURLCredentialStorage::sharedCredentialStorage();
    openPage();
    const host::WebChallenge challenge{"http://site.example", "Members", true};
    page().challenge(challenge);
    page().challenge(challenge);
    page().challenge({"http://other.example", "Members", true});
    ASSERT_EQ(alertCount(), 2);
    ASSERT_TRUE(tapAlertButton("Cancel"));
    EXPECT_EQ(alertTitle(), "Log In");
    const auto alert = UIAlertView::visibleAlerts().back();
    act("type Ann; key Enter; type \u00fc; type x; type y; key Backspace");
    EXPECT_EQ(alert->textFieldAtIndex(1)->accessibilityElement().value, "\u2022\u2022");
    act("key Enter; wait 1");
    EXPECT_EQ(alertCount(), 0);
    EXPECT_THAT(page().credentials(), ElementsAre("none", "Ann:\u00fcx", "Ann:\u00fcx"));

    network().forgetRequests();
    site("/a.mp4");
    network().at("http://other.example/b").type("text/html").body("x");
    navigate("http://other.example/b");
    navigate("http://site.example/a.mp4");
    advance(1);
    ASSERT_TRUE(top<FileDownloadViewController>());
    tapButton("Download");
    advance(1);
    for (const auto& request : network().requests())
        EXPECT_EQ(support::ScriptedNetwork::header(request, "Authorization").empty(),
                  request.url == "http://other.example/b")
            << request.url;
    EXPECT_EQ(network().requests().size(), 3U);
    page().challenge(challenge);
    EXPECT_EQ(page().credentials().back(), "Ann:\u00fcx") << "known, no second dialog";
    const int alerts = alertCount();
    page().challenge({"http://site.example", "Members", true, true});
    EXPECT_EQ(alertCount(), alerts + 1) << "what was given is wrong";
    storage.removeAll();
}

TEST_F(WebBrowserTest, PagesThatCannotBeShownSaySoInTheirPlace) {
    const struct {
        host::WebError error;
        const char* says;
        bool offersAgain;
    } cases[] = {
        {{host::WebError::kCertificate, "bad", kStart}, "certificate is not valid", false},
        {{host::WebError::kProcessEnded, "gone", kStart}, "The Page Has Stopped", true},
        {{-1004, "no connection", kStart}, "", false},
        {{102, "interrupted", kStart}, "", false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.error.message);
        openPage();
        page().startLoad();
        page().failLoad(each.error);
        const bool shows = *each.says != '\0';
        EXPECT_EQ(countOfCalls(std::string("showNotice ") + kStart), shows ? 1 : 0);
        EXPECT_NE(page().loadedHTML().find(each.says), std::string::npos);
        EXPECT_EQ(page().loadedHTML().find(std::string("href=\"") + kStart) != std::string::npos,
                  each.offersAgain);
        EXPECT_EQ(alertCount(), 0);
        backToRoot();
    }
}

TEST_F(WebBrowserTest, RefreshAndStopChangePlacesAndTheSpinnerComesAndGoes) {
    network().at(kStart).type("text/html").body("<p>").after(0.5);
    const auto browser = open(kStart);
    const auto item = [&] {
        return itemWithTag(*browser->toolbar(), 3);
    };
    const auto refresh = item();
    EXPECT_EQ(refresh->systemItem(), UIBarButtonSystemItem::Refresh);
    advance(1);
    ASSERT_TRUE(page().isLoading());
    EXPECT_EQ(item()->systemItem(), UIBarButtonSystemItem::Stop);
    ASSERT_TRUE(browser->navigationItem().rightBarButtonItem());

    application().setNetworkActivityIndicatorVisible(true);
    page().failLoad({1, "The page is gone", kStart});
    EXPECT_EQ(item(), refresh);
    EXPECT_FALSE(browser->navigationItem().rightBarButtonItem());
    EXPECT_FALSE(application().isNetworkActivityIndicatorVisible());
    EXPECT_EQ(logLines().back(), "The page is gone");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(WebBrowserTest, AForeignRightItemIsLeftAlone) {
    const auto browser = openPage();
    const auto other = UIBarButtonItem::withTitle("Mine", UIBarButtonItemStyle::Plain, {});
    browser->navigationItem().setRightBarButtonItem(other);
    follow("/next");
    page().finishLoad();
    EXPECT_EQ(browser->navigationItem().rightBarButtonItem(), other);
}

TEST_F(WebBrowserTest, ShortcutsZoomReloadAndAskForAnAddress) {
    const auto browser = openPage();
    const std::pair<const char*, double> zooms[] = {
        {"+", 1.2}, {"=", 1.44}, {"-", 1.2}, {"0", 1}, {"-", 1 / 1.2}};
    const auto send = [this](const UIKey& key) {
        application().events().sendKey(key);
    };
    const auto control = [&](const char* text) {
        send({.code = UIKeyCode::Character, .text = text, .control = true});
    };
    for (const auto& [key, zoom] : zooms) {
        control(key);
        EXPECT_NEAR(page().zoom(), zoom, 1e-9) << key;
    }
    for (int i = 0; i < 20; ++i)
        control("+");
    EXPECT_EQ(page().zoom(), 3);
    press(UIKeyCode::F5);
    EXPECT_EQ(countOfCalls("reload"), 1);
    for (const auto& [typed, opened] :
         {std::pair{" other.example/?u=http://a/ ", "load http://other.example/?u=http://a/"},
          std::pair{"http://site.example/\u00fc", "load http://site.example/%C3%BC"}}) {
        control("l");
        settle();
        EXPECT_EQ(alertTitle(), "Go to Address");
        type(typed);
        act("key Enter; wait 1");
        EXPECT_EQ(page().calls().back(), opened);
    }
    control("l");
    settle();
    type("ftp://site.example/");
    act("key Enter; wait 1");
    EXPECT_EQ(alert(), "Go to Address | This is not the address of a web page.");
    EXPECT_EQ(UIAlertView::visibleAlerts().back()->textFieldAtIndex(0)->text(),
              "ftp://site.example/");
    ASSERT_TRUE(tapAlertButton("Cancel"));
    settle();
    send({.code = UIKeyCode::Left, .text = {}, .alt = true});
    EXPECT_EQ(countOfCalls("goBack"), 1);
}

TEST_F(WebBrowserTest, BackAndForwardFollowTheHistory) {
    const auto browser = openPage();
    const auto enabled = [&] {
        const auto item = [&](int tag) {
            return itemWithTag(*browser->toolbar(), tag);
        };
        return std::pair(item(2)->isEnabled(), item(1)->isEnabled());
    };
    const auto arrives = [&] {
        turn();
        page().finishLoad();
        return enabled();
    };
    EXPECT_EQ(enabled(), std::pair(false, false));
    follow("/next");
    EXPECT_EQ(arrives(), std::pair(true, false));
    browser->backAction();
    EXPECT_EQ(arrives(), std::pair(false, true));
    browser->forwardAction();
    EXPECT_EQ(arrives(), std::pair(true, false));
}

TEST_F(WebBrowserTest, PageAndToolbarShareTheSpaceUnderTheBar) {
    network().at(kStart).type("text/html").body("<p>");
    const auto browser = open(kStart);
    EXPECT_EQ(browser->webView()->frame(), CGRectMake(0, 0, 320, 372));
    EXPECT_EQ(browser->toolbar()->frame(), CGRectMake(0, 372, 320, 44));
    EXPECT_EQ(browser->toolbar()->items().size(), 7U);
}

}
}
