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

/// The screens of the running application and its files, for measuring what the eyes cannot see.
namespace TourStage {

UINavigationController& navigation();
/// The top screen of the stack when it is of that kind, else null.
std::shared_ptr<WebBrowserViewController> browser();
std::shared_ptr<FileDownloadViewController> downloadScreen();
std::shared_ptr<DownloadsViewController> downloadsScreen();
/// Whether the main menu is on top.
bool isMenuOnTop();
/// Whether the icons of the main menu's rows have as many pixels as the screen shows of them.
bool areMenuIconsSharp();
/// The video that plays now; null for none.
std::shared_ptr<MPMoviePlayerController> movie();
/// The music player that is open; null for none.
std::shared_ptr<OvoAudioPlayerController> musicPlayer();

/// Asks the content site for its digest of what lies at `path`; siteDigest has the answer when it
/// is there.
void askSiteForDigest(const std::string& path);
/// Fetches what lies at `path` on the content site into a device file, which is there once all has
/// come.
void fetchFile(const std::string& path, const std::string& devicePath);
/// 64 hexadecimal digits; empty until the site has answered.
std::string siteDigest();
/// SHA-256 of a device file, 64 hexadecimal digits; empty when it cannot be read.
std::string digestOfFile(const std::string& devicePath);
/// Bytes; -1 when there is no such file.
long long sizeOfFile(const std::string& devicePath);
/// Makes a file, and its folder when that is missing.
bool putFile(const std::string& devicePath, const std::string& contents);

}
}
