#!/usr/bin/python3 -B
"""accessibility.py BEHAVIOUR [ARGUMENT...]

What a screen reader finds in the window that is on the screen, and does with it. Prints what is not as it should be,
and ends with 1 then.
"""

import os
import subprocess
import sys
import time
from dataclasses import replace

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
import accessible_tree as seen  # noqa: E402
from accessible_forms import ABOUT, ABOUT_OEM, COMPARE, DIALOGS, HELP, MAIN, OPTIONS, controls_of, form_faults  # noqa: E402
from accessible_tree import Atspi, act, find, states, until, window  # noqa: E402

# == What a user does

def open_form(form):
    act(find(open_form(form.under), form.way) if form.under else seen.command(form.way))
    return window(form.name)


def close_by_key(form):
    """False when a busy window manager has lost the key. It is never for another window."""
    front = subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True, check=False)
    if front.stdout.strip() == form.title:
        subprocess.run(["xdotool", "key", "alt+F4"], check=True)
    limit = time.monotonic() + 3
    while not seen.is_gone(form.name) and time.monotonic() < limit:
        time.sleep(0.01)
    return seen.is_gone(form.name)


def leave_form(form):
    if form.leave:
        act(find(window(form.name), form.leave))
    else:
        until(f"an answer of {form.name} to Alt+F4", lambda: close_by_key(form))
    seen.until_gone(form.name)
    if form.under:
        leave_form(form.under)


def stops_of_the_tab_key(form):
    root, stops = window(form.name), []
    stop = until("the focus", lambda: seen.focused(root))
    while stop not in stops:
        stops.append(stop)
        seen.press_key(0xFF09)
        stop = until(f"the stop after {stop}", lambda: seen.focused(root) not in (None, stop) and seen.focused(root))
    return stops


def stop_faults(form):
    able = {"showing", "sensitive", "focusable"}
    # An option that is not ticked is reached from the one that is, by the arrow keys.
    expected = {control.get_name() for control in controls_of(form) if able <= states(control)
                and (control.get_role_name() != "radio button" or "checked" in states(control))}
    reached = set(stops_of_the_tab_key(form))
    for name in sorted(expected ^ reached):
        yield f"{form.name}: the Tab key {'reaches' if name in reached else 'does not reach'} {name}"


def in_each(forms, faults):
    for form in forms:
        open_form(form)
        yield from faults(form)
        leave_form(form)


def menu_faults(title, disabled):
    menu = seen.command(title)
    act(menu, "ShowMenu")
    popup = until(f"the menu {title}", lambda: next(filter(seen.is_showing, seen.children(menu)), None))
    entries = [each for each in filter(seen.is_showing, seen.children(popup)) if each.get_role_name() != "separator"]
    names = [each.get_name() for each in entries]
    yield from (f"{title}: {name} is there {names.count(name)} times" for name in set(names) if names.count(name) > 1)
    for entry in entries:
        if not entry.get_name().strip() or entry.get_role_name() != "menu item" or seen.actions(entry) != ["Press"]:
            yield f"{title}: {entry.get_role_name()} '{entry.get_name()}' is no command"
        if (entry.get_name() not in disabled) != ({"enabled", "sensitive"} <= states(entry)):
            yield f"{title}: '{entry.get_name()}' is {'enabled' if 'enabled' in states(entry) else 'disabled'}"
    act(menu, "ShowMenu")
    until(f"the end of the menu {title}", lambda: not seen.is_showing(popup))


def type_text(field, text):
    Atspi.EditableText.set_text_contents(field, text)
    until(f"the text {text}", lambda: seen.text(field) == text)


def until_state(root, name, state):
    return until(f"{name} to be {state}", lambda: state in states(find(root, name)) and find(root, name))


def until_told(root, label, text):
    until(f"{label} to tell {text}", lambda: text in find(root, label).get_description())


# == The behaviours: each gives what is not as it should be

def the_window_tells_what_its_controls_are():
    yield from form_faults(MAIN)


def each_menu_tells_what_its_commands_are():
    # There is no image to copy yet.
    yield from menu_faults("File", {"Copy", "Copy To Folder..."})
    yield from menu_faults("Tools", set())
    yield from menu_faults("Help", set())


def each_dialog_tells_what_its_controls_are():
    yield from in_each(DIALOGS, form_faults)


def the_about_box_of_an_oem_tells_what_its_controls_are():
    yield from in_each([ABOUT_OEM], form_faults)


def the_tab_key_reaches_each_control():
    yield from stop_faults(MAIN)
    # In the help it goes through the links of the page first.
    yield from in_each([form for form in DIALOGS if form is not HELP], stop_faults)


def options_are_ticked():
    root = open_form(OPTIONS)
    for name in ("chkVerify", "optLogOption_1"):
        act(find(root, name), "Toggle")
        until_state(root, name, "checked")
    if "checked" in states(find(root, "optLogOption_2")):
        yield "two options of a group are ticked"
    act(find(root, "cmdOK"))
    seen.until_gone(OPTIONS.name)


def a_unit_is_programmed(image):
    told = []
    listener = Atspi.EventListener.new(lambda event: told.append(Atspi.Value.get_current_value(event.source)))
    listener.register("object:property-change:accessible-value")
    root = window(MAIN.name)
    act(find(root, "cmdDownload"))
    dialog = window("Open Burnwick File")
    type_text(find(dialog, "File name:", "text"), image)
    act(until_state(dialog, "Open", "sensitive"))
    until_told(root, "lblStatus", "Programming was completed successfully.")
    until("each percent to be told", lambda: len(told) >= 100 and told[-1] == 100)
    if told != sorted(told) or Atspi.Value.get_current_value(find(root, "PercentBar1")) != 100:
        yield f"the bar goes through {told}"
    if "\nProgramming was completed successfully." not in seen.text(find(root, "txtDisplay")):
        yield f"the display tells:\n{seen.text(find(root, 'txtDisplay'))}"
    yield from form_faults(replace(MAIN, title="Burnwick - Programming was completed successfully",
                                   empty=frozenset({"lblRate", "lblTiming"})))
    yield from menu_faults("File", set())


def images_are_compared(image, other):
    root = open_form(COMPARE)
    type_text(find(root, "txtFile1"), image)
    type_text(find(root, "txtFile2"), other)
    act(until_state(root, "cmdCompare", "sensitive"))
    act(until_state(root, "cmdDifferences", "sensitive"), "Toggle")
    until_state(root, "grdDifferences", "showing")
    until_state(root, "cmdDifferences", "checked")
    opened = replace(COMPARE, hidden=frozenset(), disabled=frozenset(), empty=frozenset())
    yield from form_faults(opened)
    yield from stop_faults(opened)
    leave_form(COMPARE)


def the_web_site_is_opened():
    act(find(open_form(ABOUT), "lblWebSite"))
    leave_form(ABOUT)
    yield from ()


def the_program_is_left():
    act(seen.command("Exit"))
    yield from ()


def main(behaviour, *arguments):
    seen.connect()
    try:
        faults = list(globals()[behaviour](*arguments))
    except seen.NotFound as missing:
        faults = [f"{missing} did not come"]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
