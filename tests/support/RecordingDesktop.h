#pragma once
#include "platform/host/Desktop.h"

#include <optional>
#include <set>

namespace vistrel::host {
class EventLoop;
}

namespace vistrel::support {

/// A desktop that records what it was asked to do.
class RecordingDesktop : public host::Desktop {
public:
    explicit RecordingDesktop(host::EventLoop& loop)
        : loop_(loop) {}

    bool canOpenURL(const std::string& url) override;
    bool openURL(const std::string& url) override;
    void setIdleTimerDisabled(bool disabled) override { idleTimerDisabled_ = disabled; }
    void vibrate() override { ++vibrations_; }
    void notify(const std::string& title, const std::string& text) override {
        notifications_.push_back(title + ": " + text);
    }
    const std::vector<std::string>& notifications() const { return notifications_; }
    bool canSendMail() override { return canSendMail_; }
    void sendMail(host::OutgoingMail mail, std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override;
    host::Status saveDraft(const host::OutgoingMail& mail) override;

    /// Schemes that something handles; "http", "https" and "mailto" at first.
    std::set<std::string>& schemes() { return schemes_; }
    const std::vector<std::string>& openedURLs() const { return openedURLs_; }
    bool isIdleTimerDisabled() const { return idleTimerDisabled_; }
    int vibrations() const { return vibrations_; }
    const std::vector<host::OutgoingMail>& sentMails() const { return sentMails_; }
    const std::vector<host::OutgoingMail>& drafts() const { return drafts_; }
    void setCanSendMail(bool can) { canSendMail_ = can; }
    /// Sending, or keeping a draft, fails.
    void setMailFailure(std::optional<host::Failure> failure) { mailFailure_ = std::move(failure); }

private:
    host::EventLoop& loop_;
    std::set<std::string> schemes_{"http", "https", "mailto"};
    std::vector<std::string> openedURLs_;
    std::vector<host::OutgoingMail> sentMails_;
    std::vector<host::OutgoingMail> drafts_;
    std::optional<host::Failure> mailFailure_;
    bool idleTimerDisabled_ = false;
    bool canSendMail_ = true;
    int vibrations_ = 0;
    std::vector<std::string> notifications_;
};

}
