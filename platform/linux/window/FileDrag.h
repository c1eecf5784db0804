#pragma once
#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"

#include <gtk/gtk.h>

#include <string>
#include <vector>

namespace vistrel {

/// Files that the mouse drags out of a widget, to other windows.
class FileDrag {
public:
    explicit FileDrag(GtkWidget* widget)
        : widget_(widget) {}

    /// The device, whose button is down, takes a file of the machine along from now on.
    void begin(GdkDevice* device, const std::string& machinePath);

private:
    void end();

    GtkWidget* widget_;
    NativeReference<GdkDrag> drag_;
    std::vector<SignalConnection> connections_;
};

}
