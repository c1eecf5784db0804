#pragma once
#include "demo/Answer.h"

#include <string>
#include <string_view>
#include <vector>

/// The pages of the site. Each answers one route; the routes are in Routes.cpp.
namespace vistrel::demo {
struct Site;

/// An address and what is there, for the index page and for --list.
struct Address {
    std::string address;
    std::string title;
};
using Addresses = std::vector<Address>;

Answer indexPage(Site& site, const Request& request);

Answer showPage(Site& site, const Request& request);
Answer moviePage(Site& site, const Request& request);
Addresses showAddresses();
Addresses movieAddresses();

Answer musicPage(Site& site, const Request& request);

Answer partnerPage(Site& site, const Request& request);
Addresses partnerAddresses();

Answer membersPage(Site& site, const Request& request);
Answer membersLogin(Site& site, const Request& request);
Answer membersLogout(Site& site, const Request& request);
Answer membersFile(Site& site, const Request& request);
Answer postedFormPage(Site& site, const Request& request);
Answer postedFormFile(Site& site, const Request& request);
Answer rotatingPage(Site& site, const Request& request);
Answer rotatingFile(Site& site, const Request& request);

Answer mediaPage(Site& site, const Request& request);
Answer mediaFile(Site& site, const Request& request);
Answer episodeFile(Site& site, const Request& request);
Addresses mediaAddresses();

Answer attachmentsPage(Site& site, const Request& request);
Answer attachmentFile(Site& site, const Request& request);
Addresses attachmentAddresses();

Answer redirectsPage(Site& site, const Request& request);
Answer redirection(Site& site, const Request& request);
Addresses redirectAddresses();

Answer misbehavioursPage(Site& site, const Request& request);
Answer framesPage(Site& site, const Request& request);

Answer bigFile(Site& site, const Request& request);
Answer bigFileDigest(Site& site, const Request& request);
Answer fileDigest(Site& site, const Request& request);

Answer adScript(Site& site, const Request& request);
Answer searchAdScript(Site& site, const Request& request);
Answer adsPage(Site& site, const Request& request);
Answer serveAd(Site& site, const Request& request);
Answer adLandingPage(Site& site, const Request& request);
Answer adWebApp(Site& site, const Request& request);
Answer adFrame(Site& site, const Request& request);
Answer adPing(Site& site, const Request& request);
Answer adClickPing(Site& site, const Request& request);
Answer adLogPage(Site& site, const Request& request);

Answer postCounter(Site& site, const Request& request);
Answer hitCounter(Site& site, const Request& request);
Answer echo(Site& site, const Request& request);
}
