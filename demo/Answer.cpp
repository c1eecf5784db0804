#include "demo/Answer.h"

#include "demo/Page.h"

#include <utility>

namespace vistrel::demo {

Answer textAnswer(std::string text, int status) {
    Answer answer;
    answer.status = status;
    answer.type = "text/plain; charset=utf-8";
    answer.body = Body(std::move(text));
    return answer;
}

Answer redirectAnswer(std::string location, int status) {
    Answer answer = textAnswer("Moved to " + location + "\n", status);
    answer.headers.emplace_back("Location", std::move(location));
    return answer;
}

Answer errorAnswer(int status, std::string_view sentence) {
    Page page(std::to_string(status) + " " + std::string(reasonPhrase(status)));
    page.paragraph(sentence);
    Answer answer = page.answer();
    answer.status = status;
    return answer;
}

std::string_view reasonPhrase(int status) {
    switch (status) {
    case 200:
        return "OK";
    case 206:
        return "Partial Content";
    case 301:
        return "Moved Permanently";
    case 302:
        return "Found";
    case 303:
        return "See Other";
    case 304:
        return "Not Modified";
    case 307:
        return "Temporary Redirect";
    case 308:
        return "Permanent Redirect";
    case 400:
        return "Bad Request";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 416:
        return "Range Not Satisfiable";
    case 500:
        return "Internal Server Error";
    case 503:
        return "Service Unavailable";
    default:
        return "Status";
    }
}
}
