#pragma once
#include <memory>
#include <string>

namespace vistrel {
class DownloadsViewController;
class FileDownloadViewController;
class MPMoviePlayerController;
class OvoAudioPlayerController;
class UINavigationController;
class WebBrowserViewController;

/// The running application's screens and files, for measuring what cannot be seen.
namespace TourStage {

UINavigationController& navigation();
/// The top screen of the stack if it is of that class, else null.
std::shared_ptr<WebBrowserViewController> browser();
std::shared_ptr<FileDownloadViewController> downloadScreen();
std::shared_ptr<DownloadsViewController> downloadsScreen();
/// Whether the main menu is on top.
bool isMenuOnTop();
/// Whether the icons of the main menu's rows have as many pixels as the screen shows.
bool areMenuIconsSharp();
/// The video that is playing, or null.
std::shared_ptr<MPMoviePlayerController> movie();
/// The open music player, or null.
std::shared_ptr<OvoAudioPlayerController> musicPlayer();

/// Requests the content site's digest of what is at `path`; siteDigest returns it once it
/// has arrived.
void askSiteForDigest(const std::string& path);
/// Fetches what is at `path` on the content site into a device file, which exists once all has
/// arrived.
void fetchFile(const std::string& path, const std::string& devicePath);
/// 64 hexadecimal digits; empty until the site has answered.
std::string siteDigest();
/// SHA-256 of a device file, 64 hexadecimal digits; empty when it cannot be read.
std::string digestOfFile(const std::string& devicePath);
/// Bytes; -1 when there is no such file.
long long sizeOfFile(const std::string& devicePath);
/// Creates a file, and its folder if missing.
bool putFile(const std::string& devicePath, const std::string& contents);

}
}
