#pragma once
#include "platform/host/Desktop.h"
#include "platform/linux/NativeReference.h"

#include <gio/gio.h>

#include <memory>

namespace vistrel {
class MailService;

/// The desktop's services over GIO and the session bus. Any of them may be missing; none is started
/// or waited for.
class GioDesktop : public host::Desktop, public std::enable_shared_from_this<GioDesktop> {
public:
    /// The mail service must outlive it.
    explicit GioDesktop(MailService& mail);
    ~GioDesktop() override;
    GioDesktop(const GioDesktop&) = delete;
    GioDesktop& operator=(const GioDesktop&) = delete;

    bool canOpenURL(const std::string& url) override;
    bool openURL(const std::string& url) override;
    void setIdleTimerDisabled(bool disabled) override;
    void vibrate() override;
    void notify(const std::string& title, const std::string& text) override;
    void copyFile(const std::string& url, const std::string& machinePath,
                  std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override;
    void openWith(const std::string& machinePath, host::AskForProgram ask,
                  std::function<void(host::Status)> done) override;
    void showInFolder(const std::string& machinePath,
                      std::function<void(host::Status)> done) override;
    bool canSendMail() override;
    void sendMail(host::OutgoingMail mail, std::function<void(double fraction)> progress,
                  std::function<void(host::Status)> done) override;
    host::Status saveDraft(const host::OutgoingMail& mail) override;

private:
    /// Null without a session bus.
    GDBusConnection* bus();
    void inhibit();
    void releaseInhibition();
    void inhibited(GAsyncResult* result);

    MailService& mail_;
    NativeReference<GDBusConnection> bus_;
    NativeReference<GCancellable> cancellable_;
    bool busAsked_ = false;
    bool idleTimerDisabled_ = false;
    bool inhibiting_ = false;      ///< requested, not yet answered
    guint32 inhibitionCookie_ = 0; ///< 0: none
};

}
