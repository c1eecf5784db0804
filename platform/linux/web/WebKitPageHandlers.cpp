#include "platform/linux/web/WebKitPageHandlers.h"

namespace vistrel {

namespace {

gboolean refusePermission(WebKitWebView*, WebKitPermissionRequest* request, gpointer) {
    webkit_permission_request_deny(request);
    return TRUE;
}

/// Alerts are not shown, questions are answered with no; leaving a page is always allowed.
gboolean answerDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer) {
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
    return TRUE;
}

/// The engine's menu offers windows and downloads that this screen does not have; in a field it
/// offers copy and paste.
gboolean hidesMenu(WebKitWebView*, WebKitContextMenu*, WebKitHitTestResult* hit, gpointer) {
    return !webkit_hit_test_result_context_is_editable(hit);
}

gboolean refuseFullscreen(WebKitWebView*, gpointer) {
    return TRUE;
}

}

void WebKitPage::Handlers::connect(WebKitPage& page) {
    WebKitWebView* view = page.view_.get();
    g_signal_connect(view, "decide-policy",
                     G_CALLBACK(+[](WebKitWebView*, WebKitPolicyDecision* decision,
                                    WebKitPolicyDecisionType type, gpointer self) -> gboolean {
                         return static_cast<WebKitPage*>(self)->decidePolicy(decision, type);
                     }),
                     &page);
    g_signal_connect(view, "load-changed",
                     G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, gpointer self) {
                         static_cast<WebKitPage*>(self)->loadChanged(event);
                     }),
                     &page);
    g_signal_connect(view, "load-failed",
                     G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent, const char* url, GError* error,
                                    gpointer self) -> gboolean {
                         static_cast<WebKitPage*>(self)->loadFailed(url, *error);
                         return TRUE; // no error page of the engine's
                     }),
                     &page);
    g_signal_connect(
        view, "web-process-terminated",
        G_CALLBACK(+[](WebKitWebView*, WebKitWebProcessTerminationReason, gpointer self) {
            static_cast<WebKitPage*>(self)->webProcessTerminated();
        }),
        &page);
    g_signal_connect(view, "permission-request", G_CALLBACK(refusePermission), &page);
    g_signal_connect(view, "script-dialog", G_CALLBACK(answerDialog), &page);
    g_signal_connect(view, "context-menu", G_CALLBACK(hidesMenu), &page);
    g_signal_connect(view, "enter-fullscreen", G_CALLBACK(refuseFullscreen), &page);
}

}
