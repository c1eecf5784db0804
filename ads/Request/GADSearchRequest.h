#pragma once
#include "ads/Request/GADRequest.h"

#include <memory>
#include <string>
#include <utility>

namespace vistrel {

/// What the user searches for, as a request of a search banner.
class GADSearchRequest {
public:
    const std::string& query() const { return query_; }
    void setQuery(std::string query) { query_ = std::move(query); }

    /// A new request that carries the query, when there is one.
    std::shared_ptr<GADRequest> request() const;

private:
    std::string query_;
};

}
