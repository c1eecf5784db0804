"""The main job by a screen reader's actions: no pointer, no keys. Arguments: the program, its device root, a film's address.

GTK 4.8 cannot show a page's own elements to screen readers; the film's link is followed by handing its address to the
running application.
"""
import subprocess
import sys

from Reader import Atspi, eventually, find, names, press, wait_for

program, device_root, film = sys.argv[1:]

wait_for("list item", "TV Shows")
order = [name for name in names("push button") + names("list item") if name in ("Help", "Credits", "TV Shows", "Movies")]
eventually(lambda: order == ["Help", "Credits", "TV Shows", "Movies"], "the menu is read as it is shown")
eventually(lambda: find("list item", "Movies").get_description() == "2 / 4", "a row says which one it is")
find("list item", "Movies").get_component_iface().get_extents(Atspi.CoordType.SCREEN)  # must not be complained about
menu = find("list item", "TV Shows").get_parent().get_action_iface()
for i in range(menu.get_n_actions()):
    if menu.get_action_name(i) == "accessible.next":
        menu.do_action(i)
eventually(lambda: not find("list item", "TV Shows"), "the rows below can be reached")

press("list item", "Open Reel")
wait_for("heading", "Open Reel")
subprocess.run([program, "--device-root", device_root, film], check=True)
press("push button", "Download")
wait_for("dialog", "Download Succeeded")
press("push button", "OK")
wait_for("push button", "Done!")
for back in ("127.0.0.1", "Open Reel", "Vistrel"):
    press("push button", back)
press("list item", "Downloads")
eventually(lambda: len(names("list item")) == 1, "the file is listed")
press("list item")


def slider(name):
    """The controls hide after a while; pressing the film brings them back."""
    found = find("slider", name)
    if not found:
        find("image", "Video").get_action_iface().do_action(0)
    return found and found.get_value_iface()


wait_for("image", "Video")
eventually(lambda: slider("Position").get_current_value() > 0, "the film plays")
eventually(lambda: slider("Volume").set_current_value(0.25), "the volume is set")
eventually(lambda: abs(slider("Volume").get_current_value() - 0.25) < 0.01, "the volume is read")
slider("Volume")
press("push button", "Done")
eventually(lambda: len(names("list item")) == 1, "the list is back")
