#include "catalogue/MovieCatalogue.h"
#include "catalogue/TVShowCatalogue.h"
#include "demo/Films.h"
#include "demo/Page.h"
#include "demo/Pages.h"

#include <span>

namespace vistrel::demo {
namespace {
std::string_view withoutFragment(std::string_view address) {
    return address.substr(0, address.find('#'));
}

// All titles that lead to the address, possibly none: some shows share a page.
std::string titleOf(std::string_view address, std::span<const CatalogueRow> rows) {
    std::string title;
    for (const CatalogueRow& row : rows)
        if (withoutFragment(row.path) == address)
            title += (title.empty() ? "" : " · ") + std::string(row.title);
    return title;
}

Addresses addressesOf(std::span<const CatalogueRow> rows) {
    Addresses addresses;
    for (const CatalogueRow& row : rows)
        addresses.push_back({std::string(row.path), std::string(row.title)});
    return addresses;
}

// "/tvshows/tosh.0.html" gives "tosh.0"; "/db/showthread.php?t=365" gives "thread-365".
std::string fileStemOf(std::string_view address) {
    if (address.starts_with("/db/")) {
        const std::string_view number = address.substr(address.find('=') + 1);
        return "thread-" + std::string(number.substr(0, number.find('&')));
    }
    const std::string_view name = address.substr(address.rfind('/') + 1);
    return std::string(name.substr(0, name.rfind('.')));
}

void addEpisodes(Page& page, const std::string& stem) {
    const std::string base = "/files/" + stem + "-";
    page.section("Episodes")
        .link(base + "1.mp4", "Episode 1", "MP4, 480 × 320")
        .link(base + "2.mp4", "Episode 2", "MP4, 640 × 360")
        .link(base + "3.mp4", "Episode 3", "MP4, long and small")
        .link(base + "1.m4v", "Episode 4", "M4V")
        .section("Music")
        .link(base + "theme-3.mp3", "Theme song", "MP3");
}

// A letter's page lists its films; the two collections list every fifth letter's.
bool listsInitial(std::string_view stem, char initial) {
    if (stem == "number")
        return initial == '#';
    return stem.size() == 1 ? stem.front() == initial : (initial - 'a') % 5 == 0;
}

std::string addressOf(const Request& request) {
    return request.rawPath + (request.rawQuery.empty() ? "" : "?" + request.rawQuery);
}

void addFilms(Page& page, const FilmsOfInitial& row) {
    int number = 1;
    for (const std::string_view title : row.titles) {
        const std::string stem = std::string("film-") + (row.initial == '#' ? '0' : row.initial);
        const bool isM4v = number == 3;
        page.link("/files/" + stem + "-" + std::to_string(number) + (isM4v ? ".m4v" : ".mp4"),
                  title, isM4v ? "M4V" : "MP4");
        ++number;
    }
}
}

Answer showPage(Site& /*site*/, const Request& request) {
    const std::string address = addressOf(request);
    const std::string title = titleOf(address, tvShowCatalogue());
    if (title.empty())
        return errorAnswer(404, "No such show.");
    Page page(title);
    page.paragraph(address.starts_with("/db/") ? "From the forum: all episodes in one thread."
                                               : "All episodes, to stream or download.");
    addEpisodes(page, fileStemOf(address));
    return page.answer();
}

Answer moviePage(Site& /*site*/, const Request& request) {
    const std::string title = titleOf(request.path, movieCatalogue());
    if (title.empty())
        return errorAnswer(404, "No such list of films.");
    const std::string stem = fileStemOf(request.path);
    Page page(title);
    for (const FilmsOfInitial& row : films)
        if (listsInitial(stem, row.initial))
            addFilms(page, row);
    return page.answer();
}

Addresses showAddresses() {
    return addressesOf(tvShowCatalogue());
}

Addresses movieAddresses() {
    return addressesOf(movieCatalogue());
}
}
