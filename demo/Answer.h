#pragma once
#include "demo/Body.h"
#include "demo/Request.h"

#include <string>
#include <string_view>

namespace vistrel::demo {

/// A response. Pages create it; the server sends it, correctly or not, as the request asks.
struct Answer {
    int status = 200;
    std::string type = "text/html; charset=utf-8";
    HeaderLines headers;
    Body body;

    /// Header values contain bytes that a well-behaved server would refuse to send.
    bool exactHeaders = false;
};

Answer textAnswer(std::string text, int status = 200);
Answer redirectAnswer(std::string location, int status = 302);

/// A page that says what went wrong.
Answer errorAnswer(int status, std::string_view sentence);

/// The status line's reason phrase.
std::string_view reasonPhrase(int status);
}
