#pragma once
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class DownloadMenu;
class UITableView;

/// The downloads folder as two sections, videos and music. Reads the folder whenever it is about to
/// appear, offers to move in what other tools have left elsewhere, deletes files, opens the
/// players, shows what else can be done with a file.
class DownloadsViewController : public UIViewController,
                                public UITableViewDataSource,
                                public UITableViewDelegate,
                                public UIAlertViewDelegate {
public:
    DownloadsViewController();
    ~DownloadsViewController() override;

    /// Names, not paths, in the order of the folder's listing.
    const std::vector<std::string>& movieFiles() const { return movieFiles_; }
    const std::vector<std::string>& musicFiles() const { return musicFiles_; }
    const std::shared_ptr<UITableView>& tableView() const { return tableView_; }

    /// Rebuilds both lists from the folder.
    void updateArray();
    /// The same, and shows them.
    void refresh();
    /// Asks whether to move stray files in, when there are any.
    void checkForFilesInWrongDirectories();
    void moveFiles();
    /// Shows the delete button of the file's row, as a swipe does.
    void askForDeletion(const std::string& name);
    /// Lists the folder again and moves the keyboard highlight to the file's new name.
    void fileWasRenamed(const std::string& name);
    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidUnload() override;
    void setEditing(bool editing, bool animated) override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;

    int numberOfSectionsInTableView(UITableView& tableView) override;
    std::optional<std::string> tableViewTitleForHeaderInSection(UITableView& tableView,
                                                                int section) override;
    int tableViewNumberOfRowsInSection(UITableView& tableView, int section) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    std::optional<bool> tableViewCanEditRowAtIndexPath(UITableView& tableView,
                                                       const NSIndexPath& indexPath) override;
    bool implementsCommitEditingStyle() const override { return true; }
    void tableViewCommitEditingStyleForRowAtIndexPath(UITableView& tableView,
                                                      UITableViewCellEditingStyle style,
                                                      const NSIndexPath& indexPath) override;
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView& tableView,
                                                           const NSIndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                          const NSIndexPath& indexPath) override;
    std::optional<std::string>
    tableViewFileForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    bool tableViewShowMenuForRowAtIndexPath(UITableView& tableView,
                                            const NSIndexPath& indexPath) override;

private:
    const std::vector<std::string>& filesOfSection(int section) const;
    std::optional<NSIndexPath> rowOf(const std::string& name) const;
    void playVideo(const std::string& name);
    /// The queue is the whole section.
    void playMusic(std::uint32_t row);

    std::vector<std::string> movieFiles_;
    std::vector<std::string> musicFiles_;
    std::shared_ptr<UITableView> tableView_;
    std::shared_ptr<DownloadMenu> menu_; ///< the last one
};

}
