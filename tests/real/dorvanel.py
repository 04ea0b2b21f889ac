# SPDX-License-Identifier: MIT
"""The program that is tested, with the descriptions of this source tree beside it."""

import json
import pathlib
import shutil
import subprocess

from session import wait_until

DESCRIPTIONS = pathlib.Path(__file__).parents[2] / "resources" / "applications"


class Dorvanel:
    def __init__(self, program, session):
        prefix = session.folder / "prefix"
        self.program = prefix / "bin" / "dorvanel"
        self.program.parent.mkdir(parents=True)
        shutil.copy(program, self.program)
        shutil.copytree(DESCRIPTIONS, prefix / "share" / "dorvanel" / "applications")
        self.environment = session.environment

    def call(self, home, *arguments, may=(0,)):
        environment = self.environment | {"HOME": str(home)}
        command = [str(self.program), *arguments]
        done = subprocess.run(command, env=environment, capture_output=True, timeout=900)
        # The log has random names in it.
        done.stdout, done.stderr = (
            text.decode(errors="replace") for text in (done.stdout, done.stderr)
        )
        if done.returncode not in may:
            said = f"{done.stdout}{done.stderr}"
            raise RuntimeError(
                f"{' '.join(arguments)} ended with status {done.returncode}:\n{said}"
            )
        return done

    def describe(self, home, application):
        document = json.loads(self.call(home, "traces", "--all", "--json").stdout)
        (found,) = (entry for entry in document["applications"] if entry["id"] == application)
        return found

    def traces(self, home, application):
        """What it finds of the application, by kind."""
        return {trace["kind"]: trace for trace in self.describe(home, application)["traces"]}

    def wait_for_end(self, home, application):
        """Some programs have parts that end a little later."""
        wait_until(lambda: not self.describe(home, application)["running"], 30, "it still runs")

    def clean(self, home, application, kinds):
        """One run with these kinds and nothing else. What it said."""
        self.call(home, "prefs", "set", "ActivityLog", "YES")
        self.call(home, "traces", "select", application, *kinds)
        done = self.call(home, "run", "--yes", may=(0, 1))
        return done.returncode, done.stderr, self.call(home, "log").stdout
