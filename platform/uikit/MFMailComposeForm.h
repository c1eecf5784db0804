#pragma once
#include "platform/uikit/UIView.h"

#include <functional>
#include <string>
#include <vector>

namespace vistrel {
class UITextField;
class UITextView;

/// The sheet of paper of the mail composer: address and subject rows over the body.
class MFMailComposeForm : public UIView {
public:
    enum class Row { To = 0, Cc = 1, Bcc = 2, Subject = 3 };

    explicit MFMailComposeForm(CGRect frame);

    std::string text(Row row) const;
    void setText(Row row, const std::string& text);
    /// The row's addresses, as typed, without the commas, semicolons and blanks between them.
    std::vector<std::string> addresses(Row row) const;
    void setAddresses(Row row, const std::vector<std::string>& addresses);
    std::string body() const;
    void setBody(const std::string& body);
    /// Whether the user has typed anything.
    bool isEdited() const { return edited_; }
    void setChangeHandler(std::function<void()> handler) { changed_ = std::move(handler); }

    void layoutSubviews() override;

private:
    void addRow(const std::string& label);
    void edited();
    UITextField& field(Row row) const;

    std::vector<std::shared_ptr<UIView>> rows_;
    std::vector<std::shared_ptr<UITextField>> fields_;
    std::shared_ptr<UITextView> body_;
    std::function<void()> changed_;
    bool edited_ = false;
};

}
