#include "platform/uikit/MFMailComposeForm.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Trimmed.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UITextView.h"

#include <cmath>

namespace vistrel {

namespace {

constexpr double kRowHeight = 40;
constexpr double kMargin = 10;
constexpr double kLabelGap = 6;

class FormRow : public UIView {
public:
    FormRow(std::shared_ptr<UILabel> label, std::shared_ptr<UITextField> field)
        : label_(std::move(label))
        , field_(std::move(field)) {
        setBackgroundColor(UIColor::whiteColor());
        addSubview(label_);
        addSubview(field_);
    }

    bool drawsContent() const override { return true; }

    void drawRect(const CGRect& rect) override {
        CGContext& context = *UIGraphicsGetCurrentContext();
        context.setFillColor(UIColor::whiteColor());
        context.fillRect(rect);
        context.setFillColor(UIColor::colorWithWhiteAlpha(0.78F, 1));
        context.fillRect(CGRectMake(0, rect.maxY() - 1, rect.size.width, 1));
    }

    void layoutSubviews() override {
        const double label = label_->sizeThatFits({}).width;
        const double x = kMargin + label + kLabelGap;
        label_->setFrame(CGRectMake(kMargin, 0, label, bounds().size.height - 1));
        field_->setFrame(
            CGRectMake(x, 0, bounds().size.width - x - kMargin, bounds().size.height - 1));
    }

private:
    std::shared_ptr<UILabel> label_;
    std::shared_ptr<UITextField> field_;
};

}

MFMailComposeForm::MFMailComposeForm(CGRect frame)
    : UIView(frame)
    , body_(std::make_shared<UITextView>()) {
    UIView::setBackgroundColor(UIColor::whiteColor());
    for (const char* label : {"To:", "Cc:", "Bcc:", "Subject:"})
        addRow(NSLocalizedString(label));
    body_->setAccessibility({UIAccessibilityRole::Field, NSLocalizedString("Message"), {}, true});
    body_->setTextChangeHandler([this] { edited(); });
    UIView::addSubview(body_);
}

void MFMailComposeForm::addRow(const std::string& text) {
    auto label = std::make_shared<UILabel>();
    label->setFont(UIFont::systemFontOfSize(16));
    label->setTextColor(UIColor::colorWithWhiteAlpha(0.5F, 1));
    label->setText(text);
    auto field = std::make_shared<UITextField>();
    const std::string name = text.ends_with(':') ? text.substr(0, text.size() - 1) : text;
    field->setAccessibility({UIAccessibilityRole::Field, name, {}, true});
    field->addTarget([this] { edited(); }, UIControlEventEditingChanged);
    const std::size_t index = fields_.size();
    field->addTarget(
        [this, index] {
            // Enter goes on to the next row.
            const bool isLast = index + 1 == fields_.size();
            const std::shared_ptr<UIView> next =
                isLast ? std::static_pointer_cast<UIView>(body_) : fields_[index + 1];
            UIApplication::sharedApplication().events().setFirstResponder(next);
        },
        UIControlEventEditingDidEndOnExit);
    auto row = std::make_shared<FormRow>(std::move(label), field);
    fields_.push_back(std::move(field));
    addSubview(row);
    rows_.push_back(std::move(row));
}

void MFMailComposeForm::edited() {
    edited_ = true;
    if (changed_)
        changed_();
}

UITextField& MFMailComposeForm::field(Row row) const {
    return *fields_[static_cast<std::size_t>(row)];
}

std::string MFMailComposeForm::text(Row row) const {
    return field(row).text();
}

void MFMailComposeForm::setText(Row row, const std::string& text) {
    field(row).setText(text);
}

std::vector<std::string> MFMailComposeForm::addresses(Row row) const {
    std::vector<std::string> addresses;
    std::string address;
    bool quoted = false;
    const auto finish = [&] {
        const std::string plain(trimmed(std::exchange(address, {})));
        if (!plain.empty())
            addresses.push_back(plain);
    };
    for (const char character : text(row)) {
        quoted = quoted != (character == '"');
        if (!quoted && (character == ',' || character == ';'))
            finish();
        else
            address += character;
    }
    finish();
    return addresses;
}

void MFMailComposeForm::setAddresses(Row row, const std::vector<std::string>& addresses) {
    std::string text;
    for (const std::string& address : addresses)
        text += (text.empty() ? "" : ", ") + address;
    setText(row, text);
}

std::string MFMailComposeForm::body() const {
    return body_->text();
}

void MFMailComposeForm::setBody(const std::string& body) {
    body_->setText(body);
}

void MFMailComposeForm::layoutSubviews() {
    double y = 0;
    for (const auto& row : rows_) {
        row->setFrame(CGRectMake(0, y, bounds().size.width, kRowHeight));
        y += kRowHeight;
    }
    body_->setFrame(CGRectMake(0, y, bounds().size.width, bounds().size.height - y));
}

}
