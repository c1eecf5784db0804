#include "bench/support/PaintingCounter.h"
#include "catalogue/TVShowsViewController.h"
#include "platform/uikit/SceneWalk.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UIWindow.h"
#include "tests/support/DeterministicHost.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <set>

namespace vistrel {

namespace {

constexpr int kListWidth = 265;
constexpr int kListHeight = 155;
constexpr int kRowHeight = 44;
constexpr double kStep = 3; ///< points from frame to frame

bool report(const char* name, std::size_t ours, std::size_t bound, const char* unit) {
    // Painting nothing at all would be wrong too.
    const bool holds = ours > 0 && ours <= bound;
    std::printf("%s: %zu %zu %s %.2fx 1.00x %s\n", name, ours, bound, unit,
                static_cast<double>(ours) / static_cast<double>(bound), holds ? "ok" : "short");
    return holds;
}

/// Scrolls slowly through all shows, frame by frame.
bool scrollThroughShows() {
    auto window = std::make_shared<UIWindow>();
    window->makeKeyAndVisible();
    auto screen = std::make_shared<TVShowsViewController>();
    window->addSubview(screen->view());
    UITableView& table = *screen->tableView();
    PaintingCounter counter(kListWidth, kRowHeight);
    std::set<UITableViewCell*> cells;
    SceneWalk::walk(*window, counter);
    const double end = table.contentSize().height - kListHeight;
    for (double y = 0; y < end + kStep; y += kStep) {
        table.setContentOffset({0, std::min(y, end)});
        SceneWalk::walk(*window, counter);
        for (const auto& cell : table.visibleCells())
            cells.insert(cell.get());
    }
    const std::size_t rows = screen->tvShowList().size();
    const bool painted = report("show rows painted on a way through the list, against appearances",
                                counter.paintings(), rows, "paintings");
    const bool made = report("cells made, against those that fit and two", cells.size(),
                             kListHeight / kRowHeight + 1 + 2, "cells");
    window->removeFromSuperview();
    return painted && made;
}

}
}

int main() {
    vistrel::support::DeterministicHost host;
    const bool holds = vistrel::scrollThroughShows();
    vistrel::UIApplication::resetSharedApplication();
    return holds ? 0 : 1;
}
