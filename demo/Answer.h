#pragma once
#include "demo/Body.h"
#include "demo/Request.h"

#include <string>
#include <string_view>

namespace vistrel::demo {

/// What is sent back. Pages make one; the server sends it, well or badly, as the request asks.
struct Answer {
    int status = 200;
    std::string type = "text/html; charset=utf-8";
    HeaderLines headers;
    Body body;

    /// Header values hold bytes that a well-behaved server would refuse to write.
    bool exactHeaders = false;
};

Answer textAnswer(std::string text, int status = 200);
Answer redirectAnswer(std::string location, int status = 302);

/// A page of the site that says what went wrong.
Answer errorAnswer(int status, std::string_view sentence);

/// The status line's words.
std::string_view reasonPhrase(int status);
}
