#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLConnectionDelegate.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/uikit/UIViewController.h"
#include "settings/Manners.h"
#include "web/DownloadResumption.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class DownloadFile;
class NSURLConnection;
class UIButton;
class UILabel;
class UIProgressView;

/// Plays or downloads the one file it was made for. A running download keeps the screen alive until
/// it ends, also after the user has left. One transfer for each screen, unless the manners let a
/// failed one be started again.
class FileDownloadViewController : public UIViewController, public NSURLConnectionDelegate {
public:
    static std::shared_ptr<FileDownloadViewController> withURL(const NSURL& url);
    explicit FileDownloadViewController(const NSURL& url);
    ~FileDownloadViewController() override;

    const NSURLRequest& downloadRequest() const { return downloadRequest_; }
    const std::string& localFilename() const { return localFilename_; }
    std::int64_t bytesReceived() const { return bytesReceived_; }
    std::int64_t expectedBytes() const { return expectedBytes_; }
    /// 0 to 100, as the bar shows it.
    float percentComplete() const { return percentComplete_; }
    const std::shared_ptr<UIButton>& playButton() const { return playButton_; }
    const std::shared_ptr<UIButton>& downloadButton() const { return downloadButton_; }
    const std::shared_ptr<UILabel>& progressLabel() const { return progressLabel_; }
    const std::shared_ptr<UIProgressView>& progressView() const { return progressView_; }

    /// Streams the address in the video player.
    void play();
    /// Fetches the file into the downloads folder.
    void download();

    void viewDidLoad() override;

    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override;
    void connectionDidReceiveData(NSURLConnection& connection,
                                  std::span<const std::byte> data) override;
    void connectionDidFinishLoading(NSURLConnection& connection) override;
    void connectionDidFailWithError(NSURLConnection& connection, const NSError& error) override;

private:
    std::shared_ptr<UIButton> makeButton(double y, const char* image, const char* title);
    NSURLRequest requestForDownload();
    /// Why the response cannot be the file, if it cannot.
    std::optional<NSError> objectionTo(const NSURLResponse& response) const;
    /// Creates the file, or opens the one that is continued. False when there is none.
    bool openFile(const NSURLResponse& response);
    void beginFile(const NSURLResponse& response);
    bool isWhole() const;
    void showProgress();
    void tellOfEnd(const char* title, const std::string& message);
    void showSuccess();
    void showFailure(const NSError& error);
    void fail(NSURLConnection& connection, const NSError& error);

    NSURLRequest downloadRequest_;
    std::shared_ptr<NSURLConnection> downloadConnection_;
    std::unique_ptr<DownloadFile> file_;
    DownloadResumption resumption_;
    bool isContinuing_ = false; ///< the attempt asks for the rest of the file
    Manners manners_ = manners();
    std::string localFilename_;
    std::shared_ptr<UIButton> playButton_;
    std::shared_ptr<UIButton> downloadButton_;
    std::shared_ptr<UILabel> progressLabel_;
    std::shared_ptr<UIProgressView> progressView_;
    std::int64_t bytesReceived_ = 0;
    std::int64_t expectedBytes_ = 0;
    float percentComplete_ = 0;
    int quartersAnnounced_ = 0; ///< of the file, to screen readers
};

}
