#include "platform/linux/web/PageScripts.h"

#include "platform/linux/NativeCallback.h"
#include "platform/linux/NativeReference.h"

#include <utility>

namespace vistrel {

namespace {

/// There is one page: a form that wants a new window is sent in this one, by the engine, with its
/// body. A page that is hidden by another screen pauses its films and music.
constexpr const char* kEveryPage = R"js((function () {
    'use strict';
    function opensWindow(target) {
        return target && !/^_(self|parent|top)$/i.test(target) &&
            (/^_blank$/i.test(target) || document.getElementsByName(target).length === 0);
    }
    function stay(form, button) {
        if (button && opensWindow(button.formTarget))
            button.formTarget = '_top';
        if (opensWindow(form.target))
            form.target = '_top';
    }
    addEventListener('submit', function (event) { stay(event.target, event.submitter); }, true);
    var submit = HTMLFormElement.prototype.submit;
    HTMLFormElement.prototype.submit = function () {
        stay(this);
        submit.call(this);
    };
    document.addEventListener('visibilitychange', function () {
        if (document.hidden)
            document.querySelectorAll('video,audio').forEach(function (media) { media.pause(); });
    });
})();)js";

}

void PageScripts::evaluate(WebKitWebView* view, const std::string& script,
                           GCancellable* cancellable,
                           const std::function<void(const std::string&)>& done) {
    callAsync(
        [view = NativeReference<WebKitWebView>::ref(view), done](GAsyncResult* result) {
            const auto value = NativeReference<JSCValue>::adopt(
                webkit_web_view_evaluate_javascript_finish(view.get(), result, nullptr));
            std::string text;
            if (value && !jsc_value_is_undefined(value.get()) && !jsc_value_is_null(value.get())) {
                char* copy = jsc_value_to_string(value.get());
                text = copy ? copy : "";
                g_free(copy);
            }
            done(text);
        },
        webkit_web_view_evaluate_javascript, view, script.data(),
        static_cast<gssize>(script.size()), nullptr, nullptr, cancellable);
}

void PageScripts::startProcess(WebKitWebView* view) {
    webkit_web_view_evaluate_javascript(view, "", -1, nullptr, nullptr, nullptr, nullptr, nullptr);
}

void PageScripts::install(WebKitUserContentManager* manager) {
    WebKitUserScript* script =
        webkit_user_script_new(kEveryPage, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
    webkit_user_content_manager_add_script(manager, script);
    webkit_user_script_unref(script);
}

}
