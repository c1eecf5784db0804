#include "downloads/FileImport.h"

#include "downloads/DownloadsFolder.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/UTF8Text.h"
#include "platform/foundation/Weakly.h"
#include "platform/host/Desktop.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIProgressHUD.h"
#include "web/DownloadFile.h"
#include "web/DownloadableMedia.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace vistrel {

namespace {

/// From the offer to the answer, or the end of the last copy.
std::set<std::shared_ptr<FileImport>>& openImports() {
    // Never destroyed: a copy that is under way at the end uses what would go first.
    static auto& open = *new std::set<std::shared_ptr<FileImport>>;
    return open;
}

/// The one that has not asked yet.
std::weak_ptr<FileImport>& gatheringImport() {
    static std::weak_ptr<FileImport> import;
    return import;
}

/// The name under which the library lists a file, or an empty one when it does not.
std::string libraryName(const std::string& name) {
    const std::string_view stem = stringByDeletingPathExtension(name);
    const std::string extension(pathExtension(name));
    const auto isListed = [](const std::string& text) {
        return std::ranges::find(kMediaExtensions, text) != kMediaExtensions.end();
    };
    if (name.find('/') != std::string::npos)
        return {};
    if (isListed(extension))
        return name;
    const std::string lower = lowercaseText(extension);
    return isListed(lower) ? std::string(stem) + "." + lower : std::string();
}

std::string lines(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts)
        result += (result.empty() ? "" : "\n") + text;
    return result;
}

void say(std::string title, const std::string& text) {
    UIAlertView::withTitle(std::move(title), text, {}, NSLocalizedString("OK"))->show();
}

}

void FileImport::offer(const NSURL& file, UINavigationController& navigation,
                       const std::shared_ptr<DownloadsViewController>& library) {
    auto import = gatheringImport().lock();
    if (!import) {
        import.reset(new FileImport(navigation, library));
        openImports().insert(import);
        gatheringImport() = import;
        NSRunLoop::performAfterDelay(0, weakly(import.get(), &FileImport::ask));
    }
    import->add(file);
}

FileImport::FileImport(UINavigationController& navigation,
                       const std::shared_ptr<DownloadsViewController>& library)
    : navigation_(weakReference<UINavigationController>(&navigation))
    , library_(library) {}

FileImport::~FileImport() = default;

void FileImport::add(const NSURL& file) {
    std::string name = libraryName(file.lastPathComponent());
    if (name.empty())
        refused_.push_back(shownName(file.lastPathComponent()));
    else
        files_.push_back({file.absoluteString(), std::move(name)});
}

void FileImport::ask() {
    gatheringImport().reset();
    if (!refused_.empty())
        say(NSLocalizedString("Cannot Be Played"), lines(refused_));
    if (files_.empty())
        return end();
    std::vector<std::string> names;
    for (const File& file : files_)
        names.push_back(shownName(file.name));
    UIAlertView::withTitle(NSLocalizedString("Copy to Downloads?"), lines(names),
                           weakReference<UIAlertViewDelegate>(this), NSLocalizedString("Cancel"),
                           {NSLocalizedString("Copy")})
        ->show();
}

void FileImport::alertViewClickedButtonAtIndex(UIAlertView&, int buttonIndex) {
    if (buttonIndex != 1)
        return end();
    if (const auto navigation = navigation_.lock()) {
        const auto& modal = navigation->modalViewController();
        progress_ = UIProgressHUD::withWindow(modal ? *modal->view() : *navigation->view());
        progress_->show(true);
    }
    copyNext();
}

void FileImport::copyNext() {
    if (next_ == files_.size())
        return allEnded();
    target_ = std::make_shared<DownloadFile>(files_[next_].name, DownloadFile::Existing::Keep);
    showProgress(0);
    const auto& host = host::current();
    host.desktop->copyFile(files_[next_].address, host.files->machinePath(target_->path()),
                           weakly(this, &FileImport::showProgress),
                           weakly(this, &FileImport::copyEnded));
}

void FileImport::showProgress(double fraction) {
    const double all = (static_cast<double>(next_) + fraction) / static_cast<double>(files_.size());
    if (progress_)
        progress_->setText(NSLocalizedString("Copying") + " " +
                           std::to_string(std::lround(all * 100)) + " %");
}

void FileImport::copyEnded(const host::Status& outcome) {
    const std::string name = shownName(target_->name());
    if (outcome) {
        copied_.push_back(name);
    } else {
        const std::string& reason = outcome.failure().message;
        failed_.push_back(name);
        reasons_.push_back(files_.size() > 1 ? name + ": " + reason : reason);
    }
    ++next_;
    copyNext();
}

void FileImport::allEnded() {
    const auto self = shared_from_this();
    end();
    const bool allCopied = failed_.empty();
    if (!allCopied)
        say(NSLocalizedString("Not Copied"), lines(reasons_));
    if (!copied_.empty())
        showLibrary();
    UIApplication::sharedApplication().presentLocalNotification(
        NSLocalizedString(allCopied ? "Copied" : "Not Copied"),
        lines(allCopied ? copied_ : failed_));
}

void FileImport::showLibrary() {
    const auto navigation = navigation_.lock();
    const auto library = library_.lock();
    if (!navigation || !library)
        return;
    if (navigation->topViewController() == library)
        library->refresh();
    else if (navigation->modalViewController())
        return;
    else if (library->navigationController())
        navigation->popToViewControllerAnimated(*library, true);
    else
        navigation->pushViewController(library, true);
}

void FileImport::end() {
    if (progress_)
        progress_->show(false);
    openImports().erase(shared_from_this());
}

}
