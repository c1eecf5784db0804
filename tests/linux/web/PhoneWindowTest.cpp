#include "tests/linux/web/RealWindow.h"

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

TEST_F(PhoneWindowTest, FilesThatAreDroppedOnItAreReportedByTheirAddresses) {
    std::vector<std::string> dropped;
    shown_.setDropHandler([&](const std::string& address) { dropped.push_back(address); });
    const auto controllers = NativeReference<GListModel>::adopt(
        gtk_widget_observe_controllers(shown_.screen().widget()));
    NativeReference<GObject> target;
    for (guint i = 0; i < 20 && !GTK_IS_DROP_TARGET(target.get()); ++i)
        target = NativeReference<GObject>::adopt(g_list_model_get_object(controllers.get(), i));
    ASSERT_TRUE(target);
    GFile* files[] = {g_file_new_for_path("/tmp/A Film.mp4"), g_file_new_for_path("/tmp/b.mp3")};
    GValue value = G_VALUE_INIT;
    g_value_init(&value, GDK_TYPE_FILE_LIST);
    g_value_take_boxed(&value, gdk_file_list_new_from_array(files, 2));
    gboolean taken = FALSE;
    g_signal_emit_by_name(target.get(), "drop", &value, 1.0, 1.0, &taken);
    g_value_unset(&value);
    for (GFile* file : files)
        g_object_unref(file);
    EXPECT_TRUE(taken);
    EXPECT_THAT(dropped, ElementsAre("file:///tmp/A%20Film.mp4", "file:///tmp/b.mp3"));
}

TEST_F(PhoneWindowTest, TheMouseDragsAFileOutToAnotherWindow) {
    struct Row : UIView {
        using UIView::UIView;
        std::optional<std::string> fileDraggedFrom(CGPoint) override { return "/A Film.mp4"; }
    };
    window_->addSubview(std::make_shared<Row>(CGRectMake(0, 0, 320, 480)));
    GtkWidget* other = gtk_window_new();
    gtk_window_set_default_size(GTK_WINDOW(other), 900, 700);
    GtkDropTarget* target = gtk_drop_target_new(GDK_TYPE_FILE_LIST, GDK_ACTION_COPY);
    std::string dropped;
    const auto connection = connectSignal<gboolean(const GValue*, double, double)>(
        target, "drop", [&](const GValue* value, double, double) -> gboolean {
            GSList* files =
                gdk_file_list_get_files(static_cast<GdkFileList*>(g_value_get_boxed(value)));
            char* path = g_file_get_path(G_FILE(files->data));
            dropped = path;
            g_free(path);
            g_slist_free(files);
            return TRUE;
        });
    gtk_widget_add_controller(other, GTK_EVENT_CONTROLLER(target));
    gtk_window_present(GTK_WINDOW(other));
    turnFor(0.3);
    shown_.present(); // on top, in the upper left corner
    turnFor(0.3);
    std::vector<std::string> returned;
    shown_.setDropHandler([&](const std::string& address) { returned.push_back(address); });
    const auto moveMouse = [](const std::vector<std::string>& steps) {
        for (const std::string& step : steps) {
            EXPECT_EQ(std::system(("xdotool " + step).c_str()), 0);
            turnFor(0.2);
        }
    };
    moveMouse({"mousemove 100 100 mousedown 1", "mousemove 500 120", "mousemove 510 130",
               "mousemove 110 100", "mousemove 100 100", "mouseup 1"});
    EXPECT_TRUE(returned.empty()) << "the library's own files are not offered to it";
    EXPECT_EQ(dropped, "");
    moveMouse({"mousemove 100 100 mousedown 1", "mousemove 200 100", "mousemove 500 120",
               "mousemove 600 200", "mousemove 610 210", "mouseup 1"});
    turnUntil([&] { return !dropped.empty(); });
    EXPECT_EQ(dropped, host::current().files->machinePath("/A Film.mp4"));
    gtk_window_destroy(GTK_WINDOW(other));
}

}
}
