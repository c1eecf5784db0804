#include "platform/uikit/MFMailComposeViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/Weakly.h"
#include "platform/host/Desktop.h"
#include "platform/host/Host.h"
#include "platform/uikit/MFMailComposeForm.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UIProgressHUD.h"

#include <cmath>
#include <utility>

namespace vistrel {

namespace {

using Row = MFMailComposeForm::Row;

void tellDraftIsLost(const host::Failure& failure) {
    UIAlertView::withTitle(NSLocalizedString("Failed to Save Draft"),
                           NSLocalizedString(failure.message), {}, NSLocalizedString("OK"))
        ->show();
}

}

bool MFMailComposeViewController::canSendMail() {
    return host::current().desktop->canSendMail();
}

MFMailComposeViewController::MFMailComposeViewController()
    : bar_(std::make_shared<UINavigationBar>())
    , item_(std::make_shared<UINavigationItem>(NSLocalizedString("New Message")))
    , form_(std::make_shared<MFMailComposeForm>(CGRectMake(0, kUIBarHeight, 320, 416))) {}

MFMailComposeViewController::~MFMailComposeViewController() = default;

void MFMailComposeViewController::setMailComposeDelegate(
    std::weak_ptr<MFMailComposeViewControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void MFMailComposeViewController::setSubject(const std::string& subject) {
    form_->setText(Row::Subject, subject);
}

void MFMailComposeViewController::setToRecipients(const std::vector<std::string>& recipients) {
    form_->setAddresses(Row::To, recipients);
    updateSendButton();
}

void MFMailComposeViewController::setCcRecipients(const std::vector<std::string>& recipients) {
    form_->setAddresses(Row::Cc, recipients);
    updateSendButton();
}

void MFMailComposeViewController::setBccRecipients(const std::vector<std::string>& recipients) {
    form_->setAddresses(Row::Bcc, recipients);
    updateSendButton();
}

void MFMailComposeViewController::setMessageBodyIsHTML(const std::string& body, bool isHTML) {
    form_->setBody(body);
    isHTML_ = isHTML;
}

void MFMailComposeViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    const auto& root = view();
    using Composer = MFMailComposeViewController;
    item_->setLeftBarButtonItem(UIBarButtonItem::withBarButtonSystemItem(
        UIBarButtonSystemItem::Cancel, weakly(this, &Composer::cancel)));
    item_->setRightBarButtonItem(UIBarButtonItem::withTitle(
        NSLocalizedString("Send"), UIBarButtonItemStyle::Done, weakly(this, &Composer::send)));
    bar_->setFrame(CGRectMake(0, 0, root->bounds().size.width, kUIBarHeight));
    bar_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    bar_->setItems({item_}, false);
    form_->setFrame(CGRectMake(0, kUIBarHeight, root->bounds().size.width,
                               root->bounds().size.height - kUIBarHeight));
    form_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    form_->setChangeHandler(weakly(this, &Composer::updateSendButton));
    root->addSubview(form_);
    root->addSubview(bar_);
    updateSendButton();
}

host::OutgoingMail MFMailComposeViewController::mail() const {
    host::OutgoingMail mail;
    mail.to = form_->addresses(Row::To);
    mail.cc = form_->addresses(Row::Cc);
    mail.bcc = form_->addresses(Row::Bcc);
    mail.subject = form_->text(Row::Subject);
    mail.body = form_->body();
    mail.isHTML = isHTML_;
    return mail;
}

void MFMailComposeViewController::updateSendButton() {
    const auto& button = item_->rightBarButtonItem();
    if (!button)
        return;
    const host::OutgoingMail current = mail();
    const bool hasRecipient = !current.to.empty() || !current.cc.empty() || !current.bcc.empty();
    button->setEnabled(hasRecipient && !sending_ && !finished_);
    item_->leftBarButtonItem()->setEnabled(!sending_ && !finished_);
}

bool MFMailComposeViewController::escapePressed() {
    cancel();
    return true;
}

void MFMailComposeViewController::cancel() {
    if (sending_ || finished_)
        return;
    if (!form_->isEdited()) {
        finish(MFMailComposeResult::Cancelled, nullptr);
        return;
    }
    UIActionSheet::withTitle({}, weakReference<UIActionSheetDelegate>(this),
                             NSLocalizedString("Cancel"), NSLocalizedString("Delete Draft"),
                             {NSLocalizedString("Save Draft")})
        ->showInView(*view());
}

void MFMailComposeViewController::actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet,
                                                                  int buttonIndex) {
    if (buttonIndex == actionSheet.destructiveButtonIndex())
        finish(MFMailComposeResult::Cancelled, nullptr);
    else if (buttonIndex != actionSheet.cancelButtonIndex())
        keepDraft();
}

void MFMailComposeViewController::keepDraft() {
    const host::Status kept = host::current().desktop->saveDraft(mail());
    if (kept.ok())
        finish(MFMailComposeResult::Saved, nullptr);
    else
        tellDraftIsLost(kept.failure()); // the composer stays, and the text with it
}

void MFMailComposeViewController::send() {
    if (sending_ || finished_)
        return;
    sending_ = true;
    updateSendButton();
    hud_ = UIProgressHUD::withWindow(*view());
    showProgress(0);
    hud_->show(true);
    // The screen stays alive until the mail is sent, even if everybody else releases it.
    const auto self = std::static_pointer_cast<MFMailComposeViewController>(shared_from_this());
    host::current().desktop->sendMail(
        mail(), [self](double fraction) { self->showProgress(fraction); },
        [self](const host::Status& outcome) {
            self->sent(outcome.ok() ? nullptr : &outcome.failure());
        });
}

void MFMailComposeViewController::showProgress(double fraction) {
    const auto percent = std::lround(std::min(1.0, std::max(0.0, fraction)) * 100);
    std::string text = NSLocalizedString("Sending");
    if (percent > 0)
        text += " " + std::to_string(percent) + "%";
    hud_->setText(text);
}

void MFMailComposeViewController::sent(const host::Failure* failure) {
    sending_ = false;
    hud_->show(false);
    UIApplication::sharedApplication().presentLocalNotification(
        NSLocalizedString(failure ? "Not Sent" : "Sent"), mail().subject);
    if (!failure) {
        finish(MFMailComposeResult::Sent, nullptr);
        return;
    }
    const host::Status kept = host::current().desktop->saveDraft(mail());
    finish(MFMailComposeResult::Failed, failure);
    std::string reason = NSLocalizedString(failure->message);
    if (kept.ok())
        reason += "\n" + NSLocalizedString("The mail has been saved as a draft.");
    UIAlertView::withTitle(NSLocalizedString("Not Sent"), reason, {}, NSLocalizedString("OK"))
        ->show();
    if (!kept.ok())
        tellDraftIsLost(kept.failure());
}

void MFMailComposeViewController::finish(MFMailComposeResult result, const host::Failure* failure) {
    if (std::exchange(finished_, true))
        return;
    updateSendButton();
    const auto self = weak_from_this().lock();
    const auto delegate = delegate_.lock();
    if (!delegate)
        return;
    if (failure) {
        const NSError error(NSPOSIXErrorDomain, failure->code, failure->message);
        delegate->mailComposeControllerDidFinishWithResultError(*this, result, &error);
    } else {
        delegate->mailComposeControllerDidFinishWithResultError(*this, result, nullptr);
    }
}

}
