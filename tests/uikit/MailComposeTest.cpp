#include "platform/foundation/NSError.h"
#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UITextField.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

struct Ending : MFMailComposeViewControllerDelegate {
    void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& composer,
                                                       MFMailComposeResult result,
                                                       const NSError* error) override {
        results.push_back(static_cast<int>(result));
        description = error ? error->localizedDescription() : "";
        composer.dismissModalViewControllerAnimated(true);
    }

    std::vector<int> results;
    std::string description;
};

class MailCompose : public support::ScreenTest {
protected:
    MailCompose() {
        window().addSubview(presenter_->view());
        compose();
    }
    void compose() {
        composer_ = std::make_shared<MFMailComposeViewController>();
        composer_->setMailComposeDelegate(ending_);
        composer_->setSubject("Vistrel Application Support");
        composer_->setToRecipients({"support@example.com"});
        composer_->setMessageBodyIsHTML("Please Describe:\n\n1.0", false);
        presenter_->presentModalViewController(composer_, true);
        advance(1);
        pixelOf(screen(), 0, 0);
    }
    void typeInto(const std::string& label, const std::string& text) {
        const auto field = find(UIAccessibilityRole::Field, label);
        ASSERT_NE(field, nullptr) << label;
        application().events().setFirstResponder(field);
        type(text);
    }
    bool isShown() { return presenter_->modalViewController() != nullptr; }

    std::shared_ptr<Ending> ending_ = std::make_shared<Ending>();
    std::shared_ptr<UIViewController> presenter_ = std::make_shared<UIViewController>();
    std::shared_ptr<MFMailComposeViewController> composer_;
};

TEST_F(MailCompose, SendsWhatWasWrittenAndEndsOnce) {
    typeInto("Cc", "\"Doe, Jane\" <jane@example.com>; two@example.com ,, ");
    typeInto("Bcc", "hidden@example.com");
    typeInto("Message", "Grüße. ");
    act("button Send; button Send; wait 2");
    EXPECT_THAT(ending_->results, ElementsAre(2));
    EXPECT_FALSE(isShown());
    ASSERT_EQ(desktop().sentMails().size(), 1u);
    const host::OutgoingMail& mail = desktop().sentMails().front();
    EXPECT_THAT(mail.to, ElementsAre("support@example.com"));
    EXPECT_THAT(mail.cc, ElementsAre("\"Doe, Jane\" <jane@example.com>", "two@example.com"));
    EXPECT_THAT(mail.bcc, ElementsAre("hidden@example.com"));
    EXPECT_EQ(mail.subject, "Vistrel Application Support");
    EXPECT_EQ(mail.body, "Grüße. Please Describe:\n\n1.0");
    EXPECT_FALSE(mail.isHTML);
    EXPECT_THAT(desktop().drafts(), IsEmpty());
}

TEST_F(MailCompose, AMailThatCannotBeSentIsSavedAsADraft) {
    desktop().setSendFailure(host::Failure{EACCES, "Wrong password."});
    typeInto("Message", "Dear support, ");
    act("button Send; key Escape");
    EXPECT_THAT(ending_->results, IsEmpty());
    display().setInFront(false);
    advance(2);
    EXPECT_THAT(desktop().notifications(), ElementsAre("Not Sent: Vistrel Application Support"));
    EXPECT_THAT(ending_->results, ElementsAre(3)) << "Cancel waits while a mail is on its way";
    EXPECT_EQ(ending_->description, "Wrong password.");
    ASSERT_EQ(desktop().drafts().size(), 1u);
    EXPECT_EQ(desktop().drafts().front().body, "Dear support, Please Describe:\n\n1.0");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(MailCompose, AMailThatCanNeitherBeSentNorSavedIsReported) {
    desktop().setMailFailure(host::Failure{ECONNREFUSED, "The server refused the connection."});
    act("button Send; wait 2");
    EXPECT_THAT(ending_->results, ElementsAre(3));
    EXPECT_EQ(ending_->description, "The server refused the connection.");
    EXPECT_FALSE(isShown());
    EXPECT_EQ(alertTitle(), "Failed to Save Draft");
    act("key Escape; wait 1");
}

TEST_F(MailCompose, CancelOffersToDeleteSaveOrContinueADraft) {
    // Without a choice nothing was written, and Cancel does not ask.
    const std::tuple<std::string, std::vector<int>, std::size_t, bool> cases[] = {
        {"", {0}, 0, false},
        {"Cancel", {}, 0, true},
        {"Save Draft", {1}, 1, false},
        {"Delete Draft", {0}, 0, false}};
    std::size_t before = 0;
    for (const auto& [choice, results, drafts, shown] : cases) {
        if (!isShown()) {
            ending_->results.clear();
            compose();
        }
        if (!choice.empty())
            typeInto("Message", "Written ");
        act("key Escape; wait 1");
        EXPECT_EQ(UIActionSheet::visibleSheet() != nullptr, !choice.empty());
        if (!choice.empty())
            act("button " + choice + "; wait 1");
        EXPECT_EQ(ending_->results, results) << choice;
        EXPECT_EQ(desktop().drafts().size() - before, drafts) << choice;
        EXPECT_EQ(isShown(), shown) << choice;
        before = desktop().drafts().size();
    }
}

TEST_F(MailCompose, AFailedDraftLeavesTheComposerOpen) {
    typeInto("Message", "Precious ");
    desktop().setMailFailure(host::Failure{ENOSPC, "No space left on device"});
    act("key Escape; wait 1; button Save Draft; wait 1");
    EXPECT_THAT(ending_->results, IsEmpty());
    act("key Escape; wait 1"); // the alert
    EXPECT_TRUE(isShown());
    desktop().setMailFailure(std::nullopt);
    act("button Send; wait 2");
    EXPECT_THAT(ending_->results, ElementsAre(2));
    EXPECT_EQ(desktop().sentMails().front().body, "Precious Please Describe:\n\n1.0");
}

TEST_F(MailCompose, AMailWithARecipientIsSentEvenIfItsScreenGoesAway) {
    composer_->setToRecipients({});
    act("button Send; wait 1");
    EXPECT_THAT(desktop().sentMails(), IsEmpty());
    typeInto("Bcc", "x@example.com");
    tapButton("Send");
    presenter_->dismissModalViewControllerAnimated(false);
    ending_.reset();
    composer_.reset();
    advance(2);
    EXPECT_EQ(desktop().sentMails().size(), 1u);
}

TEST_F(MailCompose, EnterMovesThroughTheRows) {
    typeInto("To", "");
    for (const char* label : {"Cc", "Bcc", "Subject", "Message"}) {
        press(UIKeyCode::Enter);
        EXPECT_EQ(application().events().firstResponder(), find(UIAccessibilityRole::Field, label))
            << label;
    }
}

}
}
