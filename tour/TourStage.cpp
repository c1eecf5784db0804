#include "tour/TourStage.h"

#include "audio/OvoAudioPlayerController.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/graphics/UIImage.h"
#include "platform/host/Crypto.h"
#include "platform/host/Host.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "settings/Settings.h"
#include "shell/RootViewController.h"
#include "shell/VistrelAppDelegate.h"
#include "web/FileDownloadViewController.h"
#include "web/OvoMoviePlayerViewController.h"
#include "web/WebBrowserViewController.h"

#include <algorithm>
#include <span>
#include <utility>

namespace vistrel::TourStage {

namespace {

constexpr std::size_t kDigestDigits = 64;
constexpr double kSharpestPictures = 3; ///< pixels per point

/// Collects a short text answer.
class TextAnswer : public NSURLConnectionDelegate {
public:
    void connectionDidReceiveData(NSURLConnection&, std::span<const std::byte> data) override {
        text_.append(reinterpret_cast<const char*>(data.data()), data.size());
    }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

std::shared_ptr<TextAnswer> digestAnswer;

/// Writes what it receives to a file.
class FileAnswer : public TextAnswer {
public:
    explicit FileAnswer(std::string devicePath)
        : devicePath_(std::move(devicePath)) {}
    void connectionDidFinishLoading(NSURLConnection&) override { putFile(devicePath_, text()); }

private:
    std::string devicePath_;
};

template <typename Controller>
std::shared_ptr<Controller> topAs() {
    return std::dynamic_pointer_cast<Controller>(navigation().topViewController());
}

std::span<const std::byte> bytesOf(const std::string& text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

}

UINavigationController& navigation() {
    auto* delegate =
        dynamic_cast<VistrelAppDelegate*>(UIApplication::sharedApplication().delegate());
    return *delegate->navigationController();
}

std::shared_ptr<WebBrowserViewController> browser() {
    return topAs<WebBrowserViewController>();
}

std::shared_ptr<FileDownloadViewController> downloadScreen() {
    return topAs<FileDownloadViewController>();
}

std::shared_ptr<DownloadsViewController> downloadsScreen() {
    return topAs<DownloadsViewController>();
}

bool isMenuOnTop() {
    return navigation().viewControllers().size() == 1;
}

bool areMenuIconsSharp() {
    const auto menu = topAs<RootViewController>();
    if (!menu)
        return false;
    const double wanted = std::min(UIImage::screenScale(), kSharpestPictures);
    const auto cells = menu->tableView()->visibleCells();
    return std::all_of(cells.begin(), cells.end(), [wanted](const auto& cell) {
        const auto& icon = cell->imageView().image();
        return !icon || icon->scale() >= wanted;
    });
}

std::shared_ptr<MPMoviePlayerController> movie() {
    for (UIViewController* screen = &navigation(); screen;) {
        if (const auto player = dynamic_cast<OvoMoviePlayerViewController*>(screen))
            return player->mp();
        UIViewController* modal = screen->modalViewController().get();
        const bool isContainer = screen == &navigation();
        screen = modal || !isContainer ? modal : navigation().topViewController().get();
    }
    return nullptr;
}

std::shared_ptr<OvoAudioPlayerController> musicPlayer() {
    return std::dynamic_pointer_cast<OvoAudioPlayerController>(navigation().modalViewController());
}

void fetchFile(const std::string& path, const std::string& devicePath) {
    NSURLConnection::withRequestDelegate(
        NSURLRequest(NSURL::URLWithString(contentSiteAddress(path))),
        std::make_shared<FileAnswer>(devicePath));
}

void askSiteForDigest(const std::string& path) {
    digestAnswer = std::make_shared<TextAnswer>();
    NSURLConnection::withRequestDelegate(
        NSURLRequest(NSURL::URLWithString(contentSiteAddress("/sha256?path=" + path))),
        digestAnswer);
}

std::string siteDigest() {
    return digestAnswer ? digestAnswer->text().substr(0, kDigestDigits) : std::string();
}

std::string digestOfFile(const std::string& devicePath) {
    const auto contents = NSFileManager::defaultManager().contentsAtPath(devicePath);
    if (!contents)
        return {};
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : host::current().crypto->sha256(*contents)) {
        text += kDigits[std::to_integer<unsigned>(byte) >> 4U];
        text += kDigits[std::to_integer<unsigned>(byte) & 15U];
    }
    return text;
}

long long sizeOfFile(const std::string& devicePath) {
    const auto info = NSFileManager::defaultManager().attributesOfItemAtPath(devicePath);
    return info ? info->size : -1;
}

bool putFile(const std::string& devicePath, const std::string& contents) {
    const std::string folder = devicePath.substr(0, devicePath.rfind('/'));
    (void)NSFileManager::defaultManager().createDirectoryAtPath(folder, true);
    return NSFileManager::defaultManager().createFileAtPath(devicePath, bytesOf(contents));
}

}
