#pragma once
#include "platform/uikit/UIAlertView.h"

#include <memory>
#include <string>

namespace vistrel {

/// An alert that asks for one line of text. Its texts are in the user's language.
struct UITextPrompt {
    std::string title;
    std::string action; ///< button 1; button 0 is Cancel
    std::string placeholder;

    /// Shows it with `text` in its field. `message` may say what was wrong with an earlier answer.
    void ask(std::weak_ptr<UIAlertViewDelegate> delegate, const std::string& text,
             std::string message) const;
};

}
