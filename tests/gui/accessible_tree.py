"""The window as screen readers see it: how its controls are found, waited for, read and acted upon."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# Seconds until something that should come is given up.
PATIENCE = 20
# What these are made of is the toolkit's own.
CLOSED = {"text", "label", "combo box", "list", "table", "tree"}


class NotFound(Exception):
    """What should have come, and did not."""


def connect():
    Atspi.init()
    # A tree that is read again and again is read from the program, and not from memory.
    Atspi.get_desktop(0).set_cache_mask(Atspi.Cache.NONE)
    Atspi.set_timeout(PATIENCE * 1000, 0)


def until(what, found):
    """What found() gives, as soon as it gives something."""
    limit = time.monotonic() + PATIENCE
    while True:
        try:
            result = found()
        except GLib.Error:
            result = None  # of a control that has just gone
        if result:
            return result
        if time.monotonic() > limit:
            raise NotFound(what)
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.01)


def children(control):
    found = (control.get_child_at_index(number) for number in range(control.get_child_count()))
    return [child for child in found if child is not None]


def tree(control):
    """The control, and all beneath it."""
    yield control
    if control.get_role_name() not in CLOSED:
        for child in children(control):
            yield from tree(child)


def windows():
    for program in children(Atspi.get_desktop(0)):
        if program.get_name() == "Burnwick":
            return children(program)
    return []


def window(name):
    """One that is in front of its user."""
    return until(f"the window {name}", lambda: next(
        (each for each in windows() if each.get_name() == name and {"active", "showing"} <= states(each)), None))


def is_gone(name):
    return all(each.get_name() != name for each in windows())


def until_gone(name):
    until(f"the end of the window {name}", lambda: is_gone(name))


def find(root, name, role=None):
    return until(f"{name} in {root.get_name()}", lambda: next(
        (each for each in tree(root) if each.get_name() == name and role in (None, each.get_role_name())), None))


def command(text):
    """A command of the menus, by its text."""
    return find(find(window("frmMain"), "mnuBar"), text, "menu item")


def states(control):
    return {state.value_nick for state in control.get_state_set().get_states()}


def is_showing(control):
    return "showing" in states(control)


def text(control):
    return Atspi.Text.get_text(control, 0, -1)


def actions(control):
    if "Action" not in control.get_interfaces():
        return []
    return [Atspi.Action.get_action_name(control, number) for number in range(control.get_n_actions())]


def labels(control):
    """What labels the control."""
    return [relation.get_target(number) for relation in control.get_relation_set()
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
            for number in range(relation.get_n_targets())]


def act(control, action="Press"):
    """The program answers when a dialog that it opens has been closed: nobody waits for the answer."""
    number = actions(control).index(action)
    Atspi.set_timeout(1, 0)
    try:
        control.do_action(number)
    except GLib.Error:
        pass
    finally:
        Atspi.set_timeout(PATIENCE * 1000, 0)


def press_key(key):
    Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.SYM)


def focused(root):
    """The name of the control that has the focus."""
    return next((each.get_name() for each in tree(root) if "focused" in states(each)), None)
