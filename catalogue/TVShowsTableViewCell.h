#pragma once
#include "catalogue/ABTableViewCellOpaque.h"

#include <memory>
#include <string>

namespace vistrel {
class UIImage;

/// A show's title on a picture, with another picture while the row is highlighted.
class TVShowsTableViewCell : public ABTableViewCellOpaque {
public:
    explicit TVShowsTableViewCell(std::string reuseIdentifier);
    ~TVShowsTableViewCell() override;

    const std::string& tvShowText() const { return tvShowText_; }
    /// Requests a redraw.
    void setTvShowText(std::string text);
    const std::shared_ptr<const UIImage>& backgroundImage() const { return backgroundImage_; }
    void setBackgroundImage(std::shared_ptr<const UIImage> image);
    const std::shared_ptr<const UIImage>& selectedBackgroundImage() const {
        return selectedBackgroundImage_;
    }
    void setSelectedBackgroundImage(std::shared_ptr<const UIImage> image);

    void drawContentView(const CGRect& rect) override;
    std::string accessibilityLabel() const override { return tvShowText_; }

private:
    std::string tvShowText_;
    std::shared_ptr<const UIImage> backgroundImage_;
    std::shared_ptr<const UIImage> selectedBackgroundImage_;
};

}
