#include "settings/SettingsCheck.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(SettingsCheck, AFileWithoutMistakesIsAccepted) {
    EXPECT_THAT(settingMistakes(""), IsEmpty());
    EXPECT_THAT(settingMistakes("# comment\n\n[site]\r\nbase-url = https://films.example\r\n"
                                "[partner-8]\ntitle=A=B\naddress=/here/\n[manners]\ncareful=yes\n"
                                "[mail]\nport=587\nsecurity=starttls\nuser=me\n"
                                "[ads]\nenabled=no\nstatic-content-host=ads.example:8080\n"
                                "click-server-domain=\nreachability-host=ads.example\n"
                                "ad-server-origin=http://ads.example\n"
                                "location-key=00112233445566778899aabbccddEEFF"),
                IsEmpty());
}

TEST(SettingsCheck, EachMistakeIsNamedWithItsLine) {
    const struct {
        const char* text;
        const char* mistake;
    } cases[] = {
        {"[site]\nbase_url=http://a.example", "2: there is no setting 'base_url' in [site]"},
        {"[sites]\n\nbase-url=http://a.example", "3: there is no setting 'base-url' in [sites]"},
        {"base-url=http://a.example", "1: there is no setting 'base-url' in []"},
        {"[partner-9]\ntitle=Nine", "2: there is no setting 'title' in [partner-9]"},
        {"[site]\nbase-url=films.example", "2: base-url needs an http or https address"},
        {"[site]\nbase-url=ftp://films.example", "2: base-url needs an http or https address"},
        {"[partner-1]\naddress=here", "2: address needs an http or https address, or a path"},
        {"[manners]\ncareful=true", "2: careful needs 'yes' or 'no', not 'true'"},
        {"[mail]\nport=0", "2: port needs a port number, not '0'"},
        {"[mail]\nport=65536", "2: port needs a port number, not '65536'"},
        {"[mail]\nport=25x", "2: port needs a port number, not '25x'"},
        {"[mail]\nsecurity=ssl", "2: security needs 'tls', 'starttls' or 'none', not 'ssl'"},
        {"[ads]\nstatic-content-host=http://a", "2: static-content-host needs a host's name"},
        {"[ads]\nlocation-key=1234", "2: location-key needs 32 hexadecimal digits, not '1234'"},
        {"[site]\nhttp://a.example", "2: 'http://a.example' is neither [group] nor key=value"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(settingMistakes(each.text), ElementsAre(HasSubstr(each.mistake))) << each.text;
    EXPECT_THAT(settingMistakes("[a]\nb=1\n[mail]\nport=x\n"),
                ElementsAre(HasSubstr("2: "), HasSubstr("4: ")));
}

}
}
