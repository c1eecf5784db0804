#pragma once
#include "platform/host/Result.h"
#include "platform/uikit/UIAlertView.h"

#include <memory>
#include <string>

namespace vistrel {
class DownloadFile;
class NSURL;
class UINavigationController;
class UIProgressHUD;

/// Brings a media file of the machine, which the user has dropped on the window or opened with the
/// application, into the downloads folder: asks, copies, and shows the folder. Nothing is replaced.
class FileImport : public UIAlertViewDelegate, public std::enable_shared_from_this<FileImport> {
public:
    /// Asks about a file: address, on top of that stack.
    static void offer(const NSURL& file, UINavigationController& navigation);
    ~FileImport() override;

    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

private:
    FileImport(std::string address, std::string name,
               std::weak_ptr<UINavigationController> navigation);
    void copy();
    void showProgress(double fraction);
    void copyEnded(const host::Status& outcome);
    void copied();
    /// Also the last reference to this is gone.
    void end();

    std::string address_;
    std::string name_;
    std::weak_ptr<UINavigationController> navigation_;
    std::shared_ptr<DownloadFile> target_;
    std::shared_ptr<UIProgressHUD> progress_;
};

}
