#pragma once
#include <optional>
#include <string>

namespace vistrel {
class NSError;
class NSURL;

/// A page of the browser's own that stands in the place of one that cannot be shown.
struct PageNotice {
    std::string title;
    std::string text;
    std::string again; ///< what the link to the page says; empty: no link

    /// What the browser says of a page that failed to load; none for failures that leave the page
    /// as it was.
    static std::optional<PageNotice> forError(const NSError& error);

    std::string html(const NSURL& url) const;
};

}
