#include "platform/linux/web/WebKitSession.h"

#include "platform/linux/web/PageScripts.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

void switchOff(std::initializer_list<std::string_view> identifiers, WebKitSettings* settings) {
    WebKitFeatureList* features = webkit_settings_get_all_features();
    for (gsize i = 0; i < webkit_feature_list_get_length(features); ++i) {
        WebKitFeature* feature = webkit_feature_list_get(features, i);
        const std::string_view identifier = webkit_feature_get_identifier(feature);
        if (std::find(identifiers.begin(), identifiers.end(), identifier) != identifiers.end())
            webkit_settings_set_feature_enabled(settings, feature, FALSE);
    }
    webkit_feature_list_unref(features);
}

/// Without GL in the application it is not worth having in its pages.
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
    // The engine would publish a media player on D-Bus and take the media keys.
    switchOff({"MediaSession", "MediaSessionEnabled"}, settings.get());
    return settings;
}

}

WebKitSession::WebKitSession(NativeReference<WebKitNetworkSession> session)
    : session_(std::move(session))
    , settings_(makeSettings())
    // Files are the application's own business: see the download screen.
    , downloadStarted_(connectSignal<void(WebKitDownload*)>(session_.get(), "download-started",
                                                            webkit_download_cancel)) {}

std::unique_ptr<WebKitSession> WebKitSession::browsing(const WebEngineSetup& setup) {
    g_mkdir_with_parents(setup.dataDirectory.c_str(), 0700);
    g_mkdir_with_parents(setup.cacheDirectory.c_str(), 0700);
    std::unique_ptr<WebKitSession> made(
        new WebKitSession(NativeReference<WebKitNetworkSession>::adopt(webkit_network_session_new(
            setup.dataDirectory.c_str(), setup.cacheDirectory.c_str()))));
    WebKitNetworkSession* session = made->session_.get();
    webkit_cookie_manager_set_persistent_storage(webkit_network_session_get_cookie_manager(session),
                                                 (setup.dataDirectory + "/cookies.sqlite").c_str(),
                                                 WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
    if (SoupCookieJar* jar = setup.cookieJar ? setup.cookieJar() : nullptr)
        made->cookies_ = CookieExchange::between(session, jar);
    return made;
}

std::unique_ptr<WebKitSession> WebKitSession::guest() {
    std::unique_ptr<WebKitSession> made(new WebKitSession(
        NativeReference<WebKitNetworkSession>::adopt(webkit_network_session_new_ephemeral())));
    WebKitSettings* settings = made->settings_.get();
    webkit_settings_set_enable_media_stream(settings, FALSE);
    webkit_settings_set_enable_webrtc(settings, FALSE);
    switchOff({"AsyncClipboardAPI", "DOMPasteAccessRequests", "GeolocationAPI", "Notifications",
               "MediaDevices", "ScreenCapture", "ScreenWakeLockAPI", "SpeechSynthesisAPI"},
              settings);
    return made;
}

NativeReference<WebKitWebView> WebKitSession::makeView() const {
    const auto policies =
        NativeReference<WebKitWebsitePolicies>::adopt(webkit_website_policies_new_with_policies(
            "autoplay", WEBKIT_AUTOPLAY_ALLOW_WITHOUT_SOUND, nullptr));
    const auto content =
        NativeReference<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
    PageScripts::install(content.get());
    return NativeReference<WebKitWebView>::sink(static_cast<WebKitWebView*>(g_object_new(
        WEBKIT_TYPE_WEB_VIEW, "network-session", session_.get(), "settings", settings_.get(),
        "website-policies", policies.get(), "user-content-manager", content.get(), nullptr)));
}

}
