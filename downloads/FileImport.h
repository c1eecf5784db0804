#pragma once
#include "platform/host/Result.h"
#include "platform/uikit/UIAlertView.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class DownloadFile;
class DownloadsViewController;
class NSURL;
class UINavigationController;
class UIProgressHUD;

/// Brings media files of the machine, which the user has dropped on the window or opened with the
/// application, into the downloads folder: asks, copies, and shows the folder. Nothing is replaced.
class FileImport : public UIAlertViewDelegate, public std::enable_shared_from_this<FileImport> {
public:
    /// Asks about a file: address, above whatever is open. Files that are offered in the same turn
    /// of the run loop, such as those of one drop, share one question. `library` is shown on
    /// `navigation` afterwards.
    static void offer(const NSURL& file, UINavigationController& navigation,
                      const std::shared_ptr<DownloadsViewController>& library);
    ~FileImport() override;

    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

private:
    struct File {
        std::string address;
        std::string name; ///< in the library
    };

    FileImport(UINavigationController& navigation,
               const std::shared_ptr<DownloadsViewController>& library);
    void add(const NSURL& file);
    void ask();
    void copyNext();
    void showProgress(double fraction);
    void copyEnded(const host::Status& outcome);
    void allEnded();
    void showLibrary();
    /// Also the last reference to this is gone.
    void end();

    std::vector<File> files_;
    std::vector<std::string> refused_; ///< names of files that the library does not list
    std::vector<std::string> copied_;  ///< names
    std::vector<std::string> failed_;  ///< names
    std::vector<std::string> reasons_; ///< why they failed
    std::size_t next_ = 0;
    std::weak_ptr<UINavigationController> navigation_;
    std::weak_ptr<DownloadsViewController> library_;
    std::shared_ptr<DownloadFile> target_;
    std::shared_ptr<UIProgressHUD> progress_;
};

}
