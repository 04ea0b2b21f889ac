# SPDX-License-Identifier: MIT
"""A screen, a bus and a home for programs that are started here, and for nothing else."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time


def wait_until(holds, seconds, what):
    """Looks again and again; what does not come to be in time is a failure."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if result := holds():
            return result
        time.sleep(0.1)
    raise TimeoutError(what)


class Session:
    """Everything lies below one temporary folder, which goes with it."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="real-"))
        self.home = self.folder / "home"
        runtime = self.folder / "runtime"
        for made in (self.home, runtime):
            made.mkdir(mode=0o700)
        kept = {"PATH", "LANG", "LC_ALL", "USER", "LOGNAME"}
        self.environment = {key: value for key, value in os.environ.items() if key in kept}
        self.environment |= {"HOME": str(self.home), "XDG_RUNTIME_DIR": str(runtime)}
        self.environment |= {"TMPDIR": str(self.folder / "tmp"), "NO_AT_BRIDGE": "1"}
        (self.folder / "tmp").mkdir()
        self.started = []
        self.start_screen()
        self.start_bus()

    def start_screen(self):
        reading, writing = os.pipe()
        self.start(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24"], pass_fds=[writing]
        )
        os.close(writing)
        with os.fdopen(reading) as number:
            self.environment["DISPLAY"] = f":{number.readline().strip()}"
        self.start(["openbox"])

    def start_bus(self):
        reading, writing = os.pipe()
        command = ["dbus-daemon", "--session", "--nofork", f"--print-address={writing}"]
        self.start(command, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as address:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = address.readline().strip()

    def start(self, command, extra=None, **options):
        log = open(self.folder / f"{pathlib.Path(command[0]).name}.log", "ab")
        environment = self.environment | (extra or {})
        process = subprocess.Popen(
            command,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=log,
            cwd=self.home,
            **options,
        )
        log.close()
        self.started.append(process)
        return process

    def run(self, *command, seconds=60, check=True):
        return subprocess.run(
            command,
            env=self.environment,
            capture_output=True,
            text=True,
            timeout=seconds,
            check=check,
        )

    def window(self, name):
        """The number of the first window that is seen under this name."""
        found = self.run(
            "xdotool", "search", "--onlyvisible", "--class", name, check=False
        ).stdout.split()
        return found[-1] if found else None

    def press(self, name, *keys):
        window = wait_until(lambda: self.window(name), 30, f"no window of {name}")
        self.run(
            "xdotool",
            "windowactivate",
            "--sync",
            window,
            "key",
            "--clearmodifiers",
            *keys,
            check=False,
        )

    def end(self, process, seconds=20):
        """Waits until it has ended of itself, and says whether it did."""
        try:
            process.wait(seconds)
            return True
        except subprocess.TimeoutExpired:
            process.terminate()
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            return False

    def close(self, is_kept=False):
        for process in reversed(self.started):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        if not is_kept:
            shutil.rmtree(self.folder, ignore_errors=True)
