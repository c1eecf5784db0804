#include "downloads/DownloadsViewController.h"

#include "audio/OvoAudioPlayerController.h"
#include "downloads/DownloadMenu.h"
#include "downloads/DownloadsFolder.h"
#include "downloads/DownloadsTableViewCell.h"
#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIBarStyle.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIProgressHUD.h"
#include "platform/uikit/UITableView.h"
#include "web/MoviePositions.h"
#include "web/OvoMoviePlayerViewController.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* CellIdentifier = "Cell";
constexpr int kVideoSection = 0;
constexpr int kMusicSection = 1;
constexpr double kRowHeight = 60.0;

int otherSection(int section) {
    return section == kVideoSection ? kMusicSection : kVideoSection;
}

}

DownloadsViewController::DownloadsViewController() = default;

DownloadsViewController::~DownloadsViewController() = default;

void DownloadsViewController::updateArray() {
    auto listing = NSFileManager::defaultManager().contentsOfDirectoryAtPath(kDownloadsFolder);
    movieFiles_ = pathsMatchingExtensions(listing.names, kVideoExtensions);
    musicFiles_ = pathsMatchingExtensions(std::move(listing.names), kMusicExtensions);
    if (listing.error)
        NSLog(listing.error->description());
}

void DownloadsViewController::refresh() {
    updateArray();
    if (tableView_)
        tableView_->reloadData();
}

void DownloadsViewController::checkForFilesInWrongDirectories() {
    std::vector<std::string> found;
    for (const char* folder : kStrayFolders) {
        const auto names = strayFilesInFolder(folder);
        found.insert(found.end(), names.begin(), names.end());
    }
    if (found.empty())
        return;
    UIAlertView::withTitle(
        "Detected Files",
        "Vistrel has detected files you have downloaded stored in a different directory, would you "
        "like to move these files to your downloads folder so you can play them with Vistrel?",
        weakReference<UIAlertViewDelegate>(this), "No", {"Yes"})
        ->show();
}

void DownloadsViewController::alertViewClickedButtonAtIndex(UIAlertView&, int buttonIndex) {
    if (buttonIndex == 1)
        moveFiles();
}

void DownloadsViewController::moveFiles() {
    const auto panel = UIProgressHUD::withWindow(*view());
    panel->setText("Moving Files...");
    panel->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    panel->show(true);
    view()->setUserInteractionEnabled(false);
    moveStrayFiles();
    refresh();
    panel->show(false);
    view()->setUserInteractionEnabled(true);
}

void DownloadsViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setTitle("Downloads");
    navigationItem().setRightBarButtonItem(editButtonItem());

    auto background = std::make_shared<UIImageView>(view()->bounds());
    background->setImage(UIImage::imageWithContentsOfFile(
        NSBundle::mainBundle().pathForResourceOfType("DownloadsBackground", "jpg")));
    view()->addSubview(background);

    const CGSize size = view()->frame().size;
    tableView_ =
        std::make_shared<UITableView>(CGRectMake(0, 0, size.width, size.height - kUIBarHeight));
    tableView_->setDelegate(weakReference<UITableViewDelegate>(this));
    tableView_->setDataSource(weakReference<UITableViewDataSource>(this));
    tableView_->setSeparatorStyle(UITableViewCellSeparatorStyle::None);
    tableView_->setOpaque(false);
    tableView_->setBackgroundColor(UIColor::clearColor());
    tableView_->setIndicatorStyle(UIScrollViewIndicatorStyle::Black);
    view()->addSubview(tableView_);
}

void DownloadsViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    MPMoviePlayerController::prepareEngine();
    updateArray();
    tableView_->reloadData();
    if (const auto selected = tableView_->indexPathForSelectedRow())
        tableView_->deselectRowAtIndexPath(*selected, false);
    checkForFilesInWrongDirectories();
}

void DownloadsViewController::viewDidUnload() {
    tableView_->setDelegate({});
    tableView_->setDataSource({});
}

void DownloadsViewController::setEditing(bool editing, bool animated) {
    UIViewController::setEditing(editing, animated);
    if (tableView_)
        tableView_->setEditing(editing, animated);
}

bool DownloadsViewController::shouldAutorotateToInterfaceOrientation(
    UIInterfaceOrientation orientation) {
    return orientation == UIInterfaceOrientation::Portrait;
}

const std::vector<std::string>& DownloadsViewController::filesOfSection(int section) const {
    static const std::vector<std::string> none;
    if (section == kVideoSection)
        return movieFiles_;
    return section == kMusicSection ? musicFiles_ : none;
}

int DownloadsViewController::numberOfSectionsInTableView(UITableView&) {
    return 2;
}

std::optional<std::string> DownloadsViewController::tableViewTitleForHeaderInSection(UITableView&,
                                                                                     int section) {
    if (section == kVideoSection)
        return "Videos";
    if (section == kMusicSection)
        return "Music";
    return std::nullopt;
}

int DownloadsViewController::tableViewNumberOfRowsInSection(UITableView&, int section) {
    return static_cast<int>(filesOfSection(section).size());
}

std::shared_ptr<UITableViewCell>
DownloadsViewController::tableViewCellForRowAtIndexPath(UITableView& tableView,
                                                        const NSIndexPath& indexPath) {
    auto cell = std::static_pointer_cast<DownloadsTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier(CellIdentifier));
    if (!cell)
        cell = std::make_shared<DownloadsTableViewCell>(CellIdentifier);
    const std::string& name =
        filesOfSection(indexPath.section)[static_cast<std::size_t>(indexPath.row)];
    cell->setFileImage(UIImage::imageNamed(indexPath.section == kVideoSection ? "VideoFile.png"
                                                                              : "AudioFile.png"));
    cell->setFileName(shownStem(name));
    cell->setAccessoryType(UITableViewCellAccessoryType::None);
    return cell;
}

std::optional<bool> DownloadsViewController::tableViewCanEditRowAtIndexPath(UITableView&,
                                                                            const NSIndexPath&) {
    return true;
}

void DownloadsViewController::tableViewCommitEditingStyleForRowAtIndexPath(
    UITableView& tableView, UITableViewCellEditingStyle style, const NSIndexPath& indexPath) {
    if (style != UITableViewCellEditingStyle::Delete)
        return;
    auto shown = filesOfSection(indexPath.section);
    const auto row = shown.begin() + indexPath.row;
    const auto other = filesOfSection(otherSection(indexPath.section));
    tableView.beginUpdates();
    const std::string path = pathOfDownload(*row);
    if (!NSFileManager::defaultManager().removeItemAtPath(path))
        MoviePositions::forget(NSURL::fileURLWithPath(path));
    updateArray();
    shown.erase(row);
    // The folder may list its files in a different order, or still have this one: a row
    // must always refer to the file that it names.
    const bool onlyThisRowIsGone = shown == filesOfSection(indexPath.section) &&
                                   other == filesOfSection(otherSection(indexPath.section));
    if (onlyThisRowIsGone)
        tableView.deleteRowsAtIndexPaths({indexPath}, UITableViewRowAnimation::Top);
    tableView.endUpdates();
    if (!onlyThisRowIsGone)
        tableView.reloadData();
}

std::optional<double>
DownloadsViewController::tableViewHeightForRowAtIndexPath(UITableView&, const NSIndexPath&) {
    return kRowHeight;
}

void DownloadsViewController::tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                                               const NSIndexPath& indexPath) {
    tableView.deselectRowAtIndexPath(indexPath, true);
    if (indexPath.section == kVideoSection)
        playVideo(movieFiles_[static_cast<std::size_t>(indexPath.row)]);
    else if (indexPath.section == kMusicSection)
        playMusic(static_cast<std::uint32_t>(indexPath.row));
}

std::optional<std::string>
DownloadsViewController::tableViewFileForRowAtIndexPath(UITableView&,
                                                        const NSIndexPath& indexPath) {
    return pathOfDownload(
        filesOfSection(indexPath.section)[static_cast<std::size_t>(indexPath.row)]);
}

bool DownloadsViewController::tableViewShowMenuForRowAtIndexPath(UITableView&,
                                                                 const NSIndexPath& indexPath) {
    menu_ = std::make_shared<DownloadMenu>(
        *this, filesOfSection(indexPath.section)[static_cast<std::size_t>(indexPath.row)]);
    menu_->show();
    return true;
}

std::optional<NSIndexPath> DownloadsViewController::rowOf(const std::string& name) const {
    for (const int section : {kVideoSection, kMusicSection}) {
        const auto& names = filesOfSection(section);
        const auto found = std::ranges::find(names, name);
        if (found != names.end())
            return NSIndexPath{section, static_cast<int>(found - names.begin())};
    }
    return std::nullopt;
}

void DownloadsViewController::askForDeletion(const std::string& name) {
    if (const auto row = rowOf(name))
        tableView_->showDeleteConfirmationForRowAtIndexPath(*row);
}

void DownloadsViewController::fileWasRenamed(const std::string& name) {
    refresh();
    if (const auto row = rowOf(name))
        tableView_->moveKeyboardToRowAtIndexPath(*row);
}

void DownloadsViewController::playVideo(const std::string& name) {
    const auto player =
        OvoMoviePlayerViewController::withURL(NSURL::fileURLWithPath(pathOfDownload(name)));
    presentModalViewController(player, true);
    player->readyPlayer();
}

/// Tags are read later: thousands at once would delay the player.
void DownloadsViewController::playMusic(std::uint32_t row) {
    OvoAudioPlayerController::SoundFiles soundFiles;
    soundFiles.reserve(musicFiles_.size());
    for (const std::string& name : musicFiles_)
        soundFiles.push_back(std::make_shared<OvoAudioFile>(
            NSURL::fileURLWithPath(pathOfDownload(name)), OvoAudioFile::Reading::WhenAsked));
    UIViewController* presenter = navigationController();
    if (!presenter)
        presenter = this;
    presenter->presentModalViewController(
        OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(std::move(soundFiles),
                                                                       kDownloadsFolder, row),
        true);
}

}
