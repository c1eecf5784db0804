// Every event in every state of an ad, as in the table in docs/ads.md.
#include "ads/Object/GADPrivateUtilities.h"
#include "tests/ads/BannerTest.h"

#include <fstream>
#include <regex>

namespace vistrel {
namespace {

constexpr std::array kStates{"Idle",       "FetchingScript", "ScriptFailed", "BuildingRequest",
                             "FetchingAd", "LoadingAd",      "Shown",        "Failed"};
constexpr const char* kKept = "=";
constexpr const char* kImpossible = "—";

std::vector<std::string> cellsOf(const std::string& line) {
    static const std::regex kCell("[^| ]([^|]*[^| ])?");
    return {std::sregex_token_iterator(line.begin(), line.end(), kCell), {}};
}

/// Maps event and state to "State", "State, delegate's event", or one of the two marks.
std::map<std::string, std::map<std::string, std::string>> documentedTable() {
    std::map<std::string, std::map<std::string, std::string>> table;
    std::ifstream page(SOURCE_FOLDER "/docs/ads.md");
    std::vector<std::string> states;
    for (std::string line; std::getline(page, line);) {
        const auto cells = cellsOf(line);
        if (cells.size() == kStates.size() + 1 && cells[1] == kStates[0])
            states = cells;
        else if (cells.size() == states.size() && !states.empty() && cells[0][0] != '-')
            for (std::size_t i = 1; i < cells.size(); ++i)
                table[cells[0]][states[i]] = cells[i];
        else if (cells.size() != states.size())
            states.clear();
    }
    return table;
}

class StateTable : public BannerTest,
                   public testing::WithParamInterface<std::tuple<std::size_t, std::size_t>> {
protected:
    using Answer = support::ScriptedAnswer;
    using S = StateTable;
    struct Event {
        const char* name;
        void (StateTable::*act)();
        void (*answer)(Answer&) = nullptr; ///< of the file that the state waits for
        const char* url = "";              ///< to which the hidden page goes
    };
    static const Event kEvents[17];

    GADObjectPrivate& object() {
        return *GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(&banner());
    }
    bool hasHiddenPage() { return object().state() == GADAdState::BuildingRequest; }
    const Event& event() const { return kEvents[std::get<1>(GetParam())]; }

    void ask() { banner().loadRequest(nullptr); }
    void askInTheBackground() {
        application().finishLaunching();
        leave();
        ask();
    }
    void askOnAnOldSystem() {
        phoneIdentity().systemVersion = "2.2.1";
        ask();
    }
    void arrive() { advance(6); }
    void giveAddress() { go(kAddress); }
    void finish() { page().finishLoad(); }
    void hiddenPageGoes() { go(event().url); }
    void adPageGivesAnAddress() {
        banner().webView()->loadHTMLStringBaseURL("", std::nullopt);
        turn();
        host::WebNavigation navigation;
        navigation.url = "gmsg://ads/loadAdURL?url=http://ads.example/";
        webEngine().pages().back()->navigateFrame(navigation);
    }
    void adPageLoads() { object().webViewDidFinishLoad(); }
    void adPageFails() { object().webViewDidFailLoad(); }
    void leave() { application().setState(UIApplicationState::Background); }

    static void isEmpty(Answer& answer) { answer.body(""); }
    static void isRejected(Answer& answer) { answer.status(400); }
    static void isBroken(Answer& answer) { answer.status(503); }
    static void isLost(Answer& answer) {
        answer.fails(host::TransferErrorKind::ConnectionLost, "lost");
    }

    void reach(GADAdState state) {
        auto& script = network().at(kScriptURL).after(5).body("script");
        auto& ad = network().at(kAdURL).after(5).body("<p>Ad</p>");
        if (state == GADAdState::ScriptFailed)
            script.status(404);
        if (event().answer &&
            (state == GADAdState::FetchingScript || state == GADAdState::FetchingAd))
            event().answer(state == GADAdState::FetchingScript ? script : ad);
        for (const auto step : {&S::ask, &S::arrive, &S::giveAddress, &S::arrive, &S::finish}) {
            if (object().state() == state)
                break;
            if (state == GADAdState::Failed && hasHiddenPage())
                go("gmsg://ads/loadAdURL?errors=bad");
            else
                (this->*step)();
            turn();
        }
        ASSERT_EQ(object().state(), state);
        takeEvents();
    }

    static constexpr const char* kAddress =
        "gmsg://ads/loadAdURL?url=http%3A//ads.example/ad%3Fid%3D1";
};

const StateTable::Event StateTable::kEvents[] = {
    {"load", &S::ask},
    {"load in the background", &S::askInTheBackground},
    {"load on a system that is too old", &S::askOnAnOldSystem},
    {"the file arrives", &S::arrive},
    {"the file is empty", &S::arrive, isEmpty},
    {"status 400", &S::arrive, isRejected},
    {"status 503", &S::arrive, isBroken},
    {"the connection is lost", &S::arrive, isLost},
    {"the hidden page gives an address", &S::hiddenPageGoes, nullptr, kAddress},
    {"the hidden page gives no address", &S::hiddenPageGoes, nullptr,
     "gmsg://ads/loadAdURL?url=no%20address"},
    {"the hidden page reports errors", &S::hiddenPageGoes, nullptr,
     "gmsg://ads/loadAdURL?errors=bad"},
    {"the hidden page refuses", &S::hiddenPageGoes, nullptr, "gmsg://ads/invalidRequest"},
    {"the hidden page is unable", &S::hiddenPageGoes, nullptr, "gmsg://ads/unableToServe"},
    {"the ad's page gives an address", &S::adPageGivesAnAddress},
    {"the ad's page has loaded", &S::adPageLoads},
    {"the ad's page fails", &S::adPageFails},
    {"the application leaves", &S::leave},
};

TEST_P(StateTable, IsAsDocumented) {
    const char* state = kStates[std::get<0>(GetParam())];
    SCOPED_TRACE(std::string(event().name) + " in " + state);
    static const auto table = documentedTable();
    ASSERT_TRUE(table.contains(event().name));
    const std::string& expected = table.at(event().name).at(state);

    ASSERT_NO_FATAL_FAILURE(reach(static_cast<GADAdState>(std::get<0>(GetParam()))));
    const bool needsHiddenPage = std::string(event().name).starts_with("the hidden page");
    ASSERT_EQ(expected == kImpossible, needsHiddenPage && !hasHiddenPage());
    if (expected == kImpossible)
        return;
    (this->*event().act)();
    turn();
    std::string outcome = kStates[static_cast<std::size_t>(object().state())];
    const std::string told = takeEvents();
    if (outcome == state && told.empty())
        outcome = kKept;
    EXPECT_EQ(outcome + (told.empty() ? "" : ", " + told), expected);

    const std::weak_ptr<GADWebView> webView = banner().webView();
    letGoOfBanner();
    advance(5);
    EXPECT_TRUE(webView.expired());
    EXPECT_TRUE(webEngine().pages().empty());
    EXPECT_EQ(network().runningTransfers(), 0);
}

INSTANTIATE_TEST_SUITE_P(Ads, StateTable,
                         testing::Combine(testing::Range<std::size_t>(0, kStates.size()),
                                          testing::Range<std::size_t>(0, 17)));

}
}
