# SPDX-License-Identifier: MIT
"""The desktop program in a real window, driven as assistive technology drives it.

usage: end_to_end.py PROGRAM

Starts an X server, a window manager and a session bus of its own, and the program with a temporary
home folder. Finds everything by role and name in the accessibility tree. Exits with 0 when all is
as it should be; prints what was not run where the machine lacks a part.
"""
import os
import plistlib
import pwd
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from urllib.parse import quote

try:
    from status_area import Icon
except ImportError:
    Icon = None  # told below with the other parts that this machine lacks

PARTS = ["Xvfb", "openbox", "xdotool", "dbus-run-session"]
BUS_NAME = "com.dorvanel.DorvanelX"
LIMIT = 60  # seconds that any one thing may take on a busy machine


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
                XDG_RUNTIME_DIR=folder, XDG_DATA_HOME=os.path.join(home, ".local/share"), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                QT_QPA_PLATFORM="xcb", NO_AT_BRIDGE="0")
            processes.append(subprocess.Popen(["openbox"], env=environment,
                                              stderr=subprocess.DEVNULL))
            # A window that was there before the window manager would not get the keyboard from it.
            assert until(lambda: subprocess.run(["xdotool", "get_num_desktops"], env=environment,
                                                capture_output=True).returncode == 0)
            return subprocess.call(
                at_home(folder, home) + ["dbus-run-session", "--config-file", bus(folder, program),
                                         "--", sys.executable, __file__, "--inside", program],
                env=environment)
        finally:
            for process in reversed(processes):
                process.terminate()
                process.wait()


def bus(folder, program):
    """The settings of a session bus that starts the program by its name."""
    services = os.path.join(folder, "services")
    os.makedirs(services)
    with open(os.path.join(services, BUS_NAME + ".service"), "w") as file:
        file.write("[D-BUS Service]\nName=%s\nExec=%s\n" % (BUS_NAME, program))
    path = os.path.join(folder, "session.conf")
    with open(path, "w") as file:
        file.write("""<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%s</listen>
  <servicedir>%s</servicedir>
  <standard_session_servicedirs/>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
""" % (folder, services))
    return path


def at_home(folder, home):
    """Words before a command that make `home` the account's own home folder for it, where this
    machine lets us mount; the others of the machine see nothing of it."""
    words = ["unshare", "--mount"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
    users = os.path.join(folder, "passwd")
    with open(users, "w") as file:
        for user in pwd.getpwall():
            ours = user.pw_uid in (0, os.geteuid())
            file.write(":".join([user.pw_name, "x", str(user.pw_uid), str(user.pw_gid), "",
                                 home if ours else user.pw_dir, user.pw_shell]) + "\n")
    words += ["sh", "-c", 'mount --bind "$0" /etc/passwd && exec "$@"', users]
    if shutil.which("unshare") is None or \
            subprocess.call(words + ["true"], stderr=subprocess.DEVNULL) != 0:
        return []
    return words


class Running:
    """A program that somebody else has started."""

    def __init__(self, pid):
        self.pid = pid

    def terminate(self):
        os.kill(self.pid, signal.SIGTERM)

    def wait(self, timeout):
        assert until(lambda: not os.path.exists("/proc/%d" % self.pid)), "it is still running"
        return 0


class Stage:
    """The accessibility tree of the program."""

    def __init__(self, program, *arguments, running=None):
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self.atspi = Atspi
        Atspi.init()
        self.program = running or subprocess.Popen([program, *arguments])

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

    def is_active(self, role, name):
        window = self.look(role, name)
        return window is not None and window.get_state_set().contains(self.atspi.StateType.ACTIVE)

    def window_has_keyboard(self):
        return self.is_active("frame", "Dorvanel X")

    def focus(self):
        """The roles and names of all that says it has the keyboard."""
        having = []
        for node in self.everything():
            try:
                if node.get_state_set().contains(self.atspi.StateType.FOCUSED):
                    having.append((node.get_role_name(), node.get_name()))
            except Exception:
                continue
        return having

    def focused(self):
        """The role and the name of what has the keyboard: the innermost that says so."""
        found = None
        for node in self.everything():
            try:
                # The tab of the page in front says so of itself whoever has it.
                if node.get_role_name() != "page tab" and \
                        node.get_state_set().contains(self.atspi.StateType.FOCUSED):
                    found = (node.get_role_name(), node.get_name())
            except Exception:
                continue
        return found


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
        look_first(program, home, page)
        terminate_at_questions(program, home, page)
        one_at_a_time(program, home, page)
        choose_traces(program, home)
        stop_and_go_on(program, home, page)
        what_fails(program, home, page)
        start_hidden(program, area)
        asked_about(program, home)
        started_by_the_bus(program, home)
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

    step("the first steps are there until they have been read")
    stage.press("push button", "Got It")
    assert until(lambda: stored(home).get("WelcomeDismissed")) is True
    assert until(lambda: stage.look("push button", "Got It") is None)

    step("the focus goes through the buttons in their order")
    # One key at a time: the window has the keyboard before the first, and each has its effect before
    # the next.
    assert until(lambda: stage.window_has_keyboard())
    for harmless in ["space", "Return"]:
        key(harmless)
    order = [stage.focused()]
    while len(order) < 14 and order[-1] != ("push button", "Preferences…"):
        key("Tab")
        last = order[-1]
        order.append(until(lambda: (now := stage.focused()) != last and now))
    buttons = [each[1] for each in order if each and each[0] == "push button"]
    assert buttons == ["Look Again", "Preview…", "Shred Traces", "Shred Traces and",
                       "Shred Files…", "Preferences…"], order
    assert order[0] is None or order[0][0] != "push button", order
    assert stage.look("push button", "Yes") is None, "a key has found a button that shreds"

    step("a click in the panel is saved")
    stage.press("push button", "Preferences…")
    stage.find("dialog", "Dorvanel Preferences")
    find_preference(stage, "pattern", "combo box", "Random data (standard)")
    for value, label in [("1 to 4, at random", "Passes:"), ("Random data (standard)", "Pattern:")]:
        assert stage.label_of(stage.find("combo box", value)) == label
    stage.find("label", "Each file: 1 to 4 passes of random data, the number drawn anew for each "
                        "block.")
    find_preference(stage, "activity log", "check box", "Keep an activity log")
    stage.press("check box", "Keep an activity log")
    assert until(lambda: stored(home).get("ActivityLog")) is True
    find_preference(stage, "netscape", "check box", "Netscape")
    stage.press("check box", "Netscape")
    assert until(lambda: "Mozilla" not in stored(home).get("EnabledBrowsers", ["Mozilla"]))

    step("the factory settings can be undone")
    stage.press("push button", "Factory Settings")
    stage.find("label", "The factory settings are set.")
    stage.press("push button", "Undo")
    assert until(lambda: stage.look("push button", "Undo") is None)
    assert stored(home).get("ActivityLog") is True

    step("the help opens at the page about the panel, and closes")
    key("F1")
    stage.find("list", "Pages of the help")
    stage.find("list item", "Applications of today")
    key("Escape")
    assert until(lambda: stage.look("list", "Pages of the help") is None), "it is still there"
    stage.press("push button", "Close")

    step("a run, from the question to the end")
    stage.press("push button", "Shred Traces")
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
        "Show Dorvanel", None, "Shred Traces", "Shred Traces and Log Out",
        "Shred Traces and Shut Down", "Shred Traces and Restart", None, "Browser Watch",
        "Last Runs…", "Preferences…", None, "Quit Dorvanel"], icon.items()
    key("ctrl+h")
    assert until(lambda: stage.look("frame", "Dorvanel X") is None), "the window is still there"
    icon.choose("Show Dorvanel")
    stage.find("frame", "Dorvanel X")

    step("the icon's menu leads to the last runs, and turns Browser Watch off and on")
    key("ctrl+h")
    assert until(lambda: stage.look("frame", "Dorvanel X") is None), "the window is still there"
    icon.choose("Last Runs…")
    stage.find("frame", "Dorvanel X")
    stage.find("push button", "Run Details…")
    icon.choose("Browser Watch")
    assert until(lambda: stored(home).get("BrowserWatch") is False), stored(home)
    icon.choose("Browser Watch")
    assert until(lambda: stored(home).get("BrowserWatch", True) is True), stored(home)

    step("a status area that goes takes no hidden program with it")
    key("ctrl+h")
    assert until(lambda: stage.look("frame", "Dorvanel X") is None), "the window is still there"
    area.go()
    stage.find("frame", "Dorvanel X")
    area.come()
    icon = area.icon()

    step("a command of the icon's menu asks as any other")
    icon.choose("Shred Traces and Restart")
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
    stage.find("table cell", letter)
    assert open(letter).read() == "dear"

    step("quitting asks, from whatever window is in front, and quits")
    key("ctrl+q")
    stage.press("push button", "Cancel")
    assert stage.program.poll() is None
    until(lambda: stage.look("push button", "Hide") is None)
    key("ctrl+q")
    stage.press("push button", "Quit")
    assert stage.program.wait(timeout=LIMIT) == 0


def find_preference(stage, words, role, name):
    """Types the words into the panel's search, and waits for what was found first."""
    until(lambda: stage.is_active("dialog", "Dorvanel Preferences"))
    key("ctrl+f")
    subprocess.run(["xdotool", "type", words], check=True)
    stage.find("list", "Preferences found")
    key("Return")
    return stage.find(role, name)


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


def look_first(program, home, page):
    step("a preview shows what would go, and Escape leaves it")
    write(page, b"secret")
    store(home, {"FirstRun": True})
    stage = Stage(program)
    stage.press("push button", "Preview…")
    stage.find("dialog", "Preview")
    stage.find("label", "1 item, 1 file, 6 bytes would be shredded.")
    stage.find("table cell", "Safari")
    assert until(lambda: stage.focused() == ("push button", "Cancel")), stage.focused()
    key("Escape")
    assert until(lambda: stage.look("dialog", "Preview") is None)
    assert os.path.exists(page)

    step("what the preview showed is shredded without another question")
    assert until(lambda: stage.can_be_pressed("Preview…"))
    stage.press("push button", "Preview…")
    stage.press("push button", "Shred 1 Item")
    assert until(lambda: not os.path.exists(page)), "the file is still there"

    step("the trash is shown, and shredded")
    assert until(lambda: stage.can_be_pressed("Preview…"))
    old = os.path.join(os.environ["XDG_DATA_HOME"], "Trash/files/old.txt")
    write(old, b"secret")
    # By its keys: the action of a menu item that asks answers only when the person has.
    assert until(lambda: stage.window_has_keyboard())
    key("alt+i")
    assert until(lambda: stage.look("menu item", "Shred Trash…"))
    key("t")
    stage.find("dialog", "Shred Trash")
    # That button alone: where the machine has another trash it says otherwise, and nothing goes.
    stage.press("push button", "Shred 1 Item")
    assert until(lambda: not os.path.exists(old)), "the file is still there"
    assert until(lambda: stage.can_be_pressed("Preview…"))
    assert stage.terminate() == 0


def one_at_a_time(program, home, page):
    step("while something is shredded the window says so and takes no other request")
    # As many passes as there can be keep the worker at work for some seconds, also beside other work
    # of the machine.
    store(home, {"FirstRun": True, "ConfirmShredding": False, "NumberOfWrites": 1,
                 "OverwritePattern": 3})
    write(page, bytes(524288))
    stage = Stage(program)
    stage.press("push button", "Shred Traces")
    stage.find("label", "Shredding…")
    assert until(lambda: not os.path.exists(page))  # else the second one goes with it
    second = os.path.join(os.path.dirname(page), "second.cache")
    write(second, b"secret")
    assert not stage.can_be_pressed("Shred Traces")
    for _ in range(2):
        key("ctrl+Return")
    assert subprocess.call([program, "--action", "shred"], timeout=LIMIT) == 0
    stage.find("label", "Not started: a run is still in progress.")
    assert not stage.can_be_pressed("Shred Files…")
    for _ in range(2):
        key("ctrl+Return")

    step("what was typed meanwhile starts nothing afterwards")
    assert until(lambda: stage.can_be_pressed("Shred Traces"))
    assert os.path.exists(second)

    step("a number that no item stands for shows what it does")
    stage.press("push button", "Preferences…")
    find_preference(stage, "passes", "combo box", "65536 passes (stored: 1)")
    find_preference(stage, "activity log", "check box", "Keep an activity log")
    stage.press("check box", "Keep an activity log")
    assert until(lambda: stored(home).get("ActivityLog")) is True
    assert stored(home).get("NumberOfWrites") == 1
    assert stage.terminate() == 0


def choose_traces(program, home):
    step("the cache of a browser of today is chosen by its box, and a run takes it")
    profile = os.path.join(home, ".config/mozilla/firefox")
    write(os.path.join(profile, "profiles.ini"),
          b"[Profile0]\nName=default\nIsRelative=1\nPath=abc.default\nDefault=1\n")
    bookmarks = os.path.join(profile, "abc.default/kept.html")
    write(bookmarks, b"kept")
    cache = os.path.join(home, ".cache/mozilla/firefox/abc.default/cache2/entries")
    for name in ["A1", "B2", "C3"]:
        write(os.path.join(cache, name), bytes(1000))
    store(home, {"FirstRun": True, "ConfirmShredding": False})
    stage = Stage(program)
    stage.find("label", "Firefox has left 2.9 KiB here.")
    stage.find("tree", "Applications on this computer")
    stage.find("table cell", "Firefox")
    # As a person without a pointer does it: to the tree, down to Firefox, open, down, choose.
    until(lambda: stage.window_has_keyboard())
    for _ in range(6):
        last = stage.focused()
        if last and last[0] == "table cell":
            break
        key("Tab")
        until(lambda: stage.focused() != last)
    key("Home")
    for _ in range(20):
        last = until(lambda: stage.focused())
        if last == ("table cell", "Firefox"):
            break
        key("Down")
        until(lambda: stage.focused() != last)
    assert stage.focused() == ("table cell", "Firefox"), stage.focused()
    key("Right")
    row = stage.find("table cell", "Cache")
    key("Down")
    assert until(lambda: stage.focused() == ("table cell", "Cache")), stage.focused()
    key("space")
    assert until(lambda: stored(home).get("Traces") == {"firefox": ["cache"]}), stored(home)
    assert until(lambda: row.get_state_set().contains(stage.atspi.StateType.CHECKED))
    assert until(lambda: stage.look("push button", "Choose Recommended Traces") is None)
    stage.press("push button", "Shred Traces")
    assert until(lambda: not os.path.exists(cache)), "the cache is still there"
    assert os.path.exists(bookmarks)
    assert stage.terminate() == 0


def stop_and_go_on(program, home, page):
    step("a shredding is stopped after the block at hand, and what is left stays")
    store(home, {"FirstRun": True, "ConfirmShredding": False, "NumberOfWrites": 1,
                 "OverwritePattern": 3})
    shutil.rmtree(os.path.dirname(page), ignore_errors=True)
    write(page, b"secret contents " * 8192)
    witness = os.path.join(home, "witness")
    os.link(page, witness)
    stage = Stage(program)
    stage.press("push button", "Shred Traces")
    assert until(lambda: not os.path.exists(page))
    stage.press("push button", "Stop")
    stage.find("label", "0 of 1 item was shredded. 1 item is left.")
    caches = os.path.join(home, "Library/Caches")
    assert os.listdir(caches), "nothing is left"

    step("going on finishes it")
    assert until(lambda: stage.can_be_pressed("Go On"))
    stage.press("push button", "Go On")
    assert until(lambda: stage.can_be_pressed("Shred Traces") and not os.listdir(caches)), \
        os.listdir(caches)
    with open(witness, "rb") as file:
        assert b"secret" not in file.read(), "its contents are still there"
    assert stage.look("push button", "Go On") is None
    assert stage.terminate() == 0


def what_fails(program, home, page):
    step("a run that fails is marked until it is dismissed, and tells its details")
    store(home, {"FirstRun": True, "ConfirmShredding": False, "ActivityLog": True,
                 "BrowserWatch": False})
    write(page, b"secret")
    # Files that have the names of the folders that a run would move things into, for minutes.
    caches = os.path.dirname(os.path.dirname(page))
    now = int(time.time())
    in_the_way = [os.path.join(caches, "Dorvanel X Items (%d)" % (now + i)) for i in range(300)]
    for path in in_the_way:
        write(path, b"")
    stage = Stage(program)
    stage.press("push button", "Shred Traces")
    stage.find("page tab", "Last Runs (1)")
    assert os.path.exists(page)
    assert any(node.get_role_name() == "label" and "1 item is still there." in node.get_name()
               for node in stage.everything())
    stage.press("push button", "Details…")
    tree = stage.find("tree", "What became of the items")
    assert any("Caches/Safari" in node.get_name() for node in stage.walk(tree))
    for name in ["Copy", "Show in Folder", "Try Again…", "Save Report…"]:
        stage.find("push button", name)
    stage.press("push button", "Close")
    assert until(lambda: stage.look("push button", "Try Again…") is None)
    stage.press("push button", "Dismiss")
    stage.find("page tab", "Last Runs")

    step("the activity log is read in the program")
    stage.press("menu item", "Show Activity Log", showing=False)
    stage.find("dialog", "Activity Log")
    log = stage.find("text", "Activity log")
    assert until(lambda: "Dorvanel Completed Successfully" in
                 stage.atspi.Text.get_text(log, 0, -1))
    assert stage.terminate() == 0
    for path in in_the_way:
        os.remove(path)


def start_hidden(program, area):
    step("a hidden start leaves the icon to come back from")
    area.go()
    area.come()  # the icons of the programs before are none of this one's
    stage = Stage(program, "--hidden")
    icon = area.icon()
    assert stage.look("frame", "Dorvanel X") is None
    assert subprocess.call([program, "--hidden"], timeout=LIMIT) == 0
    assert stage.look("frame", "Dorvanel X") is None, "a second start brought the window"
    icon.choose("Show Dorvanel")
    stage.find("frame", "Dorvanel X")
    assert stage.terminate() == 0


def asked_about(program, home):
    letter = os.path.join(home, "a 'strange' name.txt")
    write(letter, b"dear")
    store(home, {"FirstRun": True, "NumberOfWrites": 2})

    step("a launch that asks does so first")
    stage = Stage(program, "--ask", letter)
    stage.press("push button", "Cancel")
    assert until(lambda: stage.look("push button", "Cancel") is None)
    stage.find("frame", "Dorvanel X")
    assert os.path.exists(letter)

    step("the running program asks, and shreds when the answer is yes")
    assert subprocess.call([program, "--ask", letter], timeout=LIMIT) == 0
    stage.press("push button", "Cancel")
    assert until(lambda: stage.look("push button", "Cancel") is None)
    assert os.path.exists(letter)
    assert subprocess.call([program, "--ask", letter], timeout=LIMIT) == 0
    assert until(lambda: stage.can_be_pressed("Shred 1 Item"))
    stage.press("push button", "Shred 1 Item")
    assert until(lambda: not os.path.exists(letter)), "the file is still there"
    assert stage.terminate() == 0

    step("a launch that is to ask and has nothing to ask about does not start")
    assert subprocess.call([program, "--ask"], stderr=subprocess.DEVNULL, timeout=LIMIT) == 2


def started_by_the_bus(program, home):
    step("the bus starts the program that is to ask")
    if pwd.getpwuid(os.geteuid()).pw_dir != home:
        print("not run: this machine does not let us mount the home folder of an account")
        return
    letter = os.path.join(home, "letter.txt")
    write(letter, b"dear")

    def call(name, object_path, method, *arguments):
        return subprocess.run(
            ["gdbus", "call", "--session", "--dest", name, "--object-path", object_path,
             "--method", method, *arguments],
            check=True, capture_output=True, text=True, timeout=LIMIT).stdout

    call(BUS_NAME, "/com/dorvanel/DorvanelX", "org.freedesktop.Application.ActivateAction", "ask",
         "[<['file://" + quote(letter) + "']>]", "{}")
    answer = call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                  "org.freedesktop.DBus.GetConnectionUnixProcessID", BUS_NAME)
    stage = Stage(program, running=Running(int(answer.split()[1].strip(",)"))))
    stage.press("push button", "Cancel")
    assert until(lambda: stage.look("push button", "Cancel") is None)
    assert open(letter).read() == "dear"
    assert stage.terminate() == 0


def step(text):
    print("-- " + text, flush=True)


if __name__ == "__main__":
    if sys.argv[1] == "--inside":
        sys.exit(inside(sys.argv[2]))
    sys.exit(outside(sys.argv[1]))
