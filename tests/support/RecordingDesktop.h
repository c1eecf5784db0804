#pragma once
#include "platform/host/Desktop.h"
#include "platform/host/EventLoop.h"
#include "tests/support/Testing.h"

namespace vistrel::support {

/// A desktop that records what it was asked to do.
class RecordingDesktop : public host::Desktop {
public:
    explicit RecordingDesktop(host::EventLoop& loop)
        : loop_(loop) {}

    bool canOpenURL(const std::string& url) override {
        return schemes_.contains(url.substr(0, url.find(':')));
    }
    bool openURL(const std::string& url) override {
        const bool opens = canOpenURL(url);
        if (opens)
            openedURLs_.push_back(url);
        return opens;
    }
    void setIdleTimerDisabled(bool disabled) override { idleTimerDisabled_ = disabled; }
    void vibrate() override { ++vibrations_; }
    void notify(const std::string& title, const std::string& text) override {
        notifications_.push_back(title + ": " + text);
    }
    const std::vector<std::string>& notifications() const { return notifications_; }
    void copyFile(const std::string& url, const std::string& machinePath,
                  std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override {
        copies.push_back({url, machinePath, std::move(progress), std::move(done)});
    }
    void openWith(const std::string& machinePath, host::AskForProgram ask,
                  std::function<void(host::Status)> done) override {
        if (programs.empty())
            return handOver("open " + machinePath, std::move(done));
        ask(programs, [this, machinePath, done = std::move(done)](std::size_t index) {
            handOver(programs[index] + " " + machinePath, done);
        });
    }
    void showInFolder(const std::string& machinePath,
                      std::function<void(host::Status)> done) override {
        handOver("show " + machinePath, std::move(done));
    }
    bool canSendMail() override { return canSendMail_; }
    void sendMail(host::OutgoingMail mail, std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override {
        loop_.schedule(
            sendFailure_ ? 0.5 : 0,
            [this, mail = std::move(mail), progress = std::move(progress), done = std::move(done)] {
                if (sendFailure_)
                    return done(*sendFailure_);
                if (progress && !mailFailure_)
                    progress(1);
                done(record(mail, sentMails_));
            });
    }
    host::Status saveDraft(const host::OutgoingMail& mail) override {
        return record(mail, drafts_);
    }

    /// A copy that was asked for; the test reports how it goes.
    struct Copy {
        std::string url;
        std::string machinePath;
        std::function<void(double)> progress;
        std::function<void(host::Status)> done;
    };
    std::vector<Copy> copies;
    /// "open /path" and "show /path", in order.
    std::vector<std::string> handedOver;
    std::optional<host::Failure> handOverFailure;
    /// With names of programs, it cannot ask the user itself; "Name /path" is handed over then.
    std::vector<std::string> programs;

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
    /// Sending fails, half a second later; drafts are kept.
    void setSendFailure(host::Failure failure) { sendFailure_ = std::move(failure); }

private:
    void handOver(std::string what, std::function<void(host::Status)> done) {
        handedOver.push_back(std::move(what));
        loop_.schedule(0, [this, done = std::move(done)] {
            done(handOverFailure ? host::Status(*handOverFailure) : host::Done{});
        });
    }

    host::Status record(const host::OutgoingMail& mail, std::vector<host::OutgoingMail>& where) {
        if (mailFailure_)
            return *mailFailure_;
        where.push_back(mail);
        return host::Done{};
    }

    host::EventLoop& loop_;
    std::set<std::string> schemes_{"http", "https", "mailto"};
    std::vector<std::string> openedURLs_;
    std::vector<host::OutgoingMail> sentMails_;
    std::vector<host::OutgoingMail> drafts_;
    std::optional<host::Failure> mailFailure_;
    std::optional<host::Failure> sendFailure_;
    bool idleTimerDisabled_ = false;
    bool canSendMail_ = true;
    int vibrations_ = 0;
    std::vector<std::string> notifications_;
};

}
