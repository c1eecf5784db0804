#include "tests/linux/web/LoopTurns.h"
#include "tests/linux/web/RealWindow.h"

#include <utility>

namespace vistrel {
namespace {

using PhoneWindowTest = RealWindow;

TEST_F(PhoneWindowTest, TheWindowOpensWithTheSizeThatTheUserGaveItUnlessTheDisplayIsSmaller) {
    const auto shownSize = [](double scale) {
        PhoneWindow window(scale);
        window.present();
        GtkWidget* widget = window.screen().widget();
        turnUntil([widget] { return gtk_widget_get_width(widget) > 0; });
        turnFor(0.2);
        return std::pair(gtk_widget_get_width(widget), gtk_widget_get_height(widget));
    };
    const auto automatic = shownSize(0);
    {
        PhoneWindow window(0);
        window.present();
        turnFor(0.2);
        gtk_window_set_default_size(GTK_WINDOW(gtk_widget_get_root(window.screen().widget())), 400,
                                    500);
        turnFor(0.2);
    }
    EXPECT_NE(automatic, std::pair(400, 500));
    EXPECT_EQ(shownSize(0), std::pair(400, 500));
    EXPECT_EQ(shownSize(1), std::pair(320, 480));
    EXPECT_EQ(shownSize(8), std::pair(1280, 1024)) << "the display's size";
}

}
}
