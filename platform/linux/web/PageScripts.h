#pragma once
#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vistrel::PageScripts {

/// Runs a script in the main frame; `done` gets the result as text, empty for none or a failure.
void evaluate(WebKitWebView* view, const std::string& script, GCancellable* cancellable,
              const std::function<void(const std::string&)>& done);

/// Starts the view's web process, and leaves nothing in the history.
void startProcess(WebKitWebView* view);

/// Installs what every page and frame runs before its own scripts.
void install(WebKitUserContentManager* manager);

}
