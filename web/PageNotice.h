#pragma once
#include <string>

namespace vistrel {
class NSURL;

/// A page of the browser's own that stands in the place of one that cannot be shown.
struct PageNotice {
    std::string title;
    std::string text;
    std::string again; ///< what the link to the page says; empty: no link

    std::string html(const NSURL& url) const;
};

}
