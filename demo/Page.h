#pragma once
#include "demo/Answer.h"

#include <string>
#include <string_view>

namespace vistrel::demo {

/// Builds one page of the site: dark, readable at a phone's width, with finger-sized rows.
/// All text is escaped; only `html` accepts markup.
class Page {
public:
    /// `title` is the page's title and its heading.
    explicit Page(std::string_view title);

    Page& section(std::string_view heading);
    Page& paragraph(std::string_view text);

    /// A full-width row that leads to `address`, with an optional second line.
    Page& link(std::string_view address, std::string_view text, std::string_view note = {});

    /// The same row, opening a new window.
    Page& linkInNewWindow(std::string_view address, std::string_view text);

    Page& html(std::string_view markup);

    Answer answer() const;

private:
    Page& row(std::string_view attributes, std::string_view address, std::string_view text,
              std::string_view note);

    std::string title_;
    std::string content_;
};
}
