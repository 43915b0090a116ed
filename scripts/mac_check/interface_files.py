"""The interface files against the classes of the executable: what ibtool and the host's process would look at."""

import re
from xml.etree import ElementTree

import executable
from build import ROOT, xml_faults

NAMES = ("OrvaneUI", "OrvaneUploadWindowController", "UploadCompleteWindowController", "UploadStatusWindowController")
# Classes of AppKit have these outlets and actions; all others are answered by classes of ours.
APPKIT_OUTLETS = {"delegate", "initialFirstResponder", "nextKeyView"}
APPKIT_ACTIONS = {"performClose:"}
APPKIT_CLASSES = {"FirstResponder"}


class InterfaceFile:
    """One file: its elements by identifier, and which element each connection belongs to."""

    def __init__(self, path):
        self.name = path.stem
        self.root = ElementTree.parse(path).getroot()
        self.identifiers = [element.get("id") for element in self.root.iter() if element.get("id")]
        self.elements = {element.get("id"): element for element in self.root.iter() if element.get("id")}
        self.connections = [(owner, connection) for owner in self.root.iter() for connection
                            in owner.findall("connections/*")]

    def outlets(self):
        """(class of the owner or None for one of AppKit's, name, identifier of what it leads to)."""
        return [(owner.get("customClass"), connection.get("property"), connection.get("destination"))
                for owner, connection in self.connections if connection.tag == "outlet"]

    def actions(self):
        """(class of the target or None, selector)."""
        return [(self.elements[connection.get("target")].get("customClass"), connection.get("selector"))
                for _, connection in self.connections
                if connection.tag == "action" and connection.get("target") in self.elements]

    def next_key_views(self):
        return {owner.get("id"): connection.get("destination") for owner, connection in self.connections
                if connection.tag == "outlet" and connection.get("property") == "nextKeyView"}

    def first_responder(self):
        return next((to for _, name, to in self.outlets() if name == "initialFirstResponder"), None)


def setter(name):
    return f"set{name[0].upper()}{name[1:]}:"


def dangling(file):
    """Faults: identifiers that stand twice, and connections that lead nowhere."""
    faults = [f"{file.name}: the id {name} stands twice" for name in sorted(set(file.identifiers))
              if file.identifiers.count(name) > 1]
    for _, connection in file.connections:
        to = connection.get("destination") or connection.get("target")
        if to not in file.elements:
            faults.append(f"{file.name}: connection {connection.get('id')} leads to {to}, which is not there")
    return faults


def unknown_classes(file, classes):
    names = {element.get("customClass") for element in file.root.iter() if element.get("customClass")}
    return [f"{file.name}: no class {name}" for name in sorted(names - set(classes) - APPKIT_CLASSES)]


def unanswered(file, classes):
    """Faults: outlets and actions that the class at their end does not have."""
    faults = []
    for owner, name, _ in file.outlets():
        if name not in APPKIT_OUTLETS and setter(name) not in executable.methods_with_inherited(classes, owner):
            faults.append(f"{file.name}: {owner or 'a class of AppKit'} has no outlet {name}")
    for target, selector in file.actions():
        if selector not in APPKIT_ACTIONS | executable.methods_with_inherited(classes, target):
            faults.append(f"{file.name}: {target or 'a class of AppKit'} has no action {selector}")
    return faults


def declared_outlets():
    """The outlets that headers declare, by the class's name in the runtime."""
    outlets = {}
    for path in (ROOT / "Mac").glob("*.h"):
        runtime_names = dict((source, runtime) for runtime, source in re.findall(
            r'ORV_RUNTIME_NAME\("(\w+)"\)\s*@interface (\w+)', path.read_text()))
        for name, body in re.findall(r"@interface (\w+) :(.*?)\n@end", path.read_text(), re.DOTALL):
            names = set(re.findall(r"IBOutlet\s+\w+\s*\*\s*(\w+);", body))
            if names:
                outlets[runtime_names.get(name, name)] = names
    return outlets


def unconnected(files):
    """Faults: outlets that a class declares and no file connects."""
    connected = {}
    for file in files:
        for owner, name, _ in file.outlets():
            connected.setdefault(owner, set()).add(name)
    return [f"{name}: outlet {outlet} is not connected" for name, outlets in sorted(declared_outlets().items())
            for outlet in sorted(outlets - connected.get(name, set()))]


def key_loop_faults(file):
    """The order of the Tab key comes back to where it starts and passes every view that has a place in it."""
    following, start = file.next_key_views(), file.first_responder()
    if not following:
        return []  # at most one view takes the keyboard
    if start is None:
        return [f"{file.name}: no view has the keyboard first"]
    passed, view = [], start
    while view is not None and view not in passed:
        passed.append(view)
        view = following.get(view)
    faults = [] if view == start else [f"{file.name}: from {passed[-1]} Tab does not lead back to {start}"]
    return faults + [f"{file.name}: Tab never comes to {name}" for name in sorted(set(following) - set(passed))]


def presses_return(element):
    return element.get("keyEquivalent") == "\r" or (
        element.get("key") == "keyEquivalent" and element.text.strip() == "DQ")  # its base64


def window_faults(file):
    """Two buttons for Return: which one it presses is left to chance. A window that its close releases is released
    again by its owner."""
    faults = []
    for window in file.root.iter("window"):
        buttons = sum(presses_return(element) for element in window.iter())
        if buttons > 1:
            faults.append(f"{file.name}: Return presses {buttons} buttons")
        if window.get("releasedWhenClosed") != "NO":
            faults.append(f"{file.name}: releasedWhenClosed is {window.get('releasedWhenClosed')}, not NO")
    return faults


def check_interface_files(report, classes):
    paths = sorted((ROOT / "Mac/Resources").glob("*.xib"))
    report.same("there are the four interface files", {path.stem for path in paths}, frozenset(NAMES))
    faults = [fault for path in paths for fault in xml_faults(path)]
    report.none("each is XML", faults)
    if faults:
        return
    files = [InterfaceFile(path) for path in paths]
    count = sum(len(file.connections) for file in files)
    report.none(f"each of {count} connections leads to an element of its file",
                [fault for file in files for fault in dangling(file)])
    report.none("each class that they name is in the executable",
                [fault for file in files for fault in unknown_classes(file, classes)])
    report.none("each outlet and action is answered by its class",
                [fault for file in files for fault in unanswered(file, classes)])
    report.none("each outlet that a class declares is connected", unconnected(files))
    report.none("each order of the Tab key is a closed loop",
                [fault for file in files for fault in key_loop_faults(file)])
    report.none("in each window Return presses at most one button, and closing does not release it",
                [fault for file in files for fault in window_faults(file)])
