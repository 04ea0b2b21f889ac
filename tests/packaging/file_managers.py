# SPDX-License-Identifier: MIT
"""What file managers are given: their action files by their documented keys, and the extensions in
Python with stand-ins for the modules of the file managers, which need not be there.

usage: file_managers.py SOURCE BUILD
"""
import configparser
import importlib.util
import os
import sys
import types
import unittest
from urllib.parse import quote_from_bytes

SOURCE, BUILD = sys.argv[1:3]
COMMAND = "dorvanel-x --ask -- %F"
STRANGE = [b"/tmp/a b", b"/tmp/it's \"quoted\"", b"/tmp/new\nline", b"/-rf", b"/tmp/--help",
           b"/tmp/\xff\xfe.txt", "/tmp/Übung".encode(), b"/tmp/$(true)`;&|%41", b"/tmp/back\\slash"]


def entries(name):
    parser = configparser.ConfigParser(interpolation=None, delimiters=("=",), strict=True)
    parser.optionxform = str
    with open(os.path.join(SOURCE, "packaging/filemanagers", name), encoding="utf-8") as file:
        parser.read_file(file)
    return parser


class File:
    """A file as a file manager's module shows it."""

    def __init__(self, uri):
        self.uri = uri

    def get_uri(self):
        return self.uri


class MenuItem:
    def __init__(self, **properties):
        self.properties = properties
        self.activated = None

    def connect(self, signal, call):
        assert signal == "activate"
        self.activated = call


def load(folder, manager, languages):
    """The extension, with stand-ins for all that it imports from the file manager."""
    repository = types.ModuleType("gi.repository")
    repository.GLib = types.SimpleNamespace(get_language_names=lambda: languages)
    repository.GObject = types.SimpleNamespace(GObject=type("GObject", (), {}))
    setattr(repository, manager, types.SimpleNamespace(
        MenuProvider=type("MenuProvider", (), {}), MenuItem=MenuItem))
    sys.modules["gi"] = types.ModuleType("gi")
    sys.modules["gi.repository"] = repository
    path = os.path.join(BUILD, "packaging/filemanagers", folder, "dorvanel_x.py")
    spec = importlib.util.spec_from_file_location("dorvanel_x_" + manager, path)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    commands = []
    module.subprocess = types.SimpleNamespace(
        DEVNULL=None, Popen=lambda command, **_: commands.append(command))
    menu = getattr(module, "DorvanelX" + manager + "Menu")()
    return menu, commands


EXTENSIONS = [("nautilus-python", "Nautilus", "get_file_items"),
              ("caja-python", "Caja", "get_file_items"),
              ("thunarx-python", "Thunarx", "get_file_menu_items")]


class Extensions(unittest.TestCase):
    def items(self, extension, files, languages=("C",), windows=((), ("window",))):
        """The menu's items, for each way in which the file manager may ask for them."""
        folder, manager, method = extension
        for window in windows:
            menu, commands = load(folder, manager, languages)
            yield getattr(menu, method)(*window, files), commands

    def test_every_name_reaches_the_program_by_its_very_bytes(self):
        files = [File("file://" + quote_from_bytes(path)) for path in STRANGE]
        for extension in EXTENSIONS:
            for items, commands in self.items(extension, files):
                self.assertEqual(len(items), 1)
                self.assertEqual(commands, [])
                items[0].activated(items[0])
                self.assertEqual(commands, [["dorvanel-x", "--ask", "--", *STRANGE]])

    def test_what_is_not_of_this_machine_is_not_offered(self):
        here = File("file:///tmp/a")
        for other in ["sftp://host/tmp/a", "trash:///a", "file://host/tmp/a", "recent:///1"]:
            for files in [[File(other)], [here, File(other)], []]:
                for extension in EXTENSIONS:
                    for items, _ in self.items(extension, files):
                        self.assertEqual(items, [])

    def test_the_label_is_in_the_language_of_the_person(self):
        for languages, label in [(["de_DE.UTF-8", "de_DE", "de", "C"], "Mit Dorvanel X schreddern …"),
                                 (["fr_FR", "fr", "C"], "Shred with Dorvanel X…"),
                                 (["C"], "Shred with Dorvanel X…")]:
            for extension in EXTENSIONS:
                for items, _ in self.items(extension, [File("file:///tmp/a")], languages):
                    self.assertEqual(items[0].properties["label"], label)


class ActionFiles(unittest.TestCase):
    def check_texts(self, group, keys):
        for key in keys:
            self.assertTrue(group[key])
            self.assertTrue(group[key + "[de]"])
            self.assertNotEqual(group[key], group[key + "[de]"])

    def test_dolphins_menu_has_the_action_for_local_files_and_folders(self):
        file = entries("kio.desktop")
        entry = file["Desktop Entry"]
        self.assertEqual(entry["Type"], "Service")
        self.assertEqual(entry["X-KDE-ServiceTypes"], "KonqPopupMenu/Plugin")
        self.assertEqual(entry["X-KDE-Protocols"], "file")
        self.assertEqual(set(entry["MimeType"].rstrip(";").split(";")),
                         {"application/octet-stream", "inode/directory"})
        action = file["Desktop Action " + entry["Actions"].rstrip(";")]
        self.assertEqual(action["Exec"], COMMAND)
        self.check_texts(action, ["Name"])

    def test_nemos_action_is_for_any_local_selection(self):
        known = {"Active", "Name", "Comment", "Exec", "Icon-Name", "Stock-Id", "Selection",
                 "Extensions", "Mimetypes", "Separator", "Quote", "Dependencies", "Conditions",
                 "Terminal", "UriScheme"}
        action = entries("dorvanel-x.nemo_action")["Nemo Action"]
        self.assertLessEqual({key.split("[")[0] for key in action}, known)
        # URIs: of a path it drops what follows the end of a line in a name.
        self.assertEqual(action["Exec"], "dorvanel-x --ask -- %U")
        self.assertEqual(action["Selection"], "notnone")
        self.assertEqual(action["Extensions"], "any;")
        self.assertEqual(action["UriScheme"], "file")
        # A URI has "'" and "$" as they are, but never a double quote.
        self.assertEqual(action["Quote"], "double")
        self.check_texts(action, ["Name", "Comment"])

    def test_the_action_of_libfm_is_for_any_local_selection(self):
        file = entries("libfm.desktop")
        entry = file["Desktop Entry"]
        self.assertEqual(entry["Type"], "Action")
        self.check_texts(entry, ["Name", "Tooltip"])
        profile = file["X-Action-Profile " + entry["Profiles"].rstrip(";")]
        self.assertEqual(profile["MimeTypes"], "all/all;")
        self.assertEqual(profile["Schemes"], "file;")
        self.assertEqual(profile["SelectionCount"], ">0")
        self.assertEqual(profile["Exec"], COMMAND)

    def test_thunar_can_send_files_to_the_program(self):
        entry = entries("thunar-sendto.desktop")["Desktop Entry"]
        self.assertEqual(entry["Exec"], COMMAND)
        self.check_texts(entry, ["Name"])

    def test_the_bus_starts_the_program_by_the_name_that_it_takes(self):
        path = os.path.join(BUILD, "packaging/filemanagers/com.dorvanel.DorvanelX.service")
        with open(path, encoding="utf-8") as file:
            lines = file.read().splitlines()
        self.assertIn("Name=com.dorvanel.DorvanelX", lines)
        program = [line for line in lines if line.startswith("Exec=")]
        self.assertEqual(len(program), 1)
        self.assertRegex(program[0], r"^Exec=/.*/bin/dorvanel-x$")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
