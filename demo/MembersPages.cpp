#include "demo/Page.h"
#include "demo/Pages.h"
#include "demo/Site.h"

namespace vistrel::demo {
namespace {
constexpr std::string_view memberCookie = "member";
constexpr std::string_view rotatingCookie = "rotating";

bool isMember(const Site& site, const Request& request) {
    return site.members.isOpen(request.cookie(memberCookie));
}

void setCookie(Answer& answer, std::string_view name, const std::string& value,
               std::string_view path) {
    answer.headers.emplace_back("Set-Cookie", std::string(name) + "=" + value + "; Path=" +
                                                  std::string(path) + "; HttpOnly; SameSite=Lax");
}
}

Answer membersPage(Site& site, const Request& request) {
    Page page("VIP Login");
    if (isMember(site, request)) {
        page.paragraph("Welcome back. This is for members only:")
            .link("/vip/members-only.mp4", "Members' Film", "Needs your login")
            .link("/vip/fetch", "Order a film by form")
            .link("/vip/logout", "Log out");
        return page.answer();
    }
    if (request.parameter("failed"))
        page.paragraph("Wrong name or password. Try demo and demo.");
    page.paragraph("One more film, for members. Name and password are both “demo”.")
        .html(R"(<form method="post" action="/vip/login">
<label>Name <input name="user" autocomplete="username" autocapitalize="off"></label>
<label>Password <input name="password" type="password" autocomplete="current-password"></label>
<button type="submit">Log in</button>
</form>)")
        .link("/vip/members-only.mp4", "Members' Film", "Refused without a login")
        .link("/vip/fetch", "Order a film by form");
    return page.answer();
}

Answer membersLogin(Site& site, const Request& request) {
    const Fields& form = request.form;
    const auto user = form.find("user");
    const auto password = form.find("password");
    const bool right = user != form.end() && user->second == "demo" && password != form.end() &&
                       password->second == "demo";
    if (!right)
        return redirectAnswer("/vip/?failed=1", 303);
    Answer answer = redirectAnswer("/vip/", 303);
    setCookie(answer, memberCookie, site.members.open(), "/");
    return answer;
}

Answer membersLogout(Site& site, const Request& request) {
    site.members.close(request.cookie(memberCookie));
    Answer answer = redirectAnswer("/vip/", 303);
    answer.headers.emplace_back("Set-Cookie", std::string(memberCookie) + "=; Path=/; Max-Age=0");
    return answer;
}

Answer membersFile(Site& site, const Request& request) {
    if (!isMember(site, request))
        return errorAnswer(403, "This film is for members. Log in first.");
    return site.media.file("paper-boats.mp4");
}

Answer postedFormPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Order a Film");
    page.paragraph("This form returns the film itself.")
        .html(R"(<form method="post" action="/vip/fetch">
<label>Film <select name="file"><option value="harbour-at-dawn.mp4">Harbour at Dawn</option>
<option value="night-tram.m4v">Night Tram</option>
<option value="short-signal.mp3">Short Signal</option></select></label>
<button type="submit">Send it</button>
</form>)");
    return page.answer();
}

Answer postedFormFile(Site& site, const Request& request) {
    const auto file = request.form.find("file");
    return site.media.file(file == request.form.end() ? "harbour-at-dawn.mp4" : file->second);
}

Answer rotatingPage(Site& site, const Request& request) {
    const std::string token = request.cookie(rotatingCookie);
    const bool known = site.rotating.isOpen(token);
    const bool lost = !token.empty() && !known;
    site.rotating.close(token);
    Page page("Rotating Session");
    if (lost) {
        page.paragraph("Session lost: this visit sent a token that was used before.");
    } else {
        page.paragraph(known ? "Session kept." : "Session begun.")
            .link("/rotate/film.mp4", "Film of this session");
    }
    page.link("/rotate/", "Visit again");
    Answer answer = page.answer();
    setCookie(answer, rotatingCookie, site.rotating.open(), "/rotate/");
    return answer;
}

Answer rotatingFile(Site& site, const Request& request) {
    if (!site.rotating.isOpen(request.cookie(rotatingCookie)))
        return errorAnswer(403, "Session lost.");
    return site.media.file("harbour-at-dawn.mp4");
}
}
