#include "ads/Request/GADSearchRequest.h"

namespace vistrel {

std::shared_ptr<GADRequest> GADSearchRequest::request() const {
    auto request = GADRequest::request();
    Value::Dictionary parameters;
    if (!query_.empty())
        parameters.set("q", query_);
    request->setAdditionalParameters(
        std::make_shared<const Value::Dictionary>(std::move(parameters)));
    return request;
}

}
