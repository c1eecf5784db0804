#pragma once
#include "platform/uikit/MFMailComposeViewControllerDelegate.h"
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class MFMailComposeForm;
class UINavigationBar;
class UIProgressHUD;
namespace host {
struct Failure;
struct OutgoingMail;
}

/// Composes one mail: presented modally, filled in by the caller, finished by the user with Cancel
/// (which asks what to do with the draft) or Send. It reports the result to its delegate once; the
/// delegate dismisses it. A mail that could not be sent is kept as a draft.
class MFMailComposeViewController : public UIViewController, public UIActionSheetDelegate {
public:
    /// Whether an outgoing account is configured.
    static bool canSendMail();

    MFMailComposeViewController();
    ~MFMailComposeViewController() override;

    void setMailComposeDelegate(std::weak_ptr<MFMailComposeViewControllerDelegate> delegate);
    void setSubject(const std::string& subject);
    void setToRecipients(const std::vector<std::string>& recipients);
    void setCcRecipients(const std::vector<std::string>& recipients);
    void setBccRecipients(const std::vector<std::string>& recipients);
    void setMessageBodyIsHTML(const std::string& body, bool isHTML);
    UINavigationBar& navigationBar() { return *bar_; }

    void viewDidLoad() override;
    bool escapePressed() override;
    void actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) override;

private:
    void cancel();
    void send();
    void sent(const host::Failure* failure);
    void keepDraft();
    void finish(MFMailComposeResult result, const host::Failure* failure);
    void showProgress(double fraction);
    void updateSendButton();
    host::OutgoingMail mail() const;

    std::weak_ptr<MFMailComposeViewControllerDelegate> delegate_;
    std::shared_ptr<UINavigationBar> bar_;
    std::shared_ptr<UINavigationItem> item_;
    std::shared_ptr<MFMailComposeForm> form_;
    std::shared_ptr<UIProgressHUD> hud_;
    bool isHTML_ = false;
    bool sending_ = false;
    bool finished_ = false;
};

}
