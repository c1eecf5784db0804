"""The main job by keys only; what they do is observed as a screen reader would. Arguments: the application's process."""
import os
import sys
import time

from Reader import eventually, focused, keys, names, wait_for

process = int(sys.argv[1])


def go(key, role, name=""):
    """Presses the key until the focus is there."""
    trail = []
    for _ in range(25):
        before = focused()
        trail.append(before)
        keys(key)
        end = time.monotonic() + 1
        while time.monotonic() < end:
            now = focused()
            if now and now[0] == role and now[1].startswith(name):
                print("ok:", key, "to", *now, flush=True)
                return
            if now and now != before:
                break  # nothing has it while a page hands it on
            time.sleep(0.1)
    print("FAILED:", key, "never comes to", role, name, "but to", *trail)
    sys.exit(1)


wait_for("list item", "TV Shows")
go("Tab", "push button", "Help")
go("Tab", "push button", "Credits")
go("Down", "list item", "TV Shows")
go("Down", "list item", "Open Reel")
keys("Return")
wait_for("heading", "Open Reel")
wait_for("push button", "Refresh")  # the page has come
go("Tab", "push button", "Vistrel")
go("Tab", "filler", "WebKitWebView")
keys("Tab", "Tab", "Return")  # past the link to the site, on the first film
wait_for("push button", "Download")
go("Tab", "push button", "Download")
keys("space")
wait_for("dialog", "Download Succeeded")
keys("Return")
wait_for("push button", "Done!")
keys("alt+Left")
wait_for("heading", "Open Reel")
go("Tab", "push button", "Home")  # out of the page again
keys("Escape")
go("Down", "list item", "Downloads")
keys("Return")
eventually(lambda: len(names("list item")) == 1, "the file is listed")
go("Down", "list item")
keys("shift+F10")
go("Down", "push button", "Rename…")
keys("Return")
wait_for("dialog", "Rename")
keys("dead_circumflex", "e", "ctrl+a", "ctrl+x", "ctrl+v")
keys("ctrl+v", "Return")
eventually(lambda: "".join(names("list item")).count("\u00ea") == 2, "a dead key has made a letter, which was cut and pasted twice")
eventually(lambda: focused()[0] == "list item", "the row has the keys again")
keys("Return")
wait_for("image", "Video")
keys("Right")
wait_for("slider", "Position")
keys("Escape")
eventually(lambda: len(names("list item")) == 1, "the list is back")
keys("ctrl+q")


def has_ended():
    with open(f"/proc/{process}/stat") as status:
        return status.read().rsplit(")", 1)[1].split()[0] == "Z"


eventually(lambda: not os.path.exists(f"/proc/{process}") or has_ended(), "Ctrl+Q ends the application")
