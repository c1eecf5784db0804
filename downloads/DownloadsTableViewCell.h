#pragma once
#include "catalogue/ABTableViewCellOpaque.h"

#include <memory>
#include <string>

namespace vistrel {
class UIImage;

/// One file of the downloads folder: its picture and its name, drawn 30 points to the left of where
/// they are in editing mode.
class DownloadsTableViewCell : public ABTableViewCellOpaque {
public:
    explicit DownloadsTableViewCell(std::string reuseIdentifier);

    const std::string& fileName() const { return fileName_; }
    /// Requests a redraw.
    void setFileName(std::string fileName);
    const std::shared_ptr<const UIImage>& fileImage() const { return fileImage_; }
    /// Does not request a redraw; set it before the name.
    void setFileImage(std::shared_ptr<const UIImage> image) { fileImage_ = std::move(image); }

    void layoutSubviews() override;
    void drawContentView(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    std::string fileName_;
    std::shared_ptr<const UIImage> fileImage_;
};

}
