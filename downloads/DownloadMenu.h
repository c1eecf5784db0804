#pragma once
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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
    void handOver(bool toProgram);
    void askForProgram(const std::vector<std::string>& names,
                       std::function<void(std::size_t)> open);
    /// The question for a new name, and why the one in the field cannot be used.
    void askForName(const std::string& typed, std::string complaint);
    void rename(const std::string& typed);

    DownloadsViewController& screen_;
    std::string name_;
    std::function<void(std::size_t)> openWith_; ///< while programs are shown to choose from
};

}
