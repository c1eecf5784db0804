#include "demo/Page.h"

namespace vistrel::demo {
namespace {
constexpr std::string_view style = R"(
:root { color-scheme: dark }
* { box-sizing: border-box }
body { margin: 0; background: #16181d; color: #e8e6e1; font: 17px/1.4 "Liberation Sans", sans-serif }
header { padding: 14px 16px; background: linear-gradient(#39404f, #232834);
         border-bottom: 1px solid #000; box-shadow: 0 1px 4px #000 }
header a { color: #9fb4d8; text-decoration: none; font-size: 14px }
h1 { margin: 2px 0 0; font-size: 24px; text-shadow: 0 -1px #000 }
h2 { margin: 22px 16px 8px; font-size: 15px; color: #9fb4d8; text-transform: uppercase;
     letter-spacing: .06em }
p { margin: 12px 16px }
.row { display: block; margin: 8px 12px; padding: 14px 16px; min-height: 56px; border-radius: 10px;
       background: linear-gradient(#2c313d, #242833); border: 1px solid #3b4252; color: #fff;
       text-decoration: none; font-weight: bold; overflow-wrap: anywhere }
.row:active { background: #3a62a8 }
.row small { display: block; font-weight: normal; color: #aab2c0 }
form { margin: 12px 16px }
label { display: block; margin: 10px 0; color: #aab2c0 }
input, select, button { display: block; width: 100%; min-height: 48px; margin-top: 4px; padding: 8px 12px;
       font: inherit; border-radius: 10px; border: 1px solid #4a5266; background: #0f1115; color: #fff }
button { background: linear-gradient(#4d7ccc, #2d57a3); font-weight: bold }
iframe { display: block; width: calc(100% - 24px); height: 120px; margin: 12px; border: 1px solid #3b4252;
         background: #000 }
footer { padding: 20px 16px 28px; color: #7b8494; font-size: 13px }
)";
}

Page::Page(std::string_view title)
    : title_(escapedForHtml(title)) {}

Page& Page::section(std::string_view heading) {
    content_ += "<h2>" + escapedForHtml(heading) + "</h2>\n";
    return *this;
}

Page& Page::paragraph(std::string_view text) {
    content_ += "<p>" + escapedForHtml(text) + "</p>\n";
    return *this;
}

Page& Page::link(std::string_view address, std::string_view text, std::string_view note) {
    return row("", address, text, note);
}

Page& Page::linkInNewWindow(std::string_view address, std::string_view text) {
    return row(R"( target="_blank")", address, text, {});
}

Page& Page::row(std::string_view attributes, std::string_view address, std::string_view text,
                std::string_view note) {
    content_ += R"(<a class="row" href=")" + escapedForHtml(address) + '"' +
                std::string(attributes) + '>' + escapedForHtml(text);
    if (!note.empty())
        content_ += "<small>" + escapedForHtml(note) + "</small>";
    content_ += "</a>\n";
    return *this;
}

Page& Page::html(std::string_view markup) {
    content_ += markup;
    content_ += '\n';
    return *this;
}

Answer Page::answer() const {
    Answer answer;
    answer.body = Body("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                       "<title>" +
                       title_ + "</title><style>" + std::string(style) +
                       "</style></head>\n<body><header><a href=\"/\">Demo site</a><h1>" + title_ +
                       "</h1></header>\n<main>\n" + content_ +
                       "</main>\n<footer>For testing on one machine. All names and "
                       "media are invented.</footer></body></html>\n");
    return answer;
}
}
