# SPDX-License-Identifier: MIT
"""The programs that are measured, and the command that each is run by."""

import os
import shutil
import subprocess

# What the preference keys hold for the pass counts and patterns that are measured.
NUMBER_OF_WRITES = {1: "2", 3: "4"}
OVERWRITE_PATTERN = {"random": "0", "zero": "3"}

EACH_FILE = (
    'top=$1; shift; find "$top" -type f -exec "$@" {} + && find "$top" -depth -type d -delete'
)
THEN_FLUSH = 'folder=$1; shift; "$@"; status=$?; sync -f "$folder"; exit $status'


class Program:
    """`command` makes the argument list from the path of the item to shred."""

    def __init__(self, name, command, passes=1, peer=False, flushes=True):
        self.name = name
        self.command = command
        self.passes = passes
        self.peer = peer
        self.flushes = flushes

    def on(self, item, disk):
        """The command for one run; on disk it ends when the file system has been flushed."""
        command = self.command(item)
        if disk and not self.flushes:
            command = ["sh", "-c", THEN_FLUSH, "sh", os.path.dirname(item)] + command
        return command


def is_there(command):
    return shutil.which(command[0]) is not None


def each_file(*command):
    """For programs that take no folders: find hands them the files and removes the folders."""
    return lambda item: ["sh", "-c", EACH_FILE, "sh", item, *command]


def on_item(*command):
    return lambda item: [*command, item]


class Programs:
    """Those found on this machine; what is absent is told by `missing`."""

    def __init__(self, bin_folder, homes, before=None):
        """`before`: the programs of another build, ours to compare with."""
        self.before = before and os.path.join(before, "dorvanel")
        self.bin = bin_folder
        self.homes = homes
        self.dorvanel = os.path.join(bin_folder, "dorvanel")
        wanted = [self.dorvanel, "shred", "srm", "wipe", "scrub"]
        self.missing = [os.path.basename(name) for name in wanted if not is_there([name])]

    def _own(self, passes=1, pattern="random", name="dorvanel"):
        """Ours, with a home whose preferences ask for the passes and the pattern."""
        home = os.path.join(self.homes, f"{passes}-{pattern}")
        if "dorvanel" not in self.missing and not os.path.isdir(home):
            os.makedirs(home)
            for key, value in (
                ("NumberOfWrites", NUMBER_OF_WRITES[passes]),
                ("OverwritePattern", OVERWRITE_PATTERN[pattern]),
            ):
                subprocess.run(
                    [self.dorvanel, "--home", home, "prefs", "set", key, value],
                    check=True,
                    stdout=subprocess.DEVNULL,
                )
        program = self.before if name == "before" else self.dorvanel
        return Program(name, on_item(program, "--home", home, "shred"), passes)

    def _both(self, passes=1, pattern="random"):
        """Ours, and the other build of ours where there is one."""
        names = ["dorvanel", "before"] if self.before else ["dorvanel"]
        return [self._own(passes, pattern, name) for name in names]

    def _bench(self, name, title, passes, flushes):
        program = os.path.join(self.bin, "bench_" + name)
        return Program(title, on_item(program, str(passes)), passes, flushes=flushes)

    def _only_present(self, programs):
        return [p for p in programs if p.name.split()[0] not in self.missing]

    def for_large_file(self, passes, pattern):
        if pattern == "zero":
            peers = [
                Program("shred -u (zeros)", on_item("shred", "-n", "0", "-z", "-u"), 1, True),
                Program("scrub -r (zeros)", on_item("scrub", "-r", "-p", "fillzero"), 1, True),
            ]
        else:
            peers = [
                Program("shred -u", on_item("shred", "-n", str(passes), "-u"), passes, True),
                Program(
                    "wipe", on_item("wipe", "-f", "-s", "-q", "-Q", str(passes)), passes, True
                ),
            ]
            if passes == 1:
                peers.append(Program("srm -ll", on_item("srm", "-ll"), 1, True))
                peers.append(Program("scrub -r", on_item("scrub", "-r", "-p", "random"), 1, True))
            if passes == 3:
                peers.append(Program("scrub -r", on_item("scrub", "-r", "-p", "usarmy"), 3, True))
        plain = [self._bench("plain_random", "plain random()", passes, False)]
        return self._only_present(
            [*self._both(passes, pattern), *peers]
            + (plain if pattern == "random" else [])
            + [self._bench("bare", "bare system calls", passes, True)]
        )

    def for_tree(self):
        shred = ["shred", "-n", "1"]
        return self._only_present(
            [
                *self._both(),
                Program("shred --remove=unlink", each_file(*shred, "--remove=unlink"), 1, True),
                Program("shred -u", each_file(*shred, "-u"), 1, True),
                Program("srm -llr", on_item("srm", "-llr"), 1, True),
                Program("wipe -r", on_item("wipe", "-r", "-f", "-s", "-q", "-Q", "1"), 1, True),
                Program("scrub -r", each_file("scrub", "-r", "-p", "random"), 1, True),
                self._bench("plain_random", "plain random()", 1, False),
                self._bench("bare", "bare system calls", 1, True),
                Program("rm -rf", on_item("rm", "-rf"), flushes=False),
            ]
        )

    def for_one_small_file(self):
        return self._only_present(
            [*self._both(), Program("shred -u", on_item("shred", "-n", "1", "-u"), 1, True)]
        )

    def for_arguments(self):
        """Ours on a folder, and ours on each file of it by itself and the empty folder."""
        own = self._own()

        def one_by_one(item):
            *command, folder = own.command(item)
            return [*command, *(entry.path for entry in os.scandir(folder)), folder]

        return self._only_present([own, Program("dorvanel, one by one", one_by_one)])

    def for_verified(self):
        """Ours, and ours with every file read back."""
        own = self._own()

        def verified(item):
            *command, path = own.command(item)
            return [*command, "--verify", path]

        return self._only_present([own, Program("dorvanel --verify", verified)])

    def for_one_folder(self):
        return self._only_present(self._both())

    def for_preview(self):
        """Ours and the other build of ours, saying what would go, and what adds up the same tree."""

        def looking(own):
            def preview(item):
                *command, path = own.command(item)
                return [*command, "--preview", path]

            return Program(own.name, preview)

        own = [looking(program) for program in self._both()]
        return self._only_present([*own, Program("du -s", on_item("du", "-s"))])

    def for_first_paint(self):
        """Ours and an empty window, each of which ends with its first paint; where they are."""
        home = os.path.join(self.homes, "first-paint")
        # No session bus: there a program that is running already might take the start over.
        environment = ["env", "-i", f"HOME={home}", "LC_ALL=C.UTF-8", "QT_QPA_PLATFORM=offscreen"]
        environment.append("DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent")
        found = []
        for name, program in ("dorvanel-x", "first_paint"), ("empty window", "first_paint_empty"):
            path = os.path.join(self.bin, program)
            if os.path.exists(path):
                os.makedirs(home, exist_ok=True)
                found.append(Program(name, lambda item, path=path: [*environment, path]))
        return found

    def write_limit(self, passes, item):
        """Seconds of writing over an existing file, one flush at the end."""
        program = os.path.join(self.bin, "bench_write_limit")
        done = subprocess.run(
            [program, str(passes), item], check=True, stdout=subprocess.PIPE, text=True
        )
        return float(done.stdout)
