#include "audio/OvoAudioPlayerViews.h"

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UITableView.h"

#include <utility>

namespace vistrel {

namespace {

constexpr double kGradientZPosition = 2147483648.0;
constexpr UIColor kSeparatorColor =
    UIColor::colorWithRedGreenBlueAlpha(0.986F, 0.933F, 0.994F, 0.1F);

std::shared_ptr<const UIImage> stretchable(const std::string& name, int leftCap, int topCap) {
    const auto picture = audioPlayerPicture(name);
    return picture ? picture->stretchableImage(leftCap, topCap) : nullptr;
}

std::shared_ptr<UIButton> button(const CGRect& frame, std::shared_ptr<const UIImage> picture,
                                 const char* spoken) {
    auto button = std::make_shared<UIButton>(frame);
    button->setImageForState(std::move(picture), UIControlState::Normal);
    button->setAccessibility({UIAccessibilityRole::Button, NSLocalizedString(spoken), {}, true});
    return button;
}

std::shared_ptr<UIButton> transportButton(double x, const char* picture, const char* spoken) {
    auto made = button(CGRectMake(x, 370, 40, 40), audioPlayerPicture(picture), spoken);
    made->setShowsTouchWhenHighlighted(true);
    return made;
}

std::shared_ptr<UILabel> label(const CGRect& frame, double fontSize, const UIColor& color,
                               UITextAlignment alignment) {
    auto label = std::make_shared<UILabel>(frame);
    label->setFont(UIFont::boldSystemFontOfSize(fontSize));
    label->setTextColor(color);
    label->setTextAlignment(alignment);
    label->setBackgroundColor(UIColor::clearColor());
    label->setShadowColor(UIColor::blackColor());
    label->setShadowOffset({0, -1});
    return label;
}

std::shared_ptr<UILabel> trackLabel(UIView& root, double y, const UIColor& color) {
    auto made = label(CGRectMake(60, y, 195, 12), 12, color, UITextAlignment::Center);
    made->setLineBreakMode(UILineBreakMode::TailTruncation);
    root.addSubview(made);
    return made;
}

std::shared_ptr<UILabel> timeLabel(double x, UITextAlignment alignment) {
    auto made = label(CGRectMake(x, 21, 48, 21), 14, UIColor::whiteColor(), alignment);
    made->setAdjustsFontSizeToFitWidth(true);
    return made;
}

std::shared_ptr<UISlider> slider(const CGRect& frame, const char* knob, const char* spoken) {
    auto slider = std::make_shared<UISlider>(frame);
    slider->setThumbImage(audioPlayerPicture(knob));
    slider->setMinimumTrackImage(stretchable("AudioPlayerScrubberLeft", 5, 3));
    slider->setMaximumTrackImage(stretchable("AudioPlayerScrubberRight", 5, 3));
    slider->setAccessibility({UIAccessibilityRole::Slider, NSLocalizedString(spoken), {}, true});
    return slider;
}

}

std::shared_ptr<const UIImage> audioPlayerPicture(const std::string& name) {
    return UIImage::imageWithContentsOfFile(
        NSBundle::mainBundle().pathForResourceOfType(name, "png"));
}

std::shared_ptr<const UIImage> albumInfoPicture() {
    return UIImage::imageNamed("AudioPlayerAlbumInfo.png");
}

void OvoAudioPlayerViews::build(UIView& root, std::function<void()> dismiss) {
    overlayView = nullptr;
    addNavigationBar(root, std::move(dismiss));
    addTrackLabels(root);
    addContainer(root);
    makeSongTable(root.bounds().size);
    addControlBar(root);
}

void OvoAudioPlayerViews::addNavigationBar(UIView& root, std::function<void()> dismiss) {
    auto bar =
        std::make_shared<UINavigationBar>(CGRectMake(0, 0, root.bounds().size.width, kUIBarHeight));
    bar->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleTopMargin);
    bar->setBarStyle(UIBarStyle::Black);
    root.addSubview(bar);
    toggleButton = button(CGRectMake(0, 0, 30, 30), albumInfoPicture(), "Tracks");
    auto item = std::make_shared<UINavigationItem>("");
    item->setLeftBarButtonItem(
        UIBarButtonItem::withBarButtonSystemItem(UIBarButtonSystemItem::Done, std::move(dismiss)));
    item->setRightBarButtonItem(UIBarButtonItem::withCustomView(toggleButton));
    bar->pushNavigationItem(std::move(item), false);
}

void OvoAudioPlayerViews::addTrackLabels(UIView& root) {
    titleLabel = trackLabel(root, 14, UIColor::whiteColor());
    artistLabel = trackLabel(root, 2, UIColor::lightGrayColor());
    albumLabel = trackLabel(root, 27, UIColor::lightGrayColor());
}

void OvoAudioPlayerViews::addContainer(UIView& root) {
    const CGSize size = root.bounds().size;
    containerView = std::make_shared<UIView>(
        CGRectMake(0, kUIBarHeight, size.width, size.height - kUIBarHeight));
    root.addSubview(containerView);
    artworkView = button(CGRectMake(0, 0, 320, 320), nullptr, "Cover");
    artworkView->setShowsTouchWhenHighlighted(false);
    artworkView->setAdjustsImageWhenHighlighted(false);
    containerView->addSubview(artworkView);
    reflectionView = std::make_shared<UIImageView>(CGRectMake(0, 320, 320, 96));
    reflectionView->setAlpha(0.65);
    containerView->addSubview(reflectionView);
}

void OvoAudioPlayerViews::makeSongTable(CGSize rootSize) {
    songTableView = std::make_shared<UITableView>(CGRectMake(0, 0, rootSize.width, 368));
    songTableView->setSeparatorColor(kSeparatorColor);
    songTableView->setOpaque(false);
    songTableView->setBackgroundColor(UIColor::clearColor());
    songTableView->setContentInset({0, 0, 37, 0});
    songTableView->setShowsVerticalScrollIndicator(false);
    auto footer = std::make_shared<UIView>(CGRectMake(0, 0, 320, 10));
    footer->setOpaque(false);
    footer->setBackgroundColor(UIColor::clearColor());
    songTableView->setTableFooterView(std::move(footer));

    const CGSize container = containerView->bounds().size;
    gradientLayer = std::make_shared<CAGradientLayer>();
    gradientLayer->frame = CGRectMake(0, container.height - 96, container.width, 48);
    gradientLayer->gradient.colors = {UIColor::clearColor(), UIColor::colorWithWhiteAlpha(0, 0.5F),
                                      UIColor::blackColor(), UIColor::blackColor()};
    gradientLayer->zPosition = kGradientZPosition;
}

void OvoAudioPlayerViews::addControlBar(UIView& root) {
    auto bar = std::make_shared<UIImageView>(CGRectMake(0, 364, root.bounds().size.width, 96));
    bar->setImage(stretchable("AudioPlayerBarBackground", 0, 0));
    root.addSubview(std::move(bar));
    // Play is 4 points to the right of pause, where its triangle looks centred.
    playButton = transportButton(144, "AudioPlayerPlay", "Play");
    pauseButton = transportButton(140, "AudioPlayerPause", "Pause");
    nextButton = transportButton(220, "AudioPlayerNextTrack", "Next");
    previousButton = transportButton(60, "AudioPlayerPrevTrack", "Previous");
    root.addSubview(playButton);
    root.addSubview(nextButton);
    root.addSubview(previousButton);
    volumeSlider = slider(CGRectMake(25, 420, 270, 9), "AudioPlayerVolumeKnob", "Volume");
    volumeSlider->setValue(1);
    root.addSubview(volumeSlider);
}

void OvoAudioPlayerViews::buildOverlay(double width) {
    overlayView = std::make_shared<UIView>(CGRectMake(0, 0, width, 76));
    overlayView->setBackgroundColor(UIColor::colorWithWhiteAlpha(0, 0.6F));
    overlayView->setOpaque(false);
    progressSlider = slider(CGRectMake(54, 20, 212, 23), "AudioPlayerScrubberKnob", "Position");
    indexLabel =
        label(CGRectMake(128, 2, 64, 21), 12, UIColor::whiteColor(), UITextAlignment::Center);
    duration = timeLabel(272, UITextAlignment::Left);
    currentTime = timeLabel(0, UITextAlignment::Right);
    repeatButton = button(CGRectMake(10, 45, 32, 28), nullptr, "Repeat");
    shuffleButton = button(CGRectMake(280, 45, 32, 28), nullptr, "Shuffle");
    const std::shared_ptr<UIView> parts[] = {progressSlider, indexLabel,   duration,
                                             currentTime,    repeatButton, shuffleButton};
    for (const auto& part : parts)
        overlayView->addSubview(part);
}

}
