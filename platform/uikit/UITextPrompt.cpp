#include "platform/uikit/UITextPrompt.h"

#include "platform/foundation/NSBundle.h"
#include "platform/uikit/UITextField.h"

#include <utility>

namespace vistrel {

void UITextPrompt::ask(std::weak_ptr<UIAlertViewDelegate> delegate, const std::string& text,
                       std::string message) const {
    const auto alert = UIAlertView::withTitle(title, std::move(message), std::move(delegate),
                                              NSLocalizedString("Cancel"), {action});
    alert->setAlertViewStyle(UIAlertViewStyle::PlainTextInput);
    alert->textFieldAtIndex(0)->setPlaceholder(placeholder);
    alert->textFieldAtIndex(0)->setText(text);
    alert->show();
}

}
