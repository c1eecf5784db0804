#pragma once
#include "catalogue/ABTableViewCell.h"

#include <string>

namespace vistrel {

/// A tall card with two texts, each drawn twice, one point apart in two colours, for an embossed
/// look.
class MoviesTableViewCell : public ABTableViewCell {
public:
    explicit MoviesTableViewCell(std::string reuseIdentifier);

    const std::string& topTextLabel() const { return topTextLabel_; }
    /// Both request a redraw.
    void setTopTextLabel(std::string text);
    const std::string& bottomTextLabel() const { return bottomTextLabel_; }
    void setBottomTextLabel(std::string text);

    void drawContentView(const CGRect& rect) override;
    std::string accessibilityLabel() const override { return bottomTextLabel_; }

private:
    std::string topTextLabel_;
    std::string bottomTextLabel_;
};

}
