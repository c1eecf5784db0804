#include "tour/HelpTour.h"

#include "platform/foundation/NSFileManager.h"
#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UINavigationController.h"
#include "tour/TourHands.h"
#include "tour/TourStage.h"

#include <memory>
#include <string>

namespace vistrel {

namespace {

using Role = UIAccessibilityRole;

constexpr const char* kDraftsFolder = "/var/mobile/Library/Mail/Drafts";

std::function<void()> tapOn(const char* button) {
    return [button] {
        TourHands::tap(Role::Button, button);
    };
}

std::function<bool()> sees(Role role, const char* label) {
    return [role, label] {
        return TourHands::find(role, label).has_value();
    };
}

bool isMenuFree() {
    return TourStage::isMenuOnTop() && !TourStage::navigation().modalViewController() &&
           TourHands::count(Role::Alert) == 0;
}

std::size_t draftCount() {
    return NSFileManager::defaultManager().contentsOfDirectoryAtPath(kDraftsFolder).names.size();
}

void add(std::vector<TourStep>& steps, const char* name, const char* says,
         std::function<void()> act, std::function<bool()> holds) {
    steps.push_back({name, says, std::move(act), std::move(holds), {}, 8, 0.8});
}

void addTexts(std::vector<TourStep>& steps) {
    add(steps, "help", "Help offers texts and support", tapOn("Help"),
        sees(Role::Button, "How To Use"));
    add(steps, "how-to", "how the application is used", tapOn("How To Use"),
        sees(Role::Button, "Got it"));
    add(steps, "faq-short", "questions and answers, a text longer than its box", tapOn("FAQ"),
        sees(Role::Button, "Close"));
    add(steps, "faq-short-closed", "closed", tapOn("Close"), isMenuFree);
    add(steps, "help-again", "Help once more", tapOn("Help"), sees(Role::Button, "FAQ"));
    add(steps, "faq-long", "from here the FAQ begins with the site being down", tapOn("FAQ"),
        sees(Role::Button, "Close"));
    add(
        steps, "faq-scrolled", "a drag scrolls the text inside the box",
        [] {
            TourHands::drag({160, 280}, {160, 160}, 0.3);
        },
        sees(Role::Button, "Close"));
    add(steps, "faq-long-closed", "closed", tapOn("Close"), isMenuFree);
}

void addSupport(std::vector<TourStep>& steps) {
    add(steps, "help-support", "Help for the last time", tapOn("Help"),
        sees(Role::Button, "Support"));
    add(steps, "support", "the kinds of support, in three rows", tapOn("Support"),
        sees(Role::Button, "Website Support"));
    add(steps, "application-support", "by a message or by mail", tapOn("Application Support"),
        sees(Role::Button, "Email"));
    if (!MFMailComposeViewController::canSendMail()) {
        add(steps, "support-closed", "no mail account is configured: cancelled", tapOn("Cancel"),
            isMenuFree);
        return;
    }
    const auto draftsBefore = std::make_shared<std::size_t>(0);
    add(
        steps, "composer", "Email opens the composer, filled in",
        [draftsBefore] {
            *draftsBefore = draftCount();
            TourHands::tap(Role::Button, "Email");
        },
        sees(Role::Button, "Send"));
    add(steps, "mail-sent", "Send sends it; no draft is left", tapOn("Send"),
        [draftsBefore] { return isMenuFree() && draftCount() == *draftsBefore; });
}

}

std::vector<TourStep> helpTour() {
    std::vector<TourStep> steps;
    add(steps, "menu-again", "back to the main menu", tapOn("Vistrel"), isMenuFree);
    addTexts(steps);
    addSupport(steps);
    add(steps, "about", "Credits opens the about page", tapOn("Credits"),
        sees(Role::Button, "Donate"));
    add(steps, "about-closed", "Done closes it", tapOn("Done"), isMenuFree);
    return steps;
}

}
