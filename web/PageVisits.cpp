#include "web/PageVisits.h"

#include "platform/foundation/NSURLConnection.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr std::size_t kMostVisits = 6;

/// Stands between a probe, which retains its delegate, and the screen, which it must not retain.
class ProbeRelay : public NSURLConnectionDelegate {
public:
    explicit ProbeRelay(std::weak_ptr<NSURLConnectionDelegate> delegate)
        : delegate_(std::move(delegate)) {}

    std::optional<NSURLRequest>
    connectionWillSendRequestRedirectResponse(NSURLConnection& connection,
                                              const NSURLRequest& request,
                                              const NSURLResponse* redirect) override {
        const auto delegate = delegate_.lock();
        return delegate ? delegate->connectionWillSendRequestRedirectResponse(connection, request,
                                                                              redirect)
                        : std::nullopt;
    }
    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override {
        if (const auto delegate = delegate_.lock())
            delegate->connectionDidReceiveResponse(connection, response);
    }

private:
    std::weak_ptr<NSURLConnectionDelegate> delegate_;
};

}

PageVisits::~PageVisits() {
    std::for_each(visits_.begin(), visits_.end(), end);
}

void PageVisits::end(Visit& visit) {
    if (const auto probe = std::exchange(visit.probe, nullptr))
        probe->cancel();
}

PageVisits::Visit* PageVisits::find(const std::string& url) {
    const auto found = std::find_if(visits_.rbegin(), visits_.rend(), [&url](const Visit& visit) {
        return visit.addresses.contains(url);
    });
    return found == visits_.rend() ? nullptr : &*found;
}

PageVisits::Visit* PageVisits::find(const NSURLConnection& probe) {
    const auto found = std::find_if(visits_.begin(), visits_.end(), [&probe](const Visit& visit) {
        return visit.probe.get() == &probe;
    });
    return found == visits_.end() ? nullptr : &*found;
}

PageVisits::Visit& PageVisits::visitFor(const std::string& url, bool isRedirect) {
    if (isRedirect && !visits_.empty()) {
        // A probe may have been sent elsewhere than the page: then it is the latest visit's.
        Visit* visit = find(url);
        return visit ? *visit : visits_.back();
    }
    if (visits_.size() == kMostVisits) {
        end(visits_.front());
        visits_.pop_front();
    }
    return visits_.emplace_back();
}

void PageVisits::begin(const NSURLRequest& request, bool isRedirect,
                       std::weak_ptr<NSURLConnectionDelegate> delegate) {
    if (!request.URL() || !request.URL()->isHTTP())
        return;
    const std::string url = request.URL()->absoluteString();
    Visit& visit = visitFor(url, isRedirect);
    visit.addresses.insert(url);
    end(visit);
    if (!request.isSafeToRepeat() || visit.hasMedia)
        return;
    NSURLRequest probe = request;
    // A site that renews its session with each visit must not be confused by a second visitor.
    probe.setCookies(NSURLRequestCookies::SendOnly);
    visit.probe = NSURLConnection::withRequestDelegate(
        std::move(probe), std::make_shared<ProbeRelay>(std::move(delegate)));
}

void PageVisits::redirected(const NSURLConnection& probe, const std::string& url) {
    if (Visit* visit = find(probe))
        visit->addresses.insert(url);
}

bool PageVisits::foundMedia(const NSURLConnection& probe) {
    Visit* visit = find(probe);
    return visit && !std::exchange(visit->hasMedia, true);
}

bool PageVisits::foundMedia(const std::string& url) {
    Visit* visit = find(url);
    if (visit && std::exchange(visit->hasMedia, true))
        return false;
    if (visit)
        end(*visit);
    return true;
}

}
