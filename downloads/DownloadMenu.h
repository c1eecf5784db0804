#pragma once
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"

#include <memory>
#include <string>

namespace vistrel {
class DownloadsViewController;

/// What can be done with one file of the library: open it with another program, show it in the
/// file manager, rename it, delete it. The screen owns it.
class DownloadMenu : public UIActionSheetDelegate,
                     public UIAlertViewDelegate,
                     public std::enable_shared_from_this<DownloadMenu> {
public:
    DownloadMenu(DownloadsViewController& screen, std::string name);
    ~DownloadMenu() override;

    void show();
    void actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) override;
    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

private:
    void handOver(bool toProgram) const;
    /// The question for a new name, and why the one in the field cannot be used.
    void askForName(const std::string& typed, std::string complaint);
    void rename(const std::string& typed);

    DownloadsViewController& screen_;
    std::string name_;
};

}
