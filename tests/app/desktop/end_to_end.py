# SPDX-License-Identifier: MIT
"""The desktop program in a real window, driven as assistive technology drives it.

usage: end_to_end.py PROGRAM

Starts an X server, a window manager and a session bus of its own, and the program with a temporary
home folder. Finds everything by role and name in the accessibility tree. Exits with 0 when all is
as it should be; prints what was not run where the machine lacks a part.
"""
import os
import plistlib
import shutil
import subprocess
import sys
import tempfile
import time

try:
    from status_area import Icon
except ImportError:
    Icon = None  # told below with the other parts that this machine lacks

PARTS = ["Xvfb", "openbox", "xdotool", "dbus-run-session"]
LIMIT = 30  # seconds that any one thing may take on a busy machine


def outside(program):
    """Sets the stage, and runs `inside` on it."""
    missing = [part for part in PARTS if shutil.which(part) is None]
    try:
        import gi
        gi.require_version("Atspi", "2.0")
    except (ImportError, ValueError):
        missing.append("python3-gi with gir1.2-atspi-2.0")
    if missing:
        print("not run, as this machine lacks: " + ", ".join(missing))
        return 0
    processes = []
    with tempfile.TemporaryDirectory() as folder:
        home = os.path.join(folder, "home")
        os.makedirs(os.path.join(home, "Library/Caches/Safari"))
        # Whatever runs on the machine, the program sees no application running.
        listing = os.path.join(folder, "bin/ps")
        os.makedirs(os.path.dirname(listing))
        with open(listing, "w") as file:
            file.write("#!/bin/sh\necho COMMAND\n")
        os.chmod(listing, 0o755)
        read, write = os.pipe()
        try:
            # The server picks a free display number and tells it.
            processes.append(subprocess.Popen(
                ["Xvfb", "-displayfd", str(write), "-screen", "0", "1000x760x24", "-nolisten",
                 "tcp"], pass_fds=[write], stderr=subprocess.DEVNULL))
            os.close(write)
            display = b""
            while not display.endswith(b"\n"):
                display += os.read(read, 16)
            environment = dict(
                os.environ, DISPLAY=":" + display.decode().strip(), HOME=home,
                PATH=os.path.dirname(listing) + ":" + os.environ["PATH"],
                XDG_RUNTIME_DIR=folder, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                QT_QPA_PLATFORM="xcb", NO_AT_BRIDGE="0")
            processes.append(subprocess.Popen(["openbox"], env=environment,
                                              stderr=subprocess.DEVNULL))
            return subprocess.call(
                ["dbus-run-session", "--", sys.executable, __file__, "--inside", program],
                env=environment)
        finally:
            for process in reversed(processes):
                process.terminate()
                process.wait()


class Stage:
    """The accessibility tree of the program."""

    def __init__(self, program, *arguments):
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self.atspi = Atspi
        Atspi.init()
        self.program = subprocess.Popen([program, *arguments])

    def children(self, node):
        try:
            return [child for child in (node.get_child_at_index(i)
                                        for i in range(node.get_child_count())) if child]
        except Exception:  # the node has gone while it was looked at
            return []

    def walk(self, node):
        yield node
        for child in self.children(node):
            yield from self.walk(child)

    def everything(self):
        for application in self.children(self.atspi.get_desktop(0)):
            try:
                ours = application.get_process_id() == self.program.pid
            except Exception:
                continue
            if ours:
                yield from self.walk(application)

    def look(self, role, name, showing=True):
        for node in self.everything():
            try:
                if node.get_role_name() != role or node.get_name() != name:
                    continue
                if not showing or node.get_state_set().contains(self.atspi.StateType.SHOWING):
                    return node
            except Exception:
                continue
        return None

    def find(self, role, name, showing=True):
        """Waits for a node; says what is there when it does not come."""
        node = until(lambda: self.look(role, name, showing))
        if node is None:
            for each in self.everything():
                print("   ", each.get_role_name(), repr(each.get_name()))
            raise AssertionError("no %s named %r" % (role, name))
        return node

    def press(self, role, name, showing=True):
        node = self.find(role, name, showing)
        actions = [self.atspi.Action.get_action_name(node, i)
                   for i in range(self.atspi.Action.get_n_actions(node))]
        wanted = [action for action in actions if action in ("Press", "Toggle", "Check", "Uncheck")]
        assert wanted, "%s %r has only the actions %r" % (role, name, actions)
        assert self.atspi.Action.do_action(node, actions.index(wanted[0]))

    def can_be_pressed(self, name):
        return self.find("push button", name).get_state_set().contains(
            self.atspi.StateType.ENABLED)

    def terminate(self):
        """Ends the program as a signal does; its exit status."""
        self.program.terminate()
        return self.program.wait(timeout=LIMIT)

    def label_of(self, node):
        for relation in node.get_relation_set():
            if relation.get_relation_type() == self.atspi.RelationType.LABELLED_BY:
                return relation.get_target(0).get_name()
        return None

    def window_has_keyboard(self):
        frame = self.look("frame", "Dorvanel X")
        return frame is not None and frame.get_state_set().contains(self.atspi.StateType.ACTIVE)

    def focused(self):
        for node in self.everything():
            if node.get_state_set().contains(self.atspi.StateType.FOCUSED) and \
                    node.get_role_name() in ("push button", "check box", "combo box"):
                return node.get_name()
        return None


def until(condition):
    end = time.monotonic() + LIMIT
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    return condition()


def key(name):
    subprocess.run(["xdotool", "key", name], check=True)


def stored(home):
    path = os.path.join(home, "Library/Preferences/com.dorvanel.DorvanelX.plist")
    try:
        with open(path, "rb") as file:
            return plistlib.load(file)
    except FileNotFoundError:
        return {}


class StatusArea:
    """The status area of the test's desktop, which comes and goes."""

    def __init__(self):
        self.process = None

    def come(self):
        program = os.path.join(os.path.dirname(__file__), "status_area.py")
        self.process = subprocess.Popen([sys.executable, program], stdout=subprocess.PIPE,
                                        text=True)
        assert self.process.stdout.readline() == "ready\n"

    def icon(self):
        """Waits for the icon of a program."""
        return Icon(self.process.stdout.readline().strip())

    def go(self):
        if self.process is not None:
            self.process.terminate()
            self.process.wait()
            self.process.stdout.close()
        self.process = None


def inside(program):
    home = os.environ["HOME"]
    page = os.path.join(home, "Library/Caches/Safari/page.cache")
    with open(page, "w") as file:
        file.write("secret")
    area = StatusArea()
    try:
        drive(Stage(program), program, home, page, area)
        terminate_at_questions(program, home, page)
        one_at_a_time(program, home, page)
    finally:
        area.go()
    print("done")
    return 0


def drive(stage, program, home, page, area):
    step("the window and what it says")
    stage.find("frame", "Dorvanel X")
    stage.find("label", "Enabled and waiting for the first timer event to occur...")
    stage.find("progress bar", "Shredding progress")
    for name in ["Safari", "Internet Explorer", "Mozilla", "Netscape", "iCab", "OmniWeb", "Opera",
                 "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"]:
        label = stage.find("label", name)
        assert label.get_description() == name + " is not watched.", label.get_description()

    step("the focus goes through the buttons in their order")
    # One key at a time: the window has the keyboard before the first, and each has its effect before
    # the next.
    until(lambda: stage.window_has_keyboard())
    for harmless in ["space", "Return"]:
        key(harmless)
    order = [stage.focused()]
    for _ in range(4):
        key("Tab")
        order.append(until(lambda: (now := stage.focused()) != order[-1] and now))
    assert order == [None, "Shred Now", "Shred and", "Shred Files…", "Preferences…"], order
    assert stage.look("push button", "Yes") is None, "a key has found a button that shreds"

    step("a click in the panel is saved")
    stage.press("push button", "Preferences…")
    stage.find("dialog", "Dorvanel Preferences")
    for value, label in [("1 to 4, at random", "Passes:"), ("Random data (standard)", "Pattern:")]:
        assert stage.label_of(stage.find("combo box", value)) == label
    stage.press("check box", "Keep an activity log")
    assert until(lambda: stored(home).get("ActivityLog")) is True
    stage.press("check box", "Netscape")
    assert until(lambda: "Mozilla" not in stored(home).get("EnabledBrowsers", ["Mozilla"]))
    stage.press("push button", "Close")

    step("a run, from the question to the end")
    stage.press("push button", "Shred Now")
    stage.find("label", "Are you sure you want to shred these items: Browser Cache, Mail Trash ?")
    stage.press("push button", "Yes")
    assert until(lambda: not os.path.exists(page)), "the file is still there"
    log = os.path.join(home, "Library/Logs/Dorvanel X Log.txt")
    assert until(lambda: "Dorvanel Completed Successfully" in open(log, encoding="latin-1").read())

    step("a status area that comes while the program runs gets its icon")
    area.come()
    icon = area.icon()

    step("hiding leaves the icon in the status area to come back from")
    assert [text for _, text in icon.items()] == [
        "Show Dorvanel", None, "Shred", "Shred and Log Out", "Shred and Shut Down",
        "Shred and Restart", None, "Quit Dorvanel"], icon.items()
    key("ctrl+h")
    assert until(lambda: stage.look("frame", "Dorvanel X") is None), "the window is still there"
    icon.choose("Show Dorvanel")
    stage.find("frame", "Dorvanel X")

    step("a status area that goes takes no hidden program with it")
    key("ctrl+h")
    assert until(lambda: stage.look("frame", "Dorvanel X") is None), "the window is still there"
    area.go()
    stage.find("frame", "Dorvanel X")
    area.come()
    icon = area.icon()

    step("a command of the icon's menu asks as any other")
    icon.choose("Shred and Restart")
    stage.press("push button", "No")
    assert until(lambda: stage.look("push button", "No") is None)

    step("a second launch brings no second program")
    assert subprocess.call([program], timeout=LIMIT) == 0
    assert stage.program.poll() is None

    step("a file handed over opens a document and stays")
    letter = os.path.join(home, "letter.txt")
    with open(letter, "w") as file:
        file.write("dear")
    assert subprocess.call([program, letter], timeout=LIMIT) == 0
    stage.find("list item", letter)
    assert open(letter).read() == "dear"

    step("quitting asks, from whatever window is in front, and quits")
    key("ctrl+q")
    stage.press("push button", "Cancel")
    assert stage.program.poll() is None
    until(lambda: stage.look("push button", "Hide") is None)
    key("ctrl+q")
    stage.press("push button", "Quit")
    assert stage.program.wait(timeout=LIMIT) == 0


def store(home, values):
    path = os.path.join(home, "Library/Preferences/com.dorvanel.DorvanelX.plist")
    with open(path, "wb") as file:
        plistlib.dump(values, file)


def write(path, contents):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(contents)


def terminate_at_questions(program, home, page):
    step("a signal at the question of a launcher's action ends the program")
    write(page, b"secret")
    store(home, {"FirstRun": True})
    stage = Stage(program, "--action", "shred")
    stage.find("push button", "Yes")
    assert stage.terminate() == 0
    assert os.path.exists(page)

    step("a signal at the launch's own alert ends the program")
    profiles = os.path.join(home, "Library/Mozilla/Profiles")
    for name in ["one", "two"]:
        os.makedirs(os.path.join(profiles, name))
    store(home, {})
    stage = Stage(program, "--action", "shred")
    stage.find("push button", "OK")
    assert stage.terminate() == 0
    assert os.path.exists(page)
    shutil.rmtree(profiles)


def one_at_a_time(program, home, page):
    step("while something is shredded the window says so and takes no other request")
    # As many passes as there can be keep the worker at work for some seconds.
    store(home, {"FirstRun": True, "ConfirmShredding": False, "NumberOfWrites": 1,
                 "OverwritePattern": 3})
    write(page, bytes(131072))
    stage = Stage(program)
    stage.press("push button", "Shred Now")
    stage.find("label", "Shredding…")
    assert until(lambda: not os.path.exists(page))  # else the second one goes with it
    second = os.path.join(os.path.dirname(page), "second.cache")
    write(second, b"secret")
    assert not stage.can_be_pressed("Shred Now")
    for _ in range(2):
        key("ctrl+Return")
    assert subprocess.call([program, "--action", "shred"], timeout=LIMIT) == 0
    stage.find("label", "Not started: a run is still in progress.")
    assert not stage.can_be_pressed("Shred Files…")
    for _ in range(2):
        key("ctrl+Return")

    step("what was typed meanwhile starts nothing afterwards")
    assert until(lambda: stage.can_be_pressed("Shred Now"))
    assert os.path.exists(second)

    step("a number that no item stands for shows what it does")
    stage.press("push button", "Preferences…")
    stage.find("combo box", "65536 passes (stored: 1)")
    stage.press("check box", "Keep an activity log")
    assert until(lambda: stored(home).get("ActivityLog")) is True
    assert stored(home).get("NumberOfWrites") == 1
    assert stage.terminate() == 0


def step(text):
    print("-- " + text, flush=True)


if __name__ == "__main__":
    if sys.argv[1] == "--inside":
        sys.exit(inside(sys.argv[2]))
    sys.exit(outside(sys.argv[1]))
