#pragma once
#include "platform/uikit/MFMailComposeViewControllerDelegate.h"
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class CADisplayLink;
class DownloadsViewController;
class GADBannerView;
class UIButton;
class UIImage;
class UITableView;
struct Setting;

/// One row of the main menu: a native screen, or else an address for the browser.
struct MenuRecord {
    std::string title;
    std::shared_ptr<UIViewController> viewController;
    std::shared_ptr<const UIImage> image;
    std::string URL;
};

/// The main menu: the application's sections, the members' page and the partner sites; and the
/// help behind the "Help" button.
class RootViewController : public UIViewController,
                           public UITableViewDataSource,
                           public UITableViewDelegate,
                           public UIActionSheetDelegate,
                           public UIAlertViewDelegate,
                           public MFMailComposeViewControllerDelegate {
public:
    RootViewController();
    ~RootViewController() override;

    const std::vector<MenuRecord>& menuList() const { return menuList_; }
    const std::vector<MenuRecord>& moreSitesList() const { return moreSitesList_; }
    const std::vector<MenuRecord>& VIPSection() const { return VIPSection_; }
    void setMenuList(std::vector<MenuRecord> list) { menuList_ = std::move(list); }
    void setMoreSitesList(std::vector<MenuRecord> list) { moreSitesList_ = std::move(list); }
    void setVIPSection(std::vector<MenuRecord> list) { VIPSection_ = std::move(list); }
    /// The one downloads screen. Null before the view is loaded.
    const std::shared_ptr<DownloadsViewController>& downloads() const { return downloads_; }
    const std::shared_ptr<UITableView>& tableView() const { return tableView_; }
    void setTableView(std::shared_ptr<UITableView> tableView);
    /// Null while the view is not loaded, and when the settings disable ads.
    const std::shared_ptr<GADBannerView>& bannerView() const { return bannerView_; }

    void presentAboutPage();
    void presentHelpOptions();
    void actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) override;
    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

    void displayComposerSheetWebsiteSupport();
    void displayComposerSheetApplicationSupport();
    /// The same mails through a mailto address, for the desktop's mail program.
    void launchMailAppOnDeviceWebsiteSupport();
    void launchMailAppOnDeviceApplicationSupport();
    void mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& controller,
                                                       MFMailComposeResult result,
                                                       const NSError* error) override;
    /// Opens the user's profile in the first installed client, else on the web.
    void openTwitterAppForFollowingUser(const std::string& userName);

    void loadView() override;
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidUnload() override;

    int numberOfSectionsInTableView(UITableView& tableView) override;
    int tableViewNumberOfRowsInSection(UITableView& tableView, int section) override;
    std::shared_ptr<UIView> tableViewViewForHeaderInSection(UITableView& tableView,
                                                            int section) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    void tableViewDidTouchRowAtIndexPath(UITableView& tableView,
                                         const NSIndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                          const NSIndexPath& indexPath) override;

private:
    void buildLists();
    void addBanner();
    void loadBannerAfterFirstFrame();
    const std::vector<MenuRecord>& recordsOfSection(int section) const;
    /// Null for a row that does not exist.
    const MenuRecord* recordAt(const NSIndexPath& indexPath) const;
    void pushBrowser(const MenuRecord& record);
    void showAlert(const char* title, std::string message, const char* cancelTitle,
                   std::vector<std::string> otherTitles, int rows = 0);
    void sendWebsiteSupportMail();
    void sendApplicationSupportMail();
    void displayComposerSheet(const Setting& recipient, const char* subject);

    std::vector<MenuRecord> menuList_;
    std::vector<MenuRecord> moreSitesList_;
    std::vector<MenuRecord> VIPSection_;
    std::shared_ptr<DownloadsViewController> downloads_;
    std::shared_ptr<UIButton> titleButton_;
    std::shared_ptr<UITableView> tableView_;
    std::shared_ptr<GADBannerView> bannerView_;
    std::unique_ptr<CADisplayLink> bannerWait_; ///< for the first frame
    bool firstFrameHasBegun_ = false;
};

}
