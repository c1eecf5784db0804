#include "demo/Misbehaviour.h"
#include "demo/Page.h"
#include "demo/Pages.h"

namespace vistrel::demo {

Answer misbehavioursPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Misbehaviour");
    page.paragraph("Any address accepts these query parameters, several at once too.")
        .section("A film");
    for (const MisbehaviourExample& example : misbehaviourExamples())
        page.link("/media/harbour-at-dawn.mp4?" + std::string(example.query), example.title,
                  example.query);
    page.section("A page");
    for (const std::string_view query :
         {"delay=3", "delay=99999", "slow=1", "status=503", "reset=0"})
        page.link("/music/?" + std::string(query), query);
    return page.answer();
}
}
