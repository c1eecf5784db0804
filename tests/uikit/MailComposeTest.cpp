#include "platform/foundation/NSError.h"
#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UITextField.h"
#include "tests/support/Heard.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

struct Ending : MFMailComposeViewControllerDelegate {
    void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& composer,
                                                       MFMailComposeResult result,
                                                       const NSError* error) override {
        heard(std::to_string(static_cast<int>(result)) +
              (error ? " " + error->localizedDescription() : ""));
        composer.dismissModalViewControllerAnimated(true);
    }

    support::Heard heard; ///< "3 Wrong password."
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
    /// How the composer ended or that it is open, and how many mails and drafts there are: "2, 1
    /// sent", "open, 1 drafts".
    std::string outcome() {
        support::Heard text;
        if (const std::string ending = ending_->heard.take(); !ending.empty())
            text(ending);
        if (presenter_->modalViewController())
            text("open");
        if (const auto mails = desktop().sentMails().size(); mails > 0)
            text(std::to_string(mails) + " sent");
        if (const auto drafts = desktop().drafts().size(); drafts > 0)
            text(std::to_string(drafts) + " drafts");
        return text.take();
    }

    std::shared_ptr<Ending> ending_ = std::make_shared<Ending>();
    std::shared_ptr<UIViewController> presenter_ = std::make_shared<UIViewController>();
    std::shared_ptr<MFMailComposeViewController> composer_;
};

TEST_F(MailCompose, SendsWhatWasWrittenAndEndsOnce) {
    typeInto("Cc", "\"Doe, Jane\" <jane@example.com>; two@example.com ,, ");
    typeInto("Bcc", "hidden@example.com");
    typeInto("Message", "Grüße. ");
    act("button Send; button Send; wait 2");
    ASSERT_EQ(outcome(), "2, 1 sent");
    const host::OutgoingMail& mail = desktop().sentMails().front();
    EXPECT_THAT(mail.to, ElementsAre("support@example.com"));
    EXPECT_THAT(mail.cc, ElementsAre("\"Doe, Jane\" <jane@example.com>", "two@example.com"));
    EXPECT_THAT(mail.bcc, ElementsAre("hidden@example.com"));
    EXPECT_EQ(mail.subject, "Vistrel Application Support");
    EXPECT_EQ(mail.body, "Grüße. Please Describe:\n\n1.0");
    EXPECT_FALSE(mail.isHTML);
}

TEST_F(MailCompose, AMailThatCannotBeSentIsSavedAsADraft) {
    desktop().setSendFailure(host::Failure{EACCES, "Wrong password."});
    typeInto("Message", "Dear support, ");
    act("button Send; key Escape");
    EXPECT_EQ(outcome(), "open") << "Cancel waits while a mail is on its way";
    display().setInFront(false);
    advance(2);
    EXPECT_THAT(desktop().notifications(), ElementsAre("Not Sent: Vistrel Application Support"));
    ASSERT_EQ(outcome(), "3 Wrong password., 1 drafts");
    EXPECT_EQ(desktop().drafts().front().body, "Dear support, Please Describe:\n\n1.0");
    EXPECT_EQ(alertTitle(), "Not Sent");
    EXPECT_EQ(alertMessage(), "Wrong password.\nThe mail has been saved as a draft.");
    act("key Escape; wait 1");
}

TEST_F(MailCompose, AMailThatCanNeitherBeSentNorSavedIsReported) {
    desktop().setMailFailure(host::Failure{ECONNREFUSED, "The server refused the connection."});
    act("button Send; wait 2");
    EXPECT_EQ(outcome(), "3 The server refused the connection.");
    EXPECT_EQ(alertTitle(), "Failed to Save Draft");
    act("key Escape; wait 1");
    EXPECT_EQ(alertMessage(), "The server refused the connection.");
    act("key Escape; wait 1");
}

TEST_F(MailCompose, CancelOffersToDeleteSaveOrContinueADraft) {
    EXPECT_EQ(outcome(), "open");
    act("key Escape; wait 1");
    EXPECT_EQ(outcome(), "0") << "nothing was written";
    compose();
    for (const auto& [choice, expected] : {std::pair{"Cancel", "open"},
                                           {"Save Draft", "1, 1 drafts"},
                                           {"Delete Draft", "0, 1 drafts"}}) {
        if (outcome() != "open")
            compose();
        typeInto("Message", "Written ");
        act("key Escape; wait 1");
        EXPECT_TRUE(UIActionSheet::visibleSheet());
        act(std::string("button ") + choice + "; wait 1");
        EXPECT_EQ(outcome(), expected) << choice;
    }
}

TEST_F(MailCompose, AFailedDraftLeavesTheComposerOpen) {
    typeInto("Message", "Precious ");
    desktop().setMailFailure(host::Failure{ENOSPC, "No space left on device"});
    act("key Escape; wait 1; button Save Draft; wait 1");
    act("key Escape; wait 1"); // the alert
    EXPECT_EQ(outcome(), "open");
    desktop().setMailFailure(std::nullopt);
    act("button Send; wait 2");
    ASSERT_EQ(outcome(), "2, 1 sent");
    EXPECT_EQ(desktop().sentMails().front().body, "Precious Please Describe:\n\n1.0");
}

TEST_F(MailCompose, AMailWithARecipientIsSentEvenIfItsScreenGoesAway) {
    composer_->setToRecipients({});
    act("button Send; wait 1");
    EXPECT_EQ(outcome(), "open");
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
