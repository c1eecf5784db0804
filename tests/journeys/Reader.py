"""What a screen reader does: finds, reads and operates the elements of the running application over AT-SPI."""
import subprocess
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

warnings.simplefilter("ignore", DeprecationWarning)
PATIENCE = 20  # seconds for one step on a busy machine


def elements():
    """Every element of every application, in reading order."""
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()  # kept true only by a main loop
    waiting = [desktop]
    while waiting:
        element = waiting.pop()
        try:
            children = [element.get_child_at_index(i) for i in range(element.get_child_count())]
            yield element.get_role_name(), element.get_name() or "", element
        except GLib.Error:
            continue  # it has left the screen meanwhile
        waiting.extend(child for child in reversed(children) if child)


def find(role, name=""):
    """The first element of the role whose name begins so; None for none."""
    return next((e for r, n, e in elements() if r == role and n.startswith(name)), None)


def eventually(question, what):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            answer = question()
        except (GLib.Error, AttributeError):  # not there, or no longer
            answer = None
        if answer:
            print("ok:", what, flush=True)
            return answer
        time.sleep(0.1)
    print("FAILED:", what)
    for role, name, element in elements():
        print("   ", role, repr(name), repr(element.get_description()))
    print("    the focus is on", focused())
    sys.exit(1)


def wait_for(role, name=""):
    return eventually(lambda: find(role, name), f"{role} {name}".strip())


def press(role, name=""):
    element = wait_for(role, name)
    element.get_action_iface().do_action(0)
    return element


def focused():
    """Role and name of what the toolkit's focus is on."""
    for role, name, element in elements():
        try:
            if element.get_state_set().contains(Atspi.StateType.FOCUSED):
                return role, name
        except GLib.Error:
            pass
    return None


def names(role):
    return [n for r, n, _ in elements() if r == role]


def keys(*pressed):
    subprocess.run(["xdotool", "key", *pressed], check=True)
