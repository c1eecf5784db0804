#include "tests/support/RecordingDesktop.h"

#include "platform/host/EventLoop.h"

#include <utility>

namespace vistrel::support {

bool RecordingDesktop::canOpenURL(const std::string& url) {
    return schemes_.contains(url.substr(0, url.find(':')));
}

bool RecordingDesktop::openURL(const std::string& url) {
    if (!canOpenURL(url))
        return false;
    openedURLs_.push_back(url);
    return true;
}

void RecordingDesktop::sendMail(host::OutgoingMail mail,
                                std::function<void(double fraction)> progress,
                                std::function<void(host::Status)> done) {
    loop_.schedule(
        0, [this, mail = std::move(mail), progress = std::move(progress), done = std::move(done)] {
            if (mailFailure_) {
                done(*mailFailure_);
                return;
            }
            if (progress)
                progress(1);
            sentMails_.push_back(mail);
            done(host::Done{});
        });
}

host::Status RecordingDesktop::saveDraft(const host::OutgoingMail& mail) {
    if (mailFailure_)
        return *mailFailure_;
    drafts_.push_back(mail);
    return host::Done{};
}

}
