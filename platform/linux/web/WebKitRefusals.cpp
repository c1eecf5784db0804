#include "platform/linux/web/WebKitRefusals.h"

#include <algorithm>
#include <array>

namespace vistrel {

namespace {

/// Alerts are not shown, questions are answered with no; leaving a page is always allowed.
bool answerScriptDialog(WebKitScriptDialog* dialog) {
    switch (webkit_script_dialog_get_dialog_type(dialog)) {
    case WEBKIT_SCRIPT_DIALOG_CONFIRM:
        webkit_script_dialog_confirm_set_confirmed(dialog, FALSE);
        break;
    case WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM:
        webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
        break;
    case WEBKIT_SCRIPT_DIALOG_ALERT:
    case WEBKIT_SCRIPT_DIALOG_PROMPT:
        break;
    }
    return true;
}

/// The engine's menu offers windows and downloads that this screen does not have.
bool reduceMenu(WebKitContextMenu* menu, WebKitHitTestResult* /*hit*/) {
    constexpr std::array kKept{WEBKIT_CONTEXT_MENU_ACTION_COPY, WEBKIT_CONTEXT_MENU_ACTION_PASTE,
                               WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
                               WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD};
    for (guint i = webkit_context_menu_get_n_items(menu); i-- > 0;) {
        WebKitContextMenuItem* item = webkit_context_menu_get_item_at_position(menu, i);
        if (std::ranges::find(kKept, webkit_context_menu_item_get_stock_action(item)) ==
            kKept.end())
            webkit_context_menu_remove(menu, item);
    }
    // An empty menu is not shown.
    return webkit_context_menu_get_n_items(menu) == 0;
}

}

std::vector<SignalConnection> refuseExtras(WebKitWebView* view) {
    std::vector<SignalConnection> connections;
    connections.push_back(connectSignal<gboolean(WebKitPermissionRequest*)>(
        view, "permission-request", [](WebKitPermissionRequest* request) {
            webkit_permission_request_deny(request);
            return true;
        }));
    connections.push_back(
        connectSignal<gboolean(WebKitScriptDialog*)>(view, "script-dialog", answerScriptDialog));
    connections.push_back(connectSignal<gboolean(WebKitFileChooserRequest*)>(
        view, "run-file-chooser", [](WebKitFileChooserRequest* request) {
            webkit_file_chooser_request_cancel(request);
            return true;
        }));
    connections.push_back(connectSignal<gboolean(WebKitColorChooserRequest*)>(
        view, "run-color-chooser", [](WebKitColorChooserRequest* request) {
            webkit_color_chooser_request_cancel(request);
            return true;
        }));
    connections.push_back(connectSignal<gboolean(WebKitContextMenu*, WebKitHitTestResult*)>(
        view, "context-menu", reduceMenu));
    const auto refuse = [](auto...) {
        return true;
    };
    connections.push_back(connectSignal<gboolean(WebKitPrintOperation*)>(view, "print", refuse));
    connections.push_back(
        connectSignal<gboolean(WebKitNotification*)>(view, "show-notification", refuse));
    connections.push_back(connectSignal<gboolean()>(view, "enter-fullscreen", refuse));
    return connections;
}

}
