#include "ads/Network/GADNetworkUtilities.h"
#include "bench/Bench.h"

#include <glib.h>

#include <string>

namespace vistrel {
namespace {
using Utilities = GADNetworkUtilities;

bool escaping(const char* name, const std::string& text) {
    const auto ours = [&] {
        bench::keep(Utilities::encodeURL(text));
    };
    // The text is ASCII, so that its bytes need no look at where characters begin.
    const auto peer = [&] {
        char* escaped = g_uri_escape_string(text.c_str(), nullptr, FALSE);
        bench::keep(escaped);
        g_free(escaped);
    };
    char* theirs = g_uri_escape_string(text.c_str(), nullptr, FALSE);
    const bool same = Utilities::encodeURL(text) == theirs;
    g_free(theirs);
    return same && bench::compare({std::string("escape ") + name, text.size(), 2}, ours, peer);
}

GHashTable* parsedByGLib(const std::string& query) {
    return g_uri_parse_params(query.data(), static_cast<gssize>(query.size()), "&;",
                              G_URI_PARAMS_NONE, nullptr);
}

bool parsing(const char* name, const std::string& query) {
    const auto ours = [&] {
        bench::keep(Utilities::dictionaryFromQueryString(query));
    };
    const auto peer = [&] {
        GHashTable* table = parsedByGLib(query);
        bench::keep(table);
        g_hash_table_unref(table);
    };
    GHashTable* table = parsedByGLib(query);
    const auto entries = Utilities::dictionaryFromQueryString(query);
    bool same = entries.size() == g_hash_table_size(table);
    for (const auto& [key, value] : entries) {
        const auto* theirs =
            static_cast<const char*>(g_hash_table_lookup(table, std::string(key).c_str()));
        same = same && theirs && value.string() == theirs;
    }
    g_hash_table_unref(table);
    return same && bench::compare({std::string("parse ") + name, query.size(), 2}, ours, peer);
}

std::string longQuery(int entries) {
    std::string query;
    for (int entry = 0; entry < entries; ++entry)
        query += "parameter" + std::to_string(entry) + "=value%20of%20" + std::to_string(entry) +
                 "%2Fand%20more&";
    query.pop_back();
    return query;
}
}
}

int main() {
    using namespace vistrel;
    std::string prose;
    for (int sentence = 0; sentence < 80; ++sentence)
        prose += "What the page asks, it asks by an address & some parameters. ";
    bool holds = escaping("address", "http://ads.vistrel.example/click?ai=a1B2c3D4&sig=xyz&u=/p#f");
    holds = escaping("word", "downloads-and-music_0123456789") && holds;
    holds = escaping("prose", prose) && holds;
    holds = parsing("bridge",
                    "url=http%3A%2F%2Fads.vistrel.example%2Fad%3Fid%3D7&type=grokruf&seq=1") &&
            holds;
    holds = parsing("tracking", longQuery(12)) && holds;
    holds = parsing("long", longQuery(300)) && holds;
    return holds ? 0 : 1;
}
