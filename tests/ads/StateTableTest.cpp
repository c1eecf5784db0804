// Every event in every state of an ad, as the table in docs/ads.md has it.
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/View/GADWebView.h"
#include "platform/uikit/UIApplication.h"
#include "tests/ads/BannerTest.h"

#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <tuple>

namespace vistrel {
namespace {

constexpr std::array kStates{"Idle",       "FetchingScript", "ScriptFailed", "BuildingRequest",
                             "FetchingAd", "LoadingAd",      "Shown",        "Failed"};
constexpr const char* kKept = "=";
constexpr const char* kImpossible = "—";

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream row(line);
    for (std::string cell; std::getline(row, cell, '|');) {
        const auto first = cell.find_first_not_of(' ');
        if (first != std::string::npos)
            cells.push_back(cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
    return cells;
}

/// Event and state to "State", "State, delegate's event", or one of the two marks.
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
    using Script = std::function<void(support::ScriptedAnswer&)>;
    struct Event {
        const char* name;
        std::function<void(StateTable&)> act;
        Script answer = {}; ///< of the file that the state waits for
    };
    static const std::vector<Event>& events();

    GADObjectPrivate& object() {
        return *GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(&banner());
    }
    bool hasHiddenPage() { return object().state() == GADAdState::BuildingRequest; }

    void reach(GADAdState state, const Script& answer) {
        auto& script = network().at(kScriptURL).after(5).body("script");
        auto& ad = network().at(kAdURL).after(5).body("<p>Ad</p>");
        if (state == GADAdState::ScriptFailed)
            script.status(404);
        if (answer && (state == GADAdState::FetchingScript || state == GADAdState::FetchingAd))
            answer(state == GADAdState::FetchingScript ? script : ad);
        const std::function<void()> steps[] = {
            [this] { banner().loadRequest(nullptr); }, [this] { advance(6); },
            [this] { go("gmsg://ads/loadAdURL?url=http%3A//ads.example/ad%3Fid%3D1"); },
            [this] { advance(6); },
            [this] {
                page().finishLoad();
            }};
        for (const auto& step : steps) {
            if (object().state() == state)
                break;
            if (state == GADAdState::Failed && hasHiddenPage())
                go("gmsg://ads/loadAdURL?errors=bad");
            else
                step();
            turn();
        }
        ASSERT_EQ(object().state(), state);
        takeEvents();
    }
};

const std::vector<StateTable::Event>& StateTable::events() {
    const auto hidden = [](const char* url) {
        return [url](StateTable& test) {
            test.go(url);
        };
    };
    const auto arrives = [](StateTable& test) {
        test.advance(6);
    };
    static const std::vector<Event> all{
        {"load",
         [](StateTable& test) {
             test.banner().loadRequest(nullptr);
         }},
        {"load in the background",
         [](StateTable& test) {
             UIApplication::sharedApplication().finishLaunching();
             UIApplication::sharedApplication().setState(UIApplicationState::Background);
             test.banner().loadRequest(nullptr);
         }},
        {"load on a system that is too old",
         [](StateTable& test) {
             test.phone().version = "2.2.1";
             test.banner().loadRequest(nullptr);
         }},
        {"the file arrives", arrives},
        {"the file is empty", arrives,
         [](auto& answer) {
             answer.body("");
         }},
        {"status 400", arrives,
         [](auto& answer) {
             answer.status(400);
         }},
        {"status 503", arrives,
         [](auto& answer) {
             answer.status(503);
         }},
        {"the connection is lost", arrives,
         [](auto& answer) {
             answer.fails(host::TransferErrorKind::ConnectionLost, "lost");
         }},
        {"the hidden page gives an address",
         hidden("gmsg://ads/loadAdURL?url=http%3A//ads.example/ad%3Fid%3D1")},
        {"the hidden page gives no address", hidden("gmsg://ads/loadAdURL?url=no%20address")},
        {"the hidden page reports errors", hidden("gmsg://ads/loadAdURL?errors=bad")},
        {"the hidden page refuses", hidden("gmsg://ads/invalidRequest")},
        {"the hidden page is unable", hidden("gmsg://ads/unableToServe")},
        {"the ad's page gives an address",
         [](StateTable& test) {
             test.banner().webView()->loadHTMLStringBaseURL("", std::nullopt);
             test.turn();
             host::WebNavigation navigation;
             navigation.url = "gmsg://ads/loadAdURL?url=http://ads.example/";
             test.webEngine().pages().back()->navigateFrame(navigation);
         }},
        {"the ad's page has loaded",
         [](StateTable& test) {
             test.object().webViewDidFinishLoad();
         }},
        {"the ad's page fails",
         [](StateTable& test) {
             test.object().webViewDidFailLoad();
         }},
        {"the application leaves",
         [](StateTable&) {
             UIApplication::sharedApplication().setState(UIApplicationState::Background);
         }},
    };
    return all;
}

TEST_P(StateTable, IsAsDocumented) {
    const char* state = kStates[std::get<0>(GetParam())];
    const Event& event = events()[std::get<1>(GetParam())];
    SCOPED_TRACE(std::string(event.name) + " in " + state);
    static const auto table = documentedTable();
    ASSERT_TRUE(table.contains(event.name));
    const std::string& expected = table.at(event.name).at(state);

    ASSERT_NO_FATAL_FAILURE(reach(static_cast<GADAdState>(std::get<0>(GetParam())), event.answer));
    const bool needsHiddenPage = std::string(event.name).starts_with("the hidden page");
    ASSERT_EQ(expected == kImpossible, needsHiddenPage && !hasHiddenPage());
    if (expected == kImpossible)
        return;
    event.act(*this);
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
