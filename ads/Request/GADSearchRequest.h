#pragma once
#include "ads/Request/GADRequest.h"

#include <memory>
#include <string>
#include <utility>

namespace vistrel {

/// A search banner's request, with the user's query.
class GADSearchRequest {
public:
    const std::string& query() const { return query_; }
    void setQuery(std::string query) { query_ = std::move(query); }

    /// A new request with the query, if there is one.
    std::shared_ptr<GADRequest> request() const;

private:
    std::string query_;
};

}
