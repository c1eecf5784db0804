#pragma once
#include "platform/host/Display.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"
#include "platform/uikit/UIKey.h"

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace vistrel {

/// The toolkit's input method for the application's own text fields: dead keys, compose sequences,
/// Chinese, Japanese and Korean, and the on-screen keyboard of a handheld, which comes only when
/// something asks for text. What it composes is sent on as keys; so is the clipboard's text.
class TextInput {
public:
    /// `keys` is the controller whose key events it sees first. `widget` and `keys` must outlive
    /// this.
    TextInput(GtkWidget* widget, GtkEventController* keys, std::function<void(const UIKey&)> send);
    ~TextInput();
    TextInput(const TextInput&) = delete;
    TextInput& operator=(const TextInput&) = delete;

    void follow(host::Display::TextEntry entry);
    /// Cuts, copies or pastes if the key says so and something is typed into. `selected` is the
    /// text that can be copied.
    bool useClipboard(const UIKey& key, const std::string& selected);

private:
    void open();
    void commit(const char* text) const;
    bool deleteSurrounding(int offset, int count) const;
    void paste();

    GtkWidget* widget_;
    GtkEventControllerKey* keys_;
    std::function<void(const UIKey&)> send_;
    NativeReference<GtkIMContext> context_; ///< from the first text field on
    SignalConnection committed_;
    SignalConnection deleted_;
    NativeReference<GCancellable> cancellable_ =
        NativeReference<GCancellable>::adopt(g_cancellable_new());
    bool isTyping_ = false;
};

}
