#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UINavigationItem.h"
#include "shell/RootViewController.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

using Titles = std::vector<std::string>;

class HelpTest : public support::ScreenTest {
protected:
    HelpTest() {
        deterministicHost().settings = {{"support/website-owner", "Ann Owner"},
                                        {"support/website-recipient", "web@example.com"},
                                        {"support/application-recipient", "app@example.com"},
                                        {"support/twitter-handle", "maker"},
                                        {"support/twitter-web-host", "social.example"},
                                        {"support/twitter-mobile-host", "m.social.example"}};
        deterministicHost().host.resourcePath = RESOURCES_FOLDER;
        preferences().setPropertyList(RESOURCES_FOLDER "/Info.plist",
                                      Value(Value::Dictionary{{"CFBundleVersion", "1.0"}}));
        menu_ = show<RootViewController>();
    }

    /// From the menu's bar through the sheet and the alerts, by the buttons' titles.
    void choose(const Titles& titles) {
        menu_->navigationItem().leftBarButtonItem()->perform();
        settle();
        for (const std::string& title : titles)
            EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, title)) << title;
    }
    bool isComposing() { return presented() != nullptr; }

    std::shared_ptr<RootViewController> menu_;
};

constexpr const char* kMailBody = "Please Describe Your Problem Here:\n\n\nVistrel Version: 1.0\n\n"
                                  "Machine1,1-12.5:\n0123456789abcdef0123456789abcdef01234567";

TEST_F(HelpTest, EachChoiceShowsItsSheetOrAlertAndItsCloseButtonClosesIt) {
    const std::tuple<Titles, const char*, Titles, std::string> cases[] = {
        {{}, "", {"How To Use", "FAQ", "Support", "Cancel"}, "Cancel"},
        {{"How To Use"}, "How To Use:", {"Got it", "FAQ"}, "Got it"},
        {{"FAQ"}, "FAQ", {"Close"}, "Close"},
        {{"How To Use", "FAQ"}, "FAQ", {"Close"}, "Close"},
        {{"Support"}, "Support", {"Cancel", "Application Support", "Website Support"}, "Cancel"},
        {{"Support", "Application Support"},
         "Application Support",
         {"Cancel", "Twitter", "Email"},
         "Cancel"},
    };
    for (const auto& [path, title, buttons, close] : cases) {
        SCOPED_TRACE(title);
        choose(path);
        EXPECT_EQ(alertTitle(), title);
        EXPECT_EQ(labels(UIAccessibilityRole::Button, *application().frontWindow()), buttons);
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, close));
        EXPECT_EQ(alertCount(), 0);
        EXPECT_FALSE(UIActionSheet::visibleSheet() || isComposing());
        EXPECT_THAT(desktop().openedURLs(), IsEmpty());
    }
}

TEST_F(HelpTest, TheTextsNameTheSiteItsOwnerAndTheHandle) {
    choose({"How To Use", "FAQ"});
    const std::string shortText = alertMessage();
    EXPECT_TRUE(tapAlertButton("Close"));
    choose({"FAQ"});
    const std::string longText = alertMessage();
    EXPECT_THAT(shortText, StartsWith("How do I Watch Videos I have downloaded?\n\n"));
    EXPECT_THAT(shortText, HasSubstr("Ann Owner.\nHis email is web@example.com.\n\n"));
    EXPECT_THAT(longText, StartsWith("Nothing will load, all I see is a white screen"));
    EXPECT_TRUE(longText.ends_with("NOT the application.\n\n" + shortText));
    EXPECT_TRUE(tapAlertButton("Close"));
    choose({"Support", "Application Support"});
    EXPECT_THAT(alertMessage(), HasSubstr("on Twitter (@maker) as"));
}

TEST_F(HelpTest, ASupportMailIsWrittenInTheComposer) {
    const std::tuple<Titles, const char*, const char*> cases[] = {
        {{"Support", "Website Support"}, "web@example.com", "Vistrel Website Support"},
        {{"Support", "Application Support", "Email"},
         "app@example.com",
         "Vistrel Application Support"},
    };
    for (const auto& [path, recipient, subject] : cases) {
        choose(path);
        ASSERT_TRUE(isComposing()) << subject;
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Send"));
        ASSERT_FALSE(desktop().sentMails().empty());
        const host::OutgoingMail& mail = desktop().sentMails().back();
        EXPECT_THAT(mail.to, ElementsAre(recipient));
        EXPECT_EQ(mail.subject, subject);
        EXPECT_EQ(mail.body, kMailBody);
        EXPECT_FALSE(mail.isHTML);
        EXPECT_FALSE(isComposing());
        EXPECT_EQ(logLines().back(), "Email: sent");
    }
    EXPECT_THAT(desktop().openedURLs(), IsEmpty());
}

TEST_F(HelpTest, TheComposersResultIsLoggedAndTheComposerCloses) {
    const std::pair<int, const char*> cases[] = {{0, "Email: canceled"}, {1, "Email: saved"},
                                                 {2, "Email: sent"},     {3, "Email: failed"},
                                                 {4, "Email: not sent"}, {-1, "Email: not sent"}};
    for (const auto& [result, line] : cases) {
        menu_->displayComposerSheetWebsiteSupport();
        settle();
        const auto composer = presented<MFMailComposeViewController>();
        ASSERT_TRUE(composer);
        menu_->mailComposeControllerDidFinishWithResultError(
            *composer, static_cast<MFMailComposeResult>(result), nullptr);
        settle();
        EXPECT_EQ(logLines().back(), line);
        EXPECT_FALSE(isComposing());
    }
}

TEST_F(HelpTest, WithoutAnAccountTheMailGoesToTheMailProgram) {
    desktop().setCanSendMail(false);
    choose({"Support", "Website Support"});
    choose({"Support", "Application Support", "Email"});
    EXPECT_FALSE(isComposing());
    const std::string body =
        "&body=Please%20Describe%20Your%20Problem%20Here%3A%0D%0A%0D%0A%0D%0AVistrel%20Version%3A"
        "%201.0%0D%0A%0D%0AMachine1%2C1-12.5%3A%0D%0A0123456789abcdef0123456789abcdef01234567";
    EXPECT_THAT(
        desktop().openedURLs(),
        ElementsAre("mailto:web@example.com?subject=Vistrel%20Website%20Support" + body,
                    "mailto:app@example.com?subject=Vistrel%20Application%20Support" + body));
}

TEST_F(HelpTest, TheFirstInstalledClientShowsTheProfile) {
    const std::pair<std::set<std::string>, const char*> cases[] = {
        {{"icebird", "x-birdfeed"}, "x-birdfeed://user?screen_name=maker"},
        {{"tweetie", "echofon"}, "tweetie://user?screen_name=maker"},
        {{"twitterrific"}, "twitterrific://account/maker"},
        {{"twit"}, "twit:///user?screen_name=maker"},
        {{"icebird", "fluttr"}, "icebird://user?screen_name=maker"},
        {{"fluttr"}, "fluttr://user/maker"},
        {{"tweetings", "simplytweet"}, "simplytweet:?link=http://social.example/maker"},
        {{"tweetings", "echofon"}, "tweetings:///user?screen_name=maker"},
        {{"echofon"}, "echofon:///user_timeline?maker"},
        {{}, "http://m.social.example/maker"},
    };
    std::vector<std::string> expected;
    for (const auto& [installed, opened] : cases) {
        desktop().schemes() = installed;
        desktop().schemes().insert("http");
        choose({"Support", "Application Support", "Twitter"});
        expected.emplace_back(opened);
    }
    EXPECT_EQ(desktop().openedURLs(), expected);
    desktop().schemes().clear();
    choose({"Support", "Application Support", "Twitter"});
    EXPECT_EQ(logLines().back(), "No program is known that opens http addresses");
}

}
}
