"""The forms, and what is asked of each of their controls."""

from dataclasses import dataclass

import accessible_tree as seen
from accessible_tree import Atspi, states, window


@dataclass(frozen=True)
class Form:
    name: str
    title: str
    way: str = ""  # the command that opens it; with a form under it, the button there
    leave: str = "cmdCancel"
    under: "Form | None" = None
    # As it opens:
    hidden: frozenset = frozenset()
    disabled: frozenset = frozenset()
    empty: frozenset = frozenset()  # the labels that show nothing yet


# No image is in it, and no run; the box is for developers.
MAIN = Form("frmMain", "Burnwick", hidden=frozenset({"chkDebug", "lblTiming"}), empty=frozenset(
    {"lblChecksum", "lblVersion", "lblLanguage", "lblDateStamp", "lblRate", "lblTiming"}))
# A port is not chosen by looking at it.
PORTS = Form("frmCOMPortSetting", "COM Port Settings", "COM Port Setting...", disabled=frozenset({"cmdOK"}))
OPTIONS = Form("frmOptions", "Options", "Options...")
ABOUT = Form("frmAbout", "About Burnwick", "About Burnwick...", "cmdOK")
ABOUT_OEM = Form("frmAboutOEM", "About Burnwick (OEM)", "About Burnwick...", "cmdOK")
CHIPS = Form("frmChipSelect", "Select Chip Size", "Upload...")
# No files are in it, and no difference.
COMPARE = Form("frmFileCompare", "File Compare", "Compare Files...", "cmdClose",
               hidden=frozenset({"fraDifferences", "grdDifferences", "lblRanges", "cmdCopy"}),
               disabled=frozenset({"cmdDifferences"}), empty=frozenset({"lblRanges"}))
# Nothing has been searched for.
LOG = Form("frmActivity", "Activity Log", "View Log...", "cmdClose")
FIND = Form("frmActivityFind", "Find", "cmdFind", under=LOG, disabled=frozenset({"cmdFind"}))
# Nowhere has been gone to, and nothing been searched for. It is left like any window.
HELP = Form("frmHelp", "Burnwick Help", "Burnwick Help", leave="",
            disabled=frozenset({"cmdBack", "cmdForward", "cmdFindPrevious", "cmdFindNext"}),
            empty=frozenset({"lblFound"}))
DIALOGS = [PORTS, OPTIONS, ABOUT, CHIPS, COMPARE, LOG, FIND, HELP]

# == What is asked of each control

ROLES = {"cmd": "push button", "chk": "check box", "opt": "radio button", "txt": "text", "lbl": "label",
         "Label": "label", "fra": "panel", "Frame": "panel", "pic": "filler", "grd": "table",
         "PercentBar": "progress bar", "frm": "dialog", "tvw": "tree", "spl": "split pane"}
# Those that are not what their names begin with. A button that stays down is a box to tick, and a page to read in is a
# label that can be read by the line.
OTHER_ROLES = {"frmMain": "frame", "frmHelp": "frame", "mnuBar": "menu bar", "fraDifferences": "filler",
               "cmdDifferences": "check box", "txtPage": "label", "lblIcon": "image", "lblWebSite": "link"}
FOCUSABLE = {"push button", "check box", "radio button", "text", "combo box", "link", "table", "tree"}
ACTIONS = {"push button": "Press", "check box": "Toggle", "radio button": "Toggle", "link": "Press",
           "combo box": "ShowMenu"}
# They hold others, and show nothing themselves.
HOLDERS = {"filler", "menu bar", "split pane"}
# A user hears what stands in them, and the label beside them.
ENTRIES = {"text", "combo box"}


def role_faults(control, _):
    name, role = control.get_name(), control.get_role_name()
    # The toolkit calls a list by the entry that is chosen in it.
    if role == "combo box":
        return
    kinds = {fitting for beginning, fitting in ROLES.items() if name.startswith(beginning)}
    expected = OTHER_ROLES.get(name, next(iter(kinds), "one that a user knows"))
    if role != expected:
        yield f"has the role {role}, and not {expected}"


def name_faults(control, _):
    if not control.get_name().strip():
        yield "has no name"


def description_faults(control, form):
    role = control.get_role_name()
    may_be_silent = role in HOLDERS or control.get_name() in form.empty or (role in ENTRIES and seen.labels(control))
    if not may_be_silent and not control.get_description().strip():
        yield "has neither description nor label"


def state_faults(control, form):
    name, role, has = control.get_name(), control.get_role_name(), states(control)
    for state, expected in (("showing", name not in form.hidden), ("visible", name not in form.hidden),
                            ("enabled", name not in form.disabled), ("sensitive", name not in form.disabled),
                            ("focusable", role in FOCUSABLE or name == "txtPage")):
        if (state in has) != expected:
            yield f"is {'not ' if expected else ''}{state}"


def place_faults(control, form):
    frame, place = (each.get_extents(Atspi.CoordType.SCREEN) for each in (window(form.name), control))
    inside = (frame.x <= place.x and place.x + place.width <= frame.x + frame.width
              and frame.y <= place.y and place.y + place.height <= frame.y + frame.height)
    if "showing" in states(control) and (place.width <= 0 or place.height <= 0 or not inside):
        yield f"is not where it can be seen: {place.width} x {place.height} at {place.x}, {place.y}"


def action_faults(control, _):
    expected = ACTIONS.get(control.get_role_name())
    if expected and "sensitive" in states(control) and expected not in seen.actions(control):
        yield f"has not the action {expected}"


def group_faults(control, _):
    options = [each for each in seen.children(control) if each.get_role_name() == "radio button"]
    if options and sum("checked" in states(each) for each in options) != 1:
        yield "has not one ticked option"


def value_faults(control, _):
    if control.get_role_name() != "progress bar":
        return
    ends = Atspi.Value.get_minimum_value(control), Atspi.Value.get_maximum_value(control)
    if ends != (0, 100) or not 0 <= Atspi.Value.get_current_value(control) <= 100:
        yield f"has no percentage, but {Atspi.Value.get_current_value(control)} of {ends}"


RULES = [role_faults, name_faults, description_faults, state_faults, place_faults, action_faults, group_faults,
         value_faults]


def controls_of(form):
    # Menus are looked at on their own; what is unknown are the handles between the parts of a window.
    others = {"menu item", "popup menu", "separator", "unknown"}
    return [control for control in seen.tree(window(form.name)) if control.get_role_name() not in others]


def form_faults(form):
    controls = controls_of(form)
    names = [control.get_name() for control in controls]
    if window(form.name).get_description() != form.title:
        yield f"{form.name} has the caption {window(form.name).get_description()}"
    for name in sorted({name for name in names if names.count(name) > 1}):
        yield f"{form.name}: {name} is the name of {names.count(name)} controls"
    for control in controls:
        for rule in RULES:
            for fault in rule(control, form):
                yield f"{form.name}: {control.get_role_name()} '{control.get_name()}' {fault}"
