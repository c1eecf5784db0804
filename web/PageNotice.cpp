#include "web/PageNotice.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSError.h"
#include "platform/foundation/NSURL.h"
#include "platform/uikit/UIWebViewDelegate.h"

namespace vistrel {

namespace {

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text)
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '"')
            result += "&quot;";
        else
            result += c;
    return result;
}

}

std::optional<PageNotice> PageNotice::forError(const NSError& error) {
    if (error.domain() == NSURLErrorDomain && error.code() == NSURLErrorServerCertificateUntrusted)
        return PageNotice{NSLocalizedString("This Connection Is Not Secure"),
                          NSLocalizedString("The certificate is not valid. Nothing was sent."),
                          {}};
    if (error.domain() == WebKitErrorDomain &&
        error.code() == WebKitErrorWebContentProcessTerminated)
        return PageNotice{NSLocalizedString("The Page Has Stopped"),
                          NSLocalizedString("Something went wrong while showing this page."),
                          NSLocalizedString("Load Again")};
    return std::nullopt;
}

std::string PageNotice::html(const NSURL& url) const {
    const std::string link = again.empty() ? std::string()
                                           : "<a href=\"" + escaped(url.absoluteString()) + "\">" +
                                                 escaped(again) + "</a>";
    return "<!DOCTYPE html><meta name=viewport content='width=device-width'><title>" +
           escaped(title) +
           "</title><style>body{margin:64px 24px;background:#e4e6ea;color:#333;text-align:center;"
           "font:15px sans-serif}h1{font-size:19px}p{color:#666;line-height:1.4}"
           "a{display:inline-block;margin-top:16px;padding:11px 22px;border-radius:9px;"
           "background:#3a5a8c;color:#fff;font-weight:bold;text-decoration:none}</style><h1>" +
           escaped(title) + "</h1><p>" + escaped(text) + "</p>" + link;
}

}
