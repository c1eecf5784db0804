#include "downloads/FileImport.h"

#include "downloads/DownloadsFolder.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSBundle.h"
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

/// From the question to its answer, or the end of the copy.
std::set<std::shared_ptr<FileImport>>& openImports() {
    static std::set<std::shared_ptr<FileImport>> open;
    return open;
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

void say(std::string title, const std::string& text) {
    UIAlertView::withTitle(std::move(title), text, {}, NSLocalizedString("OK"))->show();
}

}

void FileImport::offer(const NSURL& file, UINavigationController& navigation) {
    std::string name = libraryName(file.lastPathComponent());
    if (name.empty())
        return say(NSLocalizedString("Cannot Be Played"), shownName(file.lastPathComponent()));
    const std::shared_ptr<FileImport> import(
        new FileImport(file.absoluteString(), std::move(name),
                       weakReference<UINavigationController>(&navigation)));
    openImports().insert(import);
    UIAlertView::withTitle(NSLocalizedString("Copy to Downloads?"), shownName(import->name_),
                           weakReference<UIAlertViewDelegate>(import.get()),
                           NSLocalizedString("Cancel"), {NSLocalizedString("Copy")})
        ->show();
}

FileImport::FileImport(std::string address, std::string name,
                       std::weak_ptr<UINavigationController> navigation)
    : address_(std::move(address))
    , name_(std::move(name))
    , navigation_(std::move(navigation)) {}

FileImport::~FileImport() = default;

void FileImport::alertViewClickedButtonAtIndex(UIAlertView&, int buttonIndex) {
    if (buttonIndex == 1)
        copy();
    else
        end();
}

void FileImport::copy() {
    target_ = std::make_shared<DownloadFile>(name_, DownloadFile::Existing::Keep);
    if (const auto navigation = navigation_.lock()) {
        progress_ = UIProgressHUD::withWindow(*navigation->view());
        showProgress(0);
        progress_->show(true);
    }
    const auto& host = host::current();
    host.desktop->copyFile(address_, host.files->machinePath(target_->path()),
                           weakly(this, &FileImport::showProgress),
                           weakly(this, &FileImport::copyEnded));
}

void FileImport::copyEnded(const host::Status& outcome) {
    if (!outcome)
        say(NSLocalizedString("Not Copied"), outcome.failure().message);
    else
        copied();
    UIApplication::sharedApplication().presentLocalNotification(
        NSLocalizedString(outcome ? "Copied" : "Not Copied"), shownName(target_->name()));
    end();
}

void FileImport::showProgress(double fraction) {
    if (progress_)
        progress_->setText(NSLocalizedString("Copying") + " " +
                           std::to_string(std::lround(fraction * 100)) + " %");
}

void FileImport::copied() {
    const auto navigation = navigation_.lock();
    if (!navigation)
        return;
    const auto shown =
        std::dynamic_pointer_cast<DownloadsViewController>(navigation->topViewController());
    if (shown)
        shown->refresh();
    else if (!navigation->modalViewController())
        navigation->pushViewController(std::make_shared<DownloadsViewController>(), true);
}

void FileImport::end() {
    if (progress_)
        progress_->show(false);
    openImports().erase(shared_from_this());
}

}
