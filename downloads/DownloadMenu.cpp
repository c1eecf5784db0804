#include "downloads/DownloadMenu.h"

#include "downloads/DownloadsFolder.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/Trimmed.h"
#include "platform/foundation/Weakly.h"
#include "platform/host/Desktop.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UITextPrompt.h"
#include "web/DownloadFile.h"
#include "web/MoviePositions.h"

#include <utility>

namespace vistrel {

namespace {

enum Choice { OpenWith, ShowInFolder, Rename, Delete };

bool canBeName(const std::string& stem) {
    return !stem.empty() && stem.front() != '.' && stem.find('/') == std::string::npos;
}

/// Renames, or returns why that is not possible. An unfinished download keeps its name.
std::string failureOfRenaming(const std::string& from, const std::string& to) {
    if (DownloadFile::isReserved(from))
        return NSLocalizedString("This file is still being downloaded.");
    if (!DownloadFile::isFree(to))
        return NSLocalizedString("A file with this name already exists.");
    const auto error = NSFileManager::defaultManager().moveItemAtPathToPath(pathOfDownload(from),
                                                                            pathOfDownload(to));
    return error ? error->localizedDescription() : std::string();
}

}

DownloadMenu::DownloadMenu(DownloadsViewController& screen, std::string name)
    : screen_(screen)
    , name_(std::move(name)) {}

DownloadMenu::~DownloadMenu() = default;

void DownloadMenu::show() {
    // Deleting asks once more, so it is not shown as what destroys.
    UIActionSheet::withTitle(shownName(name_), weakReference<UIActionSheetDelegate>(this),
                             NSLocalizedString("Cancel"), {},
                             {NSLocalizedString("Open With…"), NSLocalizedString("Show in Folder"),
                              NSLocalizedString("Rename…"), NSLocalizedString("Delete")})
        ->showInView(*screen_.view());
}

void DownloadMenu::actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) {
    if (const auto open = std::exchange(openWith_, {})) {
        if (buttonIndex != actionSheet.cancelButtonIndex())
            open(static_cast<std::size_t>(buttonIndex));
    } else if (buttonIndex == OpenWith || buttonIndex == ShowInFolder)
        handOver(buttonIndex == OpenWith);
    else if (buttonIndex == Rename)
        askForName(shownStem(name_), {});
    else if (buttonIndex == Delete)
        screen_.askForDeletion(name_);
}

void DownloadMenu::askForProgram(const std::vector<std::string>& names,
                                 std::function<void(std::size_t)> open) {
    openWith_ = std::move(open);
    UIActionSheet::withTitle(shownName(name_), weakReference<UIActionSheetDelegate>(this),
                             NSLocalizedString("Cancel"), {}, names)
        ->showInView(*screen_.view());
}

void DownloadMenu::handOver(bool toProgram) {
    const auto& host = host::current();
    const std::string path = host.files->machinePath(pathOfDownload(name_));
    const auto done = [name = shownName(name_)](const host::Status& outcome) {
        if (outcome)
            return;
        const std::string& reason = outcome.failure().message;
        UIAlertView::withTitle(NSLocalizedString("Cannot Be Opened"),
                               reason.empty() ? name : reason, {}, NSLocalizedString("OK"))
            ->show();
    };
    if (toProgram)
        host.desktop->openWith(path, weakly(this, &DownloadMenu::askForProgram), done);
    else
        host.desktop->showInFolder(path, done);
}

void DownloadMenu::askForName(const std::string& typed, std::string complaint) {
    const UITextPrompt prompt{NSLocalizedString("Rename"), NSLocalizedString("Rename"),
                              NSLocalizedString("Name")};
    prompt.ask(weakReference<UIAlertViewDelegate>(this), typed, std::move(complaint));
}

void DownloadMenu::alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) {
    if (buttonIndex == 1)
        rename(alertView.textFieldAtIndex(0)->text());
}

void DownloadMenu::rename(const std::string& typed) {
    const std::string stem(trimmed(typed));
    const auto ownStem = stringByDeletingPathExtension(name_);
    // An untouched name may look different from the file's own.
    if (typed == shownStem(name_) || stem == ownStem)
        return;
    if (!canBeName(stem))
        return askForName(
            typed,
            NSLocalizedString("A name cannot be empty, begin with a dot or contain a slash."));
    const std::string name = stem + name_.substr(ownStem.size());
    std::string failure = failureOfRenaming(name_, name);
    if (!failure.empty())
        return askForName(typed, std::move(failure));
    MoviePositions::move(NSURL::fileURLWithPath(pathOfDownload(name_)),
                         NSURL::fileURLWithPath(pathOfDownload(name)));
    screen_.fileWasRenamed(name);
}

}
