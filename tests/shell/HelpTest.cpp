#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UINavigationItem.h"
#include "shell/RootViewController.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

#include <utility>

namespace vistrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Titles = std::vector<std::string>;

class HelpTest : public support::ScreenTest {
protected:
    HelpTest() {
        auto& settings = deterministicHost().settings;
        settings["support/website-owner"] = "Ann Owner";
        settings["support/website-recipient"] = "web@example.com";
        settings["support/application-recipient"] = "app@example.com";
        settings["support/twitter-handle"] = "maker";
        settings["support/twitter-web-host"] = "social.example";
        settings["support/twitter-mobile-host"] = "m.social.example";
        deterministicHost().host.resourcePath = RESOURCES_FOLDER;
        Value::Dictionary info;
        info.set("CFBundleVersion", "1.0");
        preferences().setPropertyList(RESOURCES_FOLDER "/Info.plist", Value(std::move(info)));
        menu_ = std::make_shared<RootViewController>();
        push(menu_);
        settle();
    }
    ~HelpTest() override { menu_.reset(); }

    /// From the menu's bar through the sheet and the alerts, by the buttons' titles.
    void choose(const Titles& titles) {
        menu_->navigationItem().leftBarButtonItem()->perform();
        settle();
        for (const std::string& title : titles) {
            EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, title)) << title;
            settle();
        }
    }
    static Titles alertButtons() {
        Titles titles;
        const auto alert = UIAlertView::visibleAlerts().back();
        for (int index = 0; index < alert->numberOfButtons(); ++index)
            titles.push_back(alert->buttonTitleAtIndex(index));
        return titles;
    }
    bool isComposing() { return navigation().modalViewController() != nullptr; }
    bool isQuiet() {
        return alertCount() == 0 && !UIActionSheet::visibleSheet() && !isComposing() &&
               desktop().openedURLs().empty();
    }

    std::shared_ptr<RootViewController> menu_;
};

constexpr const char* kMailBody = "Please Describe Your Problem Here:\n\n\nVistrel Version: 1.0\n\n"
                                  "Machine1,1-12.5:\n0123456789abcdef0123456789abcdef01234567";

TEST_F(HelpTest, TheHelpMenuOffersThreeTextsAndCancel) {
    choose({});
    const auto sheet = UIActionSheet::visibleSheet();
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->title(), "");
    Titles titles;
    for (int index = 0; index < sheet->numberOfButtons(); ++index)
        titles.push_back(sheet->buttonTitleAtIndex(index));
    EXPECT_THAT(titles, ElementsAre("How To Use", "FAQ", "Support", "Cancel"));
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Cancel"));
    settle();
    EXPECT_TRUE(isQuiet());
}

TEST_F(HelpTest, EachChoiceShowsItsAlert) {
    struct Case {
        Titles path;
        const char* title;
        Titles buttons;
        int rows;
    };
    const Case cases[] = {
        {{"How To Use"}, "How To Use:", {"Got it", "FAQ"}, 0},
        {{"FAQ"}, "FAQ", {"Close"}, 0},
        {{"How To Use", "FAQ"}, "FAQ", {"Close"}, 0},
        {{"Support"}, "Support", {"Cancel", "Application Support", "Website Support"}, 3},
        {{"Support", "Application Support"},
         "Application Support",
         {"Cancel", "Twitter", "Email"},
         0},
    };
    for (const Case& each : cases) {
        choose(each.path);
        ASSERT_EQ(alertCount(), 1) << each.path.back();
        EXPECT_EQ(alertTitle(), each.title);
        EXPECT_EQ(alertButtons(), each.buttons);
        EXPECT_EQ(UIAlertView::visibleAlerts().back()->numberOfRows(), each.rows) << each.title;
        EXPECT_TRUE(tapAlertButton(each.buttons.front()));
        settle();
        EXPECT_TRUE(isQuiet()) << each.title;
    }
}

TEST_F(HelpTest, OnlyTheFAQOfTheMenuSpeaksOfTheSiteBeingDown) {
    choose({"How To Use", "FAQ"});
    const std::string shortText = alertMessage();
    EXPECT_TRUE(tapAlertButton("Close"));
    choose({"FAQ"});
    const std::string longText = alertMessage();
    EXPECT_THAT(shortText, StartsWith("How do I Watch Videos I have downloaded?\n\nGo the Main"));
    EXPECT_THAT(shortText,
                HasSubstr("in contact with the Website Owner, Ann Owner.\nHis email is "
                          "web@example.com.\n\nIf you still have anymore questions after reading "
                          "this please feel free to contact me."));
    EXPECT_THAT(longText, StartsWith("Nothing will load, all I see is a white screen or \"Your "
                                     "Account has been suspended\" the Application won't work!"));
    EXPECT_THAT(longText, HasSubstr("NOT the application.\n\nHow do I Watch"));
    EXPECT_EQ(longText.substr(longText.find("How do I Watch")), shortText);
}

TEST_F(HelpTest, TheSupportTextNamesTheHandle) {
    choose({"Support", "Application Support"});
    EXPECT_EQ(alertMessage(),
              "For fast assistance I recommend you send me a message on Twitter "
              "(@maker) as I check it far more freqently. However please still feel "
              "free to send me an email if you would prefer");
}

TEST_F(HelpTest, ASupportMailIsWrittenInTheComposer) {
    struct Case {
        Titles path;
        const char* recipient;
        const char* subject;
    };
    const Case cases[] = {
        {{"Support", "Website Support"}, "web@example.com", "Vistrel Website Support"},
        {{"Support", "Application Support", "Email"},
         "app@example.com",
         "Vistrel Application Support"},
    };
    for (const Case& each : cases) {
        choose(each.path);
        ASSERT_TRUE(isComposing()) << each.subject;
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Send"));
        settle();
        ASSERT_FALSE(desktop().sentMails().empty());
        const host::OutgoingMail& mail = desktop().sentMails().back();
        EXPECT_THAT(mail.to, ElementsAre(each.recipient));
        EXPECT_EQ(mail.subject, each.subject);
        EXPECT_EQ(mail.body, kMailBody);
        EXPECT_FALSE(mail.isHTML);
        EXPECT_FALSE(isComposing());
        EXPECT_EQ(logLines().back(), "Email: sent");
    }
    EXPECT_THAT(desktop().openedURLs(), IsEmpty());
}

TEST_F(HelpTest, ATextOfTheComposersEndIsLoggedAndTheComposerCloses) {
    const std::pair<int, const char*> cases[] = {{0, "Email: canceled"}, {1, "Email: saved"},
                                                 {2, "Email: sent"},     {3, "Email: failed"},
                                                 {4, "Email: not sent"}, {-1, "Email: not sent"}};
    for (const auto& [result, line] : cases) {
        menu_->displayComposerSheetWebsiteSupport();
        settle();
        const auto composer = std::dynamic_pointer_cast<MFMailComposeViewController>(
            navigation().modalViewController());
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

TEST_F(HelpTest, TheFirstClientThatIsInstalledShowsTheProfile) {
    struct Case {
        std::vector<const char*> installed;
        const char* opened;
    };
    const Case cases[] = {
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
    for (const Case& each : cases) {
        desktop().schemes() = {"http", "https"};
        for (const char* scheme : each.installed)
            desktop().schemes().insert(scheme);
        const auto before = desktop().openedURLs().size();
        choose({"Support", "Application Support", "Twitter"});
        ASSERT_EQ(desktop().openedURLs().size(), before + 1) << each.opened;
        EXPECT_EQ(desktop().openedURLs().back(), each.opened);
    }
}

}
}
