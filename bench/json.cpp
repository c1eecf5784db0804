#include "ads/json/GAD_ZelJSON.h"
#include "bench/Bench.h"

#define RAPIDJSON_SSE2
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <nlohmann/json.hpp>

#include <random>

namespace vistrel {
namespace {
/// Sentences with the escapes and foreign letters of a comment feed.
std::string textHeavyDocument() {
    const char* const words[] = {"the",    "banner",    "watched", "\\\"quoted\\\"", "caf\u00e9",
                                 "stream", "of",        "a",       "downloaded",     "episode",
                                 "und",    "\u00fcber", "list",    "music",          "movies"};
    std::mt19937 random(1);
    std::string text = "[";
    for (int i = 0; i < 6000; ++i) {
        text += i ? ",{" : "{";
        text += "\"id\":" + std::to_string(i) + ",\"author\":\"user " +
                std::to_string(random() % 900) + "\",\"body\":\"";
        for (auto left = 40 + random() % 60; left > 0; --left)
            text += std::string(words[random() % std::size(words)]) + (left % 25 ? " " : "\\n");
        text += "\"}";
    }
    return text + "]";
}

/// Outlines of coordinates with every digit of a double.
std::string numberHeavyDocument() {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> degrees(-180, 180);
    std::string text = "{\"outlines\":[";
    char number[64];
    for (int outline = 0; outline < 400; ++outline) {
        text += outline ? ",[" : "[";
        for (int point = 0; point < 150; ++point) {
            std::snprintf(number, sizeof number, "%s[%.15g,%.15g,%d]", point ? "," : "",
                          degrees(random), degrees(random), static_cast<int>(random() % 100));
            text += number;
        }
        text += "]";
    }
    return text + "]}";
}

std::string nestedValue(std::mt19937& random, int depth) {
    if (depth == 0)
        return random() % 2 ? std::to_string(random() % 1000) : "\"leaf\"";
    const bool isArray = random() % 3 == 0;
    std::string text = isArray ? "[" : "{";
    for (unsigned i = 0; i < 3; ++i) {
        text += i ? "," : "";
        if (!isArray)
            text += "\"child" + std::to_string(i) + "\":";
        text += nestedValue(random, depth - 1);
    }
    return text + (isArray ? "]" : "}");
}

std::string nestedDocument() {
    std::mt19937 random(3);
    return nestedValue(random, 11);
}

std::string adRequest() {
    std::string text = R"({"preqs":3,"seq_num":"4","mv":"1.2","ms":"Zm9vYmFyYmF6Zm9vYmFyYmF6",)"
                       R"("u_audio":1,"u_so":"p","u_w":320,"u_h":480,"u_sd":2,"u_tz":-120,)"
                       R"("hl":"en","submodel":"phone1,2","platform":"phone","cap":"m,a","js":)"
                       R"("afma-sdk-i-v4.1.1","app_name":"1.0.iphone.net.vistrel.media",)"
                       R"("slotname":"a14d6f2b9c1e5f8","isu":"0123456789ABCDEF0123456789ABCDEF",)"
                       R"("ad_frame":{"x":0,"y":372,"w":320,"h":48},"ad_bounds":{"x":0,"y":0,)"
                       R"("w":320,"h":48},"keywords":["music","movies","tv shows"],"extras":{)";
    for (int i = 0; i < 24; ++i)
        text += (i ? ",\"parameter_" : "\"parameter_") + std::to_string(i) + "\":\"value number " +
                std::to_string(i * 37) + "\"";
    return text + "},\"testing\":false,\"uule\":null}";
}

using Peer = rapidjson::Document;

void parse(Peer& document, const std::string& text) {
    document.Parse<rapidjson::kParseNumbersAsStringsFlag>(text.data(), text.size());
}

bool benchDocument(const std::string& name, const std::string& text) {
    const GAD_ZelJSON json;
    const GAD_ZelJSON::Reading reading = json.objectWithString(text);
    Peer document;
    parse(document, text);
    if (!reading.value || document.HasParseError()) {
        std::printf("%s: does not parse\n", name.c_str());
        return false;
    }
    const auto read = [&] {
        bench::keep(json.objectWithString(text));
    };
    const auto rapidRead = [&] {
        Peer fresh;
        parse(fresh, text);
        bench::keep(fresh);
    };
    const auto nlohmannRead = [&] {
        bench::keep(nlohmann::json::parse(text));
    };
    const auto write = [&] {
        bench::keep(json.stringWithObject(*reading.value));
    };
    const auto rapidWrite = [&] {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        bench::keep(std::string(buffer.GetString(), buffer.GetSize()));
    };
    // RapidJSON puts a whole document into one arena. Our values are independent, like nlohmann's,
    // and pay with an allocation for each container and each long text.
    bool holds = bench::compare({"json read " + name + " against RapidJSON", text.size(), 0.2},
                                read, rapidRead);
    holds &= bench::compare({"json read " + name + " against nlohmann", text.size(), 1.2}, read,
                            nlohmannRead);
    holds &= bench::compare({"json write " + name + " against RapidJSON", text.size(), 0.5}, write,
                            rapidWrite);
    return holds;
}
}
}

int main() {
    bool holds = vistrel::benchDocument("text", vistrel::textHeavyDocument());
    holds &= vistrel::benchDocument("numbers", vistrel::numberHeavyDocument());
    holds &= vistrel::benchDocument("nested", vistrel::nestedDocument());
    holds &= vistrel::benchDocument("ad request", vistrel::adRequest());
    return holds ? 0 : 1;
}
