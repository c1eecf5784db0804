#include "platform/foundation/FinalAddress.h"

#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLResponse.h"

#include <memory>
#include <utility>

namespace vistrel {

namespace {

class FinalAddress : public NSURLConnectionDelegate {
public:
    explicit FinalAddress(std::function<void(const std::optional<NSURL>&)> found)
        : found_(std::move(found)) {}

    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override {
        const auto found = found_;
        const NSURL& address = response.URL();
        connection.cancel(); // releases this
        found(address);
    }

    void connectionDidFailWithError(NSURLConnection&, const NSError&) override {
        found_(std::nullopt);
    }

private:
    std::function<void(const std::optional<NSURL>&)> found_;
};

}

void findFinalAddress(const NSURL& url, std::function<void(const std::optional<NSURL>&)> found) {
    NSURLConnection::withRequestDelegate(NSURLRequest(url),
                                         std::make_shared<FinalAddress>(std::move(found)));
}

}
