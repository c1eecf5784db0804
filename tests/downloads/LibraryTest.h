#pragma once
#include "downloads/DownloadsTableViewCell.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSURL.h"
#include "platform/uikit/UITableView.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/DownloadFile.h"

#include <cerrno>

namespace vistrel {

const std::string kFolder = kDownloadsFolder;

/// The library over a downloads folder.
class LibraryTest : public support::ScreenTest {
protected:
    LibraryTest() { files().putFolder("/var/mobile/Library/Downloads"); }

    /// Files whose contents are their names.
    void put(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            files().put(kFolder + name, name);
    }
    void open() { library_ = show<DownloadsViewController>(); }
    void openAgain() {
        back();
        push(library_);
        settle();
    }
    UITableView& table() { return *library_->tableView(); }
    std::shared_ptr<DownloadsTableViewCell> cell(NSIndexPath path) {
        return std::dynamic_pointer_cast<DownloadsTableViewCell>(
            table().cellForRowAtIndexPath(path));
    }
    /// The rows that are shown: "Film, Other | Song".
    std::string rows() {
        std::string text;
        for (int section = 0; section < 2; ++section) {
            text += section > 0 ? " | " : "";
            for (int row = 0; row < table().numberOfRowsInSection(section); ++row)
                text += (row > 0 ? ", " : "") + cell({section, row})->fileName();
        }
        return text;
    }

    std::shared_ptr<DownloadsViewController> library_;
};

}
