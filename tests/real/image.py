# SPDX-License-Identifier: MIT
"""A home on a file system of its own, whose medium can be read behind its back."""

import mmap
import pathlib
import subprocess

from words import forms_of

MEGABYTES = 384


class Image:
    """Holds a copy of `home` below `folder`; nothing of it has ever been on this medium before."""

    def __init__(self, folder, home):
        self.file, self.mount = folder / "medium", folder / "mounted"
        self.mount.mkdir()
        with open(self.file, "wb") as medium:
            medium.truncate(MEGABYTES << 20)
        self.call("mkfs.ext4", "-q", "-F", str(self.file))
        self.call("mount", "-o", "loop", str(self.file), str(self.mount))
        self.home = self.mount / "home"
        self.call("cp", "-a", str(home), str(self.home))
        self.call("sync", "-f", str(self.home))

    @staticmethod
    def call(*command):
        subprocess.run(command, check=True, capture_output=True)

    def unmount(self):
        if self.mount.is_mount():
            self.call("umount", str(self.mount))

    def count(self, word):
        """How often the word stands on the medium, in whatever form."""
        with open(self.file, "rb") as file, mmap.mmap(
            file.fileno(), 0, access=mmap.ACCESS_READ
        ) as medium:
            return sum(self.count_form(medium, form) for form in set(forms_of(word)))

    @staticmethod
    def count_form(medium, form):
        count = at = 0
        while (at := medium.find(form, at)) >= 0:
            count, at = count + 1, at + 1
        return count
