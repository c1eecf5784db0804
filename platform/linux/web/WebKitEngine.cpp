#include "platform/linux/web/WebKitEngine.h"

#include "platform/linux/web/WebKitPage.h"

#include <string>
#include <string_view>

namespace vistrel {

namespace {

/// The engine would publish a media player of its own on D-Bus and take the media keys.
void switchOffMediaSession(WebKitSettings* settings) {
    WebKitFeatureList* features = webkit_settings_get_all_features();
    for (gsize i = 0; i < webkit_feature_list_get_length(features); ++i) {
        WebKitFeature* feature = webkit_feature_list_get(features, i);
        if (std::string_view(webkit_feature_get_identifier(feature)) == "MediaSessionEnabled" ||
            std::string_view(webkit_feature_get_identifier(feature)) == "MediaSession")
            webkit_settings_set_feature_enabled(settings, feature, FALSE);
    }
    webkit_feature_list_unref(features);
}

/// Without GL in the application there is none worth having in its pages.
bool isGLDisabled() {
    const char* debug = g_getenv("GDK_DEBUG");
    return debug && std::string_view(debug).find("gl-disable") != std::string_view::npos;
}

NativeReference<WebKitSettings> makeSettings() {
    auto settings = NativeReference<WebKitSettings>::adopt(webkit_settings_new());
    webkit_settings_set_enable_fullscreen(settings.get(), FALSE);
    webkit_settings_set_media_playback_requires_user_gesture(settings.get(), TRUE);
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), FALSE);
    webkit_settings_set_enable_developer_extras(settings.get(), FALSE);
    webkit_settings_set_zoom_text_only(settings.get(), FALSE);
    webkit_settings_set_enable_back_forward_navigation_gestures(settings.get(), FALSE);
    if (isGLDisabled())
        webkit_settings_set_hardware_acceleration_policy(settings.get(),
                                                         WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    switchOffMediaSession(settings.get());
    return settings;
}

}

WebKitEngine::WebKitEngine(const WebEngineSetup& setup)
    : setup_(setup) {}

WebKitEngine::~WebKitEngine() {
    if (warmUpSource_)
        g_source_remove(warmUpSource_);
    if (session_)
        g_signal_handlers_disconnect_by_data(session_.get(), this);
}

void WebKitEngine::prepareSession() {
    if (session_)
        return;
    g_mkdir_with_parents(setup_.dataDirectory.c_str(), 0700);
    g_mkdir_with_parents(setup_.cacheDirectory.c_str(), 0700);
    session_ = NativeReference<WebKitNetworkSession>::adopt(
        webkit_network_session_new(setup_.dataDirectory.c_str(), setup_.cacheDirectory.c_str()));
    WebKitCookieManager* manager = webkit_network_session_get_cookie_manager(session_.get());
    webkit_cookie_manager_set_persistent_storage(manager,
                                                 (setup_.dataDirectory + "/cookies.sqlite").c_str(),
                                                 WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
    // Files are the application's own business: see the download screen.
    g_signal_connect(session_.get(), "download-started",
                     G_CALLBACK(+[](WebKitNetworkSession*, WebKitDownload* download, gpointer) {
                         webkit_download_cancel(download);
                     }),
                     this);
    if (SoupCookieJar* jar = setup_.cookieJar ? setup_.cookieJar() : nullptr)
        cookies_ = std::make_shared<CookieExchange>(session_.get(), jar);
    settings_ = makeSettings();
}

NativeReference<WebKitWebView> WebKitEngine::makeView() {
    prepareSession();
    auto policies =
        NativeReference<WebKitWebsitePolicies>::adopt(webkit_website_policies_new_with_policies(
            "autoplay", WEBKIT_AUTOPLAY_ALLOW_WITHOUT_SOUND, nullptr));
    return NativeReference<WebKitWebView>::sink(static_cast<WebKitWebView*>(
        g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", session_.get(), "settings",
                     settings_.get(), "website-policies", policies.get(), nullptr)));
}

std::unique_ptr<host::WebPage> WebKitEngine::createPage() {
    NativeReference<WebKitWebView> view = spare_ ? std::move(spare_) : makeView();
    spare_ = {};
    // A page that comes before the warm-up makes a spare one needless: it would cost a process.
    spareStarted_ = true;
    return std::make_unique<WebKitPage>(std::move(view), cookies_);
}

void WebKitEngine::warmUp() {
    if (warmUpSource_ || spare_ || spareStarted_)
        return;
    warmUpSource_ = g_idle_add_full(
        G_PRIORITY_LOW,
        +[](gpointer self) -> gboolean { return static_cast<WebKitEngine*>(self)->warmUpStep(); },
        this, nullptr);
}

bool WebKitEngine::warmUpStep() {
    if (!session_) {
        prepareSession();
        return true;
    }
    if (!spare_ && !spareStarted_) {
        spare_ = makeView();
        spareStarted_ = true;
        return true;
    }
    // An empty script starts the web process without a page in the history.
    if (spare_)
        webkit_web_view_evaluate_javascript(spare_.get(), "", -1, nullptr, nullptr, nullptr,
                                            nullptr, nullptr);
    warmUpSource_ = 0;
    return false;
}

}
