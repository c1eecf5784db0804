// Cookies, passwords, certificates and files: what pages and sites may learn.
#include "tests/linux/web/WebKitPageTest.h"

namespace vistrel {
namespace {

using testing::Not;

using WebKitSecretsTest = WebKitPageTest;

TEST_F(WebKitSecretsTest, ACookieThatAPageSetsIsInTheJarBeforeTheNextNavigationIsAsked) {
    std::string atRedirect = "(not asked)";
    client_.onNavigation = [&](const host::WebNavigation& navigation) {
        if (navigation.isRedirect)
            atRedirect = jarValue("session");
    };
    server_.servePage("/members", "welcome");
    server_.redirect("/login", "/members",
                     {.headers = {{"Set-Cookie", "session=open; Path=/; HttpOnly"}}});
    ASSERT_TRUE(load("/login"));
    EXPECT_EQ(atRedirect, "open");
    EXPECT_EQ(server_.seen("/members").at(0).cookie, "session=open");
}

TEST_F(WebKitSecretsTest, CookiesOfTheJarGoWithThePagesRequestsAndDeletionsGoBothWays) {
    server_.servePage("/page", "here");
    jar_.set(server_.url("/"), "taste=sweet; Path=/; Max-Age=3600");
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(server_.seen("/page").at(0).cookie, "taste=sweet");

    evaluate("document.cookie = 'taste=; Path=/; Max-Age=0'");
    EXPECT_TRUE(turnUntil([&] { return jarValue("taste").empty(); }));

    evaluate("document.cookie = 'other=1; Path=/'");
    ASSERT_TRUE(turnUntil([&] { return jarValue("other") == "1"; }));
    jar_.set(server_.url("/"), "other=; Path=/; Max-Age=0");
    turnFor(0.3);
    ASSERT_TRUE(load("/page"));
    EXPECT_EQ(server_.seen("/page").at(1).cookie, "");
    EXPECT_EQ(jarValue("other"), "");
}

TEST_F(WebKitSecretsTest, CookiesWithAnExpiryAreThereInTheNextRun) {
    server_.serve("/page", {.body = "here",
                            .headers = {{"Set-Cookie", "kept=yes; Path=/; Max-Age=3600"},
                                        {"Set-Cookie", "lost=yes; Path=/"}}});
    ASSERT_TRUE(load("/page"));
    ASSERT_TRUE(turnUntil([&] { return jarValue("kept") == "yes"; }));
    turnFor(0.5);
    closePage();
    engine_.reset();
    jar_.clear();
    makeEngine();
    makePage();
    EXPECT_TRUE(turnUntil([&] { return jarValue("kept") == "yes"; }));
    EXPECT_EQ(jarValue("lost"), "");
}

TEST_F(WebKitSecretsTest, FilesOfTheMachineAreRefusedAndOwnSchemesReachTheClientOnly) {
    ASSERT_TRUE(loadPage("<iframe src='gmsg://ready?x=1'></iframe>"
                         "<script>onload=function(){location='file:///etc/passwd'}</script>"));
    ASSERT_TRUE(turnUntil([this] { return client_.wasAsked("gmsg://ready?x=1"); }));
    turnFor(0.6);
    EXPECT_THAT(client_.asked(), Contains("gmsg://ready?x=1").Times(1));
    EXPECT_EQ(page_->url(), server_.url("/page"));
    page_->load("file:///etc/passwd", {});
    turnFor(0.5);
    EXPECT_EQ(client_.finished, 1);
    EXPECT_EQ(page_->url(), server_.url("/page"));
    EXPECT_THAT(evaluate("document.documentElement.textContent"), Not(HasSubstr("root:")));
}

TEST_F(WebKitSecretsTest, ThePasswordOfASiteIsAskedForOnceAndARejectedOneAgain) {
    server_.serve("/members", {.body = "<title>In</title>", .login = "ann:secret"});
    ASSERT_TRUE(load("/members"));
    ASSERT_EQ(client_.challenges.size(), 1u);
    EXPECT_EQ(client_.challenges[0].origin + "/", server_.url("/"));
    EXPECT_EQ(client_.challenges[0].realm, "Members");
    EXPECT_TRUE(client_.challenges[0].isBasic);
    EXPECT_FALSE(client_.challenges[0].isRejected);
    EXPECT_EQ(page_->title(), "");

    client_.credential = {"ann", "wrong"};
    client_.rightCredential = {"ann", "secret"};
    ASSERT_TRUE(load("/members"));
    ASSERT_TRUE(load("/members"));
    EXPECT_TRUE(turnUntil([&] { return page_->title() == "In"; }, 5));
    ASSERT_EQ(client_.challenges.size(), 3u);
    EXPECT_TRUE(client_.challenges[2].isRejected);
}

TEST_F(WebKitSecretsTest, ASiteThatCannotProveItselfFailsAndGivesItsPlaceToANotice) {
    const TestCertificate certificate;
    TestPageServer secure(certificate);
    secure.serve("/page", {.body = "<title>Secret</title>"});
    ASSERT_TRUE(failsToLoad(secure.url("/page")));
    EXPECT_EQ(client_.failures[0].code, host::WebError::kCertificate);
    EXPECT_EQ(client_.failures[0].url, secure.url("/page"));
    EXPECT_TRUE(secure.seen().empty());

    const std::size_t asked = client_.navigations.size();
    page_->showNotice("<title>Not secure</title>", secure.url("/page"));
    ASSERT_TRUE(turnUntil([&] { return page_->title() == "Not secure"; }));
    EXPECT_EQ(page_->url(), secure.url("/page"));
    EXPECT_EQ(client_.navigations.size(), asked);
    ASSERT_TRUE(turnUntil([&] { return client_.finished == 1; }));
    page_->reload();
    ASSERT_TRUE(turnUntil([&] { return client_.failures.size() == 2; })) << "asks for the page";
}

TEST_F(WebKitSecretsTest, AGuestSharesNothingWithTheUsersPagesAndNeedsNoPlaceOnTheScreen) {
    ASSERT_TRUE(loadPage("<script>document.cookie = 'mine=1; Path=/; Max-Age=3600';"
                         "localStorage.setItem('mine', '1')</script>"));
    ASSERT_TRUE(turnUntil([&] { return jarValue("mine") == "1"; }));

    const auto shown = page_;
    session_ = host::WebSession::Guest;
    page_ = engine_->createPage(session_);
    page_->setClient(&client_);
    client_.navigations.clear();
    page_->loadHTML("<script>setTimeout(function () {"
                    "location = 'gmsg://ready?' + document.cookie +"
                    "(localStorage.getItem('mine') || '-') + !!navigator.clipboard +"
                    "!!navigator.geolocation + !!window.Notification + !!navigator.mediaDevices;"
                    "}, 50)</script>",
                    server_.url("/base"));
    ASSERT_TRUE(turnUntil([&] { return client_.asked().size() == 2; }));
    EXPECT_THAT(client_.asked(),
                ElementsAre(server_.url("/base"), "gmsg://ready?-falsefalsefalsefalse"));
    for (const auto& navigation : client_.navigations)
        EXPECT_THAT(navigation.headers, Contains(testing::Pair("User-Agent", page_->userAgent())));
    evaluate("document.cookie = 'theirs=1; Path=/; Max-Age=3600'");
    turnFor(0.2);
    EXPECT_EQ(jarValue("theirs"), "");
    page_ = shown;
}

}
}
