#include "web/FileDownloadViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSFileHandle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIProgressView.h"
#include "web/OvoMoviePlayerViewController.h"

#include <cstdio>
#include <utility>

namespace vistrel {

namespace {

constexpr double kTimeout = 45.0;
constexpr const char* kDownloadsFolder = "/var/mobile/Library/Downloads/";

std::string progressText(std::int64_t received, std::int64_t expected) {
    const auto megabytes = [](std::int64_t bytes) {
        return static_cast<double>(static_cast<float>(bytes) / 1024.0F / 1024.0F);
    };
    char text[96];
    std::snprintf(text, sizeof text, "Received %.02fMB of %.02fMB", megabytes(received),
                  megabytes(expected));
    return text;
}

void showAlert(const char* title, std::string message) {
    UIAlertView::withTitle(title, std::move(message), {}, "OK")->show();
}

}

std::shared_ptr<FileDownloadViewController> FileDownloadViewController::withURL(const NSURL& url) {
    return std::make_shared<FileDownloadViewController>(url);
}

FileDownloadViewController::FileDownloadViewController(const NSURL& url)
    : downloadRequest_(url, NSURLRequestCachePolicy::ReloadIgnoringLocalCacheData, kTimeout) {}

FileDownloadViewController::~FileDownloadViewController() = default;

void FileDownloadViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setTitle(downloadRequest_.URL()->absoluteString());
    view()->setBackgroundColor(UIColor::colorWithWhiteAlpha(0.2F, 1.0F));

    playButton_ = makeButton(20, "PlayButton", "Play");
    playButton_->addTarget([this] { play(); }, UIControlEventTouchUpInside);
    downloadButton_ = makeButton(82, "DownloadButton", "Download");
    downloadButton_->addTarget([this] { download(); }, UIControlEventTouchUpInside);

    progressView_ = std::make_shared<UIProgressView>(CGRectMake(60, 205, 200, 9));
    progressLabel_ = std::make_shared<UILabel>(CGRectMake(50, 180, 220, 21));
    progressLabel_->setTextColor(UIColor::whiteColor());
    progressLabel_->setTextAlignment(UITextAlignment::Center);
    progressLabel_->setBackgroundColor(UIColor::clearColor());
    progressLabel_->setOpaque(false);
    progressLabel_->setFont(UIFont::systemFontOfSize(14));
}

std::shared_ptr<UIButton> FileDownloadViewController::makeButton(double y, const char* image,
                                                                 const char* title) {
    auto button = UIButton::buttonWithType(UIButtonType::Custom);
    button->setFrame(CGRectMake(70, y, 180, 44));
    button->setBackgroundImageForState(
        UIImage::imageWithContentsOfFile(
            NSBundle::mainBundle().pathForResourceOfType(image, "png")),
        UIControlState::Normal);
    button->setTitleForState(title, UIControlState::Normal);
    button->setTitleColorForState(UIColor::whiteColor(), UIControlState::Normal);
    button->setTitleShadowColorForState(UIColor::colorWithWhiteAlpha(0, 0.8F),
                                        UIControlState::Normal);
    button->titleLabel().setFont(UIFont::boldSystemFontOfSize(15));
    button->titleLabel().setShadowOffset({0, 1});
    button->setAdjustsImageWhenHighlighted(true);
    view()->addSubview(button);
    return button;
}

void FileDownloadViewController::play() {
    const auto player = OvoMoviePlayerViewController::withURL(*downloadRequest_.URL());
    presentModalViewController(player, true);
    player->readyPlayer();
}

void FileDownloadViewController::download() {
    view()->addSubview(progressLabel_);
    downloadButton_->setTitleForState("Downloading...", UIControlState::Normal);
    downloadButton_->setEnabled(false);
    view()->addSubview(progressView_);
    downloadConnection_ = NSURLConnection::withRequestDelegate(
        downloadRequest_, std::static_pointer_cast<FileDownloadViewController>(shared_from_this()));
}

void FileDownloadViewController::connectionDidReceiveResponse(NSURLConnection&,
                                                              const NSURLResponse& response) {
    localFilename_ = response.suggestedFilename();
    expectedBytes_ = response.expectedContentLength();
    const std::string path = kDownloadsFolder + localFilename_;
    if (NSFileManager::defaultManager().createFileAtPath(path))
        NSLog("Created File");
    file_ = NSFileHandle::fileHandleForUpdatingAtPath(path);
    if (file_)
        file_->seekToEndOfFile();
}

void FileDownloadViewController::connectionDidReceiveData(NSURLConnection& connection,
                                                          std::span<const std::byte> data) {
    if (file_) {
        file_->seekToEndOfFile();
        if (const auto error = file_->writeData(data)) {
            // A short file must not pass for a whole one.
            const auto self = shared_from_this();
            connection.cancel();
            connectionDidFailWithError(connection, *error);
            return;
        }
    }
    bytesReceived_ += static_cast<std::int64_t>(data.size());
    if (expectedBytes_ != -1)
        showProgress();
    if (percentComplete_ == 100.0F) {
        showAlert("Download Succeeded",
                  "The file has been saved as " + std::string(kDownloadsFolder) + localFilename_);
        downloadButton_->setTitleForState("Done!", UIControlState::Normal);
    }
}

void FileDownloadViewController::showProgress() {
    progressLabel_->setText(progressText(bytesReceived_, expectedBytes_));
    const float fraction = static_cast<float>(bytesReceived_) / static_cast<float>(expectedBytes_);
    progressView_->setProgress(fraction * 100.0F / 100.0F);
    percentComplete_ = progressView_->progress() * 100.0F;
}

void FileDownloadViewController::connectionDidFinishLoading(NSURLConnection&) {
    downloadConnection_.reset();
    const auto file = std::exchange(file_, nullptr);
    if (!file)
        return;
    if (const auto error = file->closeFile())
        showFailure(*error);
}

void FileDownloadViewController::connectionDidFailWithError(NSURLConnection&,
                                                            const NSError& error) {
    showFailure(error);
    downloadConnection_.reset();
}

void FileDownloadViewController::showFailure(const NSError& error) {
    const std::string& description = error.localizedDescription();
    showAlert("Failed to Download File", description);
    progressLabel_->setText("Failed: " + description);
    progressLabel_->setTextColor(UIColor::redColor());
    downloadButton_->setTitleForState("Failed", UIControlState::Normal);
}

}
