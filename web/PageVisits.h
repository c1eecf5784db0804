#pragma once
#include "platform/foundation/NSURLConnectionDelegate.h"
#include "platform/foundation/NSURLRequest.h"

#include <deque>
#include <memory>
#include <set>
#include <string>

namespace vistrel {
class NSURLConnection;

/// The documents that a page has asked for, each with its probe. A few probes run at a time: the
/// oldest gives way. Probes do not keep their delegate alive, and end with it.
class PageVisits {
public:
    PageVisits() = default;
    ~PageVisits();
    PageVisits(const PageVisits&) = delete;
    PageVisits& operator=(const PageVisits&) = delete;

    /// A new visit, with a probe if the request may be sent a second time. A redirect continues
    /// the visit that led to it.
    void begin(const NSURLRequest& request, bool isRedirect,
               std::weak_ptr<NSURLConnectionDelegate> delegate);
    /// The probe has been redirected to `url`.
    void redirected(const NSURLConnection& probe, const std::string& url);
    /// Media has been found at the end of a visit: by its probe, or at an address of it. True the
    /// first time.
    bool foundMedia(const NSURLConnection& probe);
    bool foundMedia(const std::string& url);

private:
    struct Visit {
        std::set<std::string> addresses;
        std::shared_ptr<NSURLConnection> probe;
        bool hasMedia = false;
    };
    Visit* find(const std::string& url);
    Visit* find(const NSURLConnection& probe);
    Visit& visitFor(const std::string& url, bool isRedirect);
    static void end(Visit& visit);

    std::deque<Visit> visits_; ///< the oldest first
};

}
