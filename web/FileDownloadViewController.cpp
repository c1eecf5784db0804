#include "web/FileDownloadViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIAccessibility.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIProgressView.h"
#include "web/DownloadFile.h"
#include "web/OvoMoviePlayerViewController.h"

#include <cstdio>
#include <utility>

namespace vistrel {

namespace {

constexpr double kTimeout = 45.0;

std::string progressText(std::int64_t received, std::int64_t expected) {
    const auto megabytes = [](std::int64_t bytes) {
        return static_cast<double>(static_cast<float>(bytes) / 1024.0F / 1024.0F);
    };
    char text[96];
    std::snprintf(text, sizeof text, "Received %.02fMB of %.02fMB", megabytes(received),
                  megabytes(expected));
    return text;
}

std::string textOfStatus(int status) {
    std::string text = NSLocalizedString("The server returned status %d instead of a file.");
    if (const auto place = text.find("%d"); place != text.npos)
        text.replace(place, 2, std::to_string(status));
    return text;
}

/// Another part than the requested one; a file that has changed; an end that is further back. Other
/// errors, such as 503, may be over at the next attempt.
bool refusesToContinue(int status) {
    return status == 206 || status == 412 || status == 416;
}

NSError errorWithText(int code, const std::string& text) {
    return {NSURLErrorDomain, code, NSLocalizedString(text)};
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
    MPMoviePlayerController::prepareEngine();
    navigationItem().setTitle(downloadRequest_.URL()->absoluteString());
    view()->setBackgroundColor(UIColor::colorWithWhiteAlpha(0.2F, 1.0F));

    playButton_ = makeButton(20, "PlayButton", "Play");
    playButton_->addTarget(weakly(this, &FileDownloadViewController::play),
                           UIControlEventTouchUpInside);
    downloadButton_ = makeButton(82, "DownloadButton", "Download");
    downloadButton_->addTarget(weakly(this, &FileDownloadViewController::download),
                               UIControlEventTouchUpInside);

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
    progressLabel_->setText({});
    progressLabel_->setTextColor(UIColor::whiteColor());
    downloadButton_->setTitleForState("Downloading...", UIControlState::Normal);
    downloadButton_->setEnabled(false);
    view()->addSubview(progressView_);
    downloadConnection_ = NSURLConnection::withRequestDelegate(
        requestForDownload(),
        std::static_pointer_cast<FileDownloadViewController>(shared_from_this()));
}

NSURLRequest FileDownloadViewController::requestForDownload() {
    NSURLRequest request = downloadRequest_;
    // Only bytes that are still there can be continued.
    isContinuing_ =
        file_ && resumption_.isPossible() && bytesReceived_ > 0 && file_->size() == bytesReceived_;
    if (isContinuing_)
        resumption_.addTo(request, bytesReceived_);
    return request;
}

std::optional<NSError>
FileDownloadViewController::objectionTo(const NSURLResponse& response) const {
    const int status = response.statusCode();
    if (manners_.refusesErrorAnswers && (status >= 400 || status == 204 || status == 304))
        return NSError(NSURLErrorDomain, NSURLErrorUnknown, textOfStatus(status));
    if (manners_.retriesDownloads && status == 206 &&
        !(file_ && resumption_.continues(response, bytesReceived_)))
        return errorWithText(NSURLErrorUnknown, "The server sent the wrong part of the file.");
    if (isContinuing_ && status == 200 && !isDownloadableMIMEType(response.MIMEType()))
        return errorWithText(NSURLErrorUnknown, "The server sent a page instead of the file.");
    return std::nullopt;
}

void FileDownloadViewController::connectionDidReceiveResponse(NSURLConnection& connection,
                                                              const NSURLResponse& response) {
    if (const auto objection = objectionTo(response)) {
        if (refusesToContinue(response.statusCode()))
            resumption_ = {}; // the next attempt asks for the whole file
        fail(connection, *objection);
        return;
    }
    const bool hasFile = openFile(response);
    if (!hasFile && manners_.confirmsDownloads)
        fail(connection, errorWithText(NSURLErrorUnknown, "The file could not be created."));
}

bool FileDownloadViewController::openFile(const NSURLResponse& response) {
    if (manners_.retriesDownloads && response.statusCode() == 206) {
        expectedBytes_ = response.expectedContentLength();
        if (expectedBytes_ != -1)
            expectedBytes_ += bytesReceived_;
        return file_->size() == bytesReceived_ && file_->open();
    }
    beginFile(response);
    const bool isCreated = file_->create();
    if (isCreated)
        NSLog("Created File");
    return file_->open() && isCreated;
}

void FileDownloadViewController::beginFile(const NSURLResponse& response) {
    bytesReceived_ = 0;
    quartersAnnounced_ = 0;
    expectedBytes_ = response.expectedContentLength();
    resumption_ = DownloadResumption(response);
    // Another attempt overwrites the file of the first.
    if (!file_)
        file_ = std::make_unique<DownloadFile>(response.suggestedFilename(),
                                               manners_.keepsExistingFiles
                                                   ? DownloadFile::Existing::Keep
                                                   : DownloadFile::Existing::Replace);
    localFilename_ = file_->name();
}

void FileDownloadViewController::connectionDidReceiveData(NSURLConnection& connection,
                                                          std::span<const std::byte> data) {
    if (file_) {
        if (const auto error = file_->write(data)) {
            // A short file must not pass for a whole one.
            fail(connection, *error);
            return;
        }
    }
    bytesReceived_ += static_cast<std::int64_t>(data.size());
    if (expectedBytes_ != -1)
        showProgress();
    if (percentComplete_ == 100.0F && !manners_.confirmsDownloads)
        showSuccess();
}

void FileDownloadViewController::showProgress() {
    progressLabel_->setText(progressText(bytesReceived_, expectedBytes_));
    const float fraction = static_cast<float>(bytesReceived_) / static_cast<float>(expectedBytes_);
    progressView_->setProgress(fraction * 100.0F / 100.0F);
    percentComplete_ = progressView_->progress() * 100.0F;
    const int quarters = static_cast<int>(percentComplete_ / 25);
    if (quarters <= quartersAnnounced_)
        return;
    quartersAnnounced_ = quarters;
    if (quarters < 4) // the end has its alert
        UIAccessibilityAnnounce(std::to_string(quarters * 25) + "%");
}

void FileDownloadViewController::tellOfEnd(const char* title, const std::string& message) {
    UIAlertView::withTitle(title, message, {}, "OK")->show();
    UIApplication::sharedApplication().presentLocalNotification(title, message);
}

void FileDownloadViewController::showSuccess() {
    tellOfEnd("Download Succeeded",
              "The file has been saved as " + std::string(kDownloadsFolder) + localFilename_);
    downloadButton_->setTitleForState("Done!", UIControlState::Normal);
}

bool FileDownloadViewController::isWhole() const {
    return file_ && file_->size() == bytesReceived_ &&
           (expectedBytes_ == -1 || expectedBytes_ == bytesReceived_);
}

void FileDownloadViewController::connectionDidFinishLoading(NSURLConnection&) {
    downloadConnection_.reset();
    const auto error = file_ ? file_->close() : std::nullopt;
    if (error)
        showFailure(*error);
    else if (manners_.confirmsDownloads && !isWhole())
        showFailure(errorWithText(NSURLErrorNetworkConnectionLost, "The file is not complete."));
    else if (manners_.confirmsDownloads)
        showSuccess();
    if (!downloadButton_->isEnabled())
        file_.reset();
}

void FileDownloadViewController::connectionDidFailWithError(NSURLConnection&,
                                                            const NSError& error) {
    showFailure(error);
    downloadConnection_.reset();
}

void FileDownloadViewController::fail(NSURLConnection& connection, const NSError& error) {
    const auto self = shared_from_this();
    connection.cancel();
    connectionDidFailWithError(connection, error);
}

void FileDownloadViewController::showFailure(const NSError& error) {
    const std::string& description = error.localizedDescription();
    tellOfEnd("Failed to Download File", description);
    progressLabel_->setText("Failed: " + description);
    progressLabel_->setTextColor(UIColor::redColor());
    downloadButton_->setTitleForState("Failed", UIControlState::Normal);
    if (!manners_.retriesDownloads) {
        file_.reset();
        return;
    }
    // What has come must be on the disk when the next attempt continues it.
    if (file_ && file_->close())
        resumption_ = {};
    downloadButton_->setTitleForState(NSLocalizedString("Try Again"), UIControlState::Normal);
    downloadButton_->setEnabled(true);
}

}
