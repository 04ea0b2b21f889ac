# SPDX-License-Identifier: MIT
"""The desktop program under a Wayland compositor without a screen.

usage: wayland_smoke.py PROGRAM

Starts a compositor and a session bus of its own, and the program with a temporary home folder. Finds
everything by role and name in the accessibility tree. Exits with 0 when all is as it should be;
prints what was not run where the machine lacks a part.
"""
import os
import shutil
import subprocess
import sys
import tempfile

from end_to_end import Stage, step, until, write

PARTS = ["weston", "dbus-run-session"]


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
    with tempfile.TemporaryDirectory() as folder:
        home = os.path.join(folder, "home")
        write(os.path.join(home, "Library/Caches/Safari/page.cache"), b"secret")
        # Whatever runs on the machine, the program sees no application running.
        listing = os.path.join(folder, "bin/ps")
        write(listing, b"#!/bin/sh\necho COMMAND\n")
        os.chmod(listing, 0o755)
        environment = dict(
            os.environ, HOME=home, PATH=os.path.dirname(listing) + ":" + os.environ["PATH"],
            XDG_RUNTIME_DIR=folder, WAYLAND_DISPLAY="wayland-of-the-test",
            QT_QPA_PLATFORM="wayland", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        environment.pop("DISPLAY", None)
        os.chmod(folder, 0o700)
        compositor = subprocess.Popen(
            ["weston", "--backend=headless-backend.so", "--socket=wayland-of-the-test",
             "--no-config", "--idle-time=0", "--width=1366", "--height=768"],
            env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            socket = os.path.join(folder, "wayland-of-the-test")
            assert until(lambda: os.path.exists(socket)), "the compositor did not start"
            return subprocess.call(
                ["dbus-run-session", "--", sys.executable, __file__, "--inside", program],
                env=environment)
        finally:
            compositor.terminate()
            compositor.wait()


def inside(program):
    page = os.path.join(os.environ["HOME"], "Library/Caches/Safari/page.cache")
    stage = Stage(program)

    step("the window comes up, by Wayland and nothing else")
    stage.find("frame", "Dorvanel X")
    with open("/proc/%d/maps" % stage.program.pid) as maps:
        names = maps.read()
    assert "libQt6WaylandClient" in names and "libqxcb" not in names

    step("the preferences open and close")
    stage.press("push button", "Preferences…")
    stage.find("dialog", "Dorvanel Preferences")
    stage.press("push button", "Close")
    assert until(lambda: stage.look("dialog", "Dorvanel Preferences") is None)

    step("a run, from the question to the end")
    stage.press("push button", "Shred Traces")
    stage.find("label", "Are you sure you want to shred these items: Browser Cache, Mail Trash ?")
    stage.press("push button", "Yes")
    assert until(lambda: not os.path.exists(page)), "the file is still there"

    step("a signal ends the program")
    assert stage.terminate() == 0
    print("done")
    return 0


if __name__ == "__main__":
    if sys.argv[1] == "--inside":
        sys.exit(inside(sys.argv[2]))
    sys.exit(outside(sys.argv[1]))
