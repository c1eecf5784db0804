#include "platform/linux/window/TextInput.h"

#include <memory>
#include <string>
#include <utility>

namespace vistrel {

namespace {

/// Without control characters other than line breaks; empty after a failure.
std::string textOf(GAsyncResult* result) {
    const auto source = NativeReference<GObject>::adopt(g_async_result_get_source_object(result));
    const std::unique_ptr<char, decltype(&g_free)> text(
        gdk_clipboard_read_text_finish(GDK_CLIPBOARD(source.get()), result, nullptr), g_free);
    std::string kept = text ? text.get() : "";
    std::erase_if(kept, [](char c) { return c != '\n' && static_cast<unsigned char>(c) < 0x20; });
    return kept;
}

}

TextInput::TextInput(GtkWidget* widget, GtkEventController* keys,
                     std::function<void(const UIKey&)> send)
    : widget_(widget)
    , keys_(GTK_EVENT_CONTROLLER_KEY(keys))
    , send_(std::move(send)) {}

TextInput::~TextInput() {
    g_cancellable_cancel(cancellable_.get());
}

void TextInput::open() {
    context_ = NativeReference<GtkIMContext>::adopt(gtk_im_multicontext_new());
    gtk_im_context_set_client_widget(context_.get(), widget_);
    // The fields cannot show text that is not final; the input method's own window does.
    gtk_im_context_set_use_preedit(context_.get(), FALSE);
    committed_ = connectSignal<void(const char*)>(
        context_.get(), "commit", [this](const char* text) { commit(text); });
    deleted_ = connectSignal<gboolean(int, int)>(
        context_.get(), "delete-surrounding",
        [this](int offset, int count) { return deleteSurrounding(offset, count); });
}

void TextInput::follow(host::Display::TextEntry entry) {
    using TextEntry = host::Display::TextEntry;
    isTyping_ = entry != TextEntry::None;
    if (entry == TextEntry::None) {
        if (context_)
            gtk_im_context_focus_out(context_.get());
        gtk_event_controller_key_set_im_context(keys_, nullptr);
        return;
    }
    if (!context_)
        open();
    gtk_im_context_reset(context_.get());
    g_object_set(context_.get(), "input-purpose",
                 entry == TextEntry::Secret ? GTK_INPUT_PURPOSE_PASSWORD
                                            : GTK_INPUT_PURPOSE_FREE_FORM,
                 nullptr);
    gtk_event_controller_key_set_im_context(keys_, context_.get());
    gtk_im_context_focus_in(context_.get());
}

void TextInput::commit(const char* text) const {
    const char* next = text;
    while (*next) {
        const char* at = std::exchange(next, g_utf8_next_char(next));
        UIKey key;
        key.text.assign(at, next);
        if (key.text == "\n")
            key.code = UIKeyCode::Enter;
        else
            key.code = key.text == " " ? UIKeyCode::Space : UIKeyCode::Character;
        send_(key);
    }
}

/// Only the characters in front of the caret, as a backspace key would.
bool TextInput::deleteSurrounding(int offset, int count) const {
    if (offset != -count)
        return false;
    for (int i = 0; i < count; ++i)
        send_({.code = UIKeyCode::Backspace, .text = {}});
    return true;
}

bool TextInput::useClipboard(const UIKey& key, const std::string& selected) {
    if (!isTyping_ || !key.control || key.alt)
        return false;
    if (key.text == "v") {
        paste();
        return true;
    }
    if (key.text != "c" && key.text != "x")
        return false;
    if (!selected.empty())
        gdk_clipboard_set_text(gtk_widget_get_clipboard(widget_), selected.c_str());
    if (!selected.empty() && key.text == "x")
        send_({.code = UIKeyCode::Backspace, .text = {}});
    return true;
}

void TextInput::paste() {
    const auto received = [this](GAsyncResult* result) {
        const std::string text = textOf(result);
        if (!text.empty() && isTyping_) // `this` is gone when it was cancelled
            send_({.code = UIKeyCode::Character, .text = text});
    };
    callAsync(received, gdk_clipboard_read_text_async, gtk_widget_get_clipboard(widget_),
              cancellable_.get());
}

}
