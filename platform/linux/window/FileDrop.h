#pragma once
#include "platform/linux/NativeCallback.h"

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace vistrel {

/// Accepts files that are dropped on a widget, before its children do: a page would open them.
class FileDrop {
public:
    /// Called with the address of each file.
    using Dropped = std::function<void(const std::string& address)>;

    FileDrop(GtkWidget* widget, Dropped dropped);
    ~FileDrop();
    FileDrop(const FileDrop&) = delete;
    FileDrop& operator=(const FileDrop&) = delete;

private:
    bool drop(const GValue* value) const;

    GtkWidget* widget_;
    GtkEventController* target_;
    Dropped dropped_;
    SignalConnection connection_;
};

}
