#pragma once
#include "platform/graphics/CGGeometry.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {
class CAGradientLayer;
class UIButton;
class UIImage;
class UIImageView;
class UILabel;
class UISlider;
class UITableView;
class UIView;

/// The music player's views. They are created and laid out here; the controller fills them and sets
/// their actions.
struct OvoAudioPlayerViews {
    std::shared_ptr<CAGradientLayer> gradientLayer;
    std::shared_ptr<UIButton> playButton;
    std::shared_ptr<UIButton> pauseButton;
    std::shared_ptr<UIButton> nextButton;
    std::shared_ptr<UIButton> previousButton;
    std::shared_ptr<UIButton> toggleButton;
    std::shared_ptr<UILabel> titleLabel;
    std::shared_ptr<UILabel> artistLabel;
    std::shared_ptr<UILabel> albumLabel;
    std::shared_ptr<UISlider> volumeSlider;
    std::shared_ptr<UITableView> songTableView;
    std::shared_ptr<UIButton> artworkView;
    std::shared_ptr<UIImageView> reflectionView;
    std::shared_ptr<UIView> containerView;

    // Created with the overlay when it is first shown.
    std::shared_ptr<UIView> overlayView;
    std::shared_ptr<UISlider> progressSlider;
    std::shared_ptr<UILabel> indexLabel;
    std::shared_ptr<UILabel> duration;
    std::shared_ptr<UILabel> currentTime;
    std::shared_ptr<UIButton> repeatButton;
    std::shared_ptr<UIButton> shuffleButton;

    /// Adds all but the overlay to the empty root view. Done calls `dismiss`.
    void build(UIView& root, std::function<void()> dismiss);
    void buildOverlay(double width);

private:
    void addNavigationBar(UIView& root, std::function<void()> dismiss);
    void addTrackLabels(UIView& root);
    void addContainer(UIView& root);
    void makeSongTable(CGSize rootSize);
    void addControlBar(UIView& root);
};

/// Reads a picture from the application's resources.
std::shared_ptr<const UIImage> audioPlayerPicture(const std::string& name);
/// The picture on the button that shows the track table.
std::shared_ptr<const UIImage> albumInfoPicture();

}
