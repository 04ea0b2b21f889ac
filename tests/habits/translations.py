#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Looks whether every text of the programs has a translation that fits it, in each language.

usage: translations.py [--write [--new=LANGUAGE]] ROOT

With --write the files of ROOT/resources/translations are renewed from the sources: what is new
comes in without a translation, what is no longer said goes; --new adds the files of a language.
Without it nothing is written; what is not translated, or does not fit, is told, and the command
fails.
"""

import gettext
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

FOLDER = "resources/translations"
# The window's program reads it before its toolkit is there, and so has it by gettext.
COMMAND_LINE = "CommandLine.cpp"
LUPDATE = ["/usr/lib/qt6/bin/lupdate", "lupdate6", "lupdate-qt6", "lupdate"]
# A date of the texts would change with every renewal.
UNDATED = re.compile(r'^"(POT-Creation-Date|PO-Revision-Date): .*\n', re.MULTILINE)


def run(*command):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{command[0]}: {done.stdout}{done.stderr}")
    return done.stdout


def lupdate():
    return next((found for name in LUPDATE if (found := shutil.which(name))), None)


def short(text):
    text = " ".join(text.split())
    return f'"{text}"' if len(text) < 60 else f'"{text[:56]}..."'


# What stands in a text for something else, and must stand in its translation too.


def places_of_fmt(text):
    """Which arguments a format names, with their specifications: {} counts on from the left."""
    places, next_place = [], 0
    for number, specification in re.findall(
        r"\{(\d*)(:[^{}]*)?\}", text.replace("{{", "").replace("}}", "")
    ):
        places.append((int(number) if number else next_place, specification))
        next_place += not number
    mixed = re.search(r"\{\d", text) and re.search(r"\{[}:]", text)
    return ["mixed"] if mixed else sorted(places)


def places_of_qt(text):
    return sorted(re.findall(r"%(?:L?\d+|L?n)", text))


def mnemonic(text):
    found = re.findall(r"&([^&\s])", text.replace("&&", ""))
    return found[0].lower() if found else ""


def faults_of(source, forms, wanted, places):
    """What is wrong with the forms of one translation, in words."""
    if len(forms) != wanted:
        yield f"has {len(forms)} forms of {wanted}"
    for form in forms:
        if not form.strip():
            yield "is not translated"
        elif places(form) != places(source):
            yield f"has other places: {short(form)}"
        elif source.endswith("\n") != form.endswith("\n"):
            yield f"ends otherwise: {short(form)}"


# The terminal program: gettext.


def catalog(path, folder):
    """The translated texts of a file, as {source: [form...]}, and the number of its forms."""
    compiled = folder / "compiled.mo"
    run("msgfmt", "--check-format", "--check-domain", "-o", compiled, path)
    with compiled.open("rb") as file:
        translations = gettext.GNUTranslations(file)
    texts = {}
    for key, value in translations._catalog.items():
        source, form = key if isinstance(key, tuple) else (key, 0)
        if source:
            texts.setdefault(source, {})[form] = value
    header = translations.info().get("plural-forms", "nplurals=2")
    forms = {source: [by[n] for n in sorted(by)] for source, by in texts.items()}
    counted = {key[0] for key in translations._catalog if isinstance(key, tuple)}
    return forms, counted, int(re.search(r"nplurals=(\d+)", header).group(1))


def template(root, folder):
    """What the core and the terminal program say, and the command line of the window's."""
    sources = sorted(
        path
        for path in (root / "src/app").rglob("*")
        if path.suffix in (".cpp", ".h")
        and ("desktop" not in path.parts or path.name == COMMAND_LINE)
    )
    made = folder / "dorvanel.pot"
    command = ["xgettext", "--language=C++", "--from-code=UTF-8", "--package-name=dorvanel"]
    command += ["--keyword", "--keyword=tr:1", "--keyword=trn:1,2", "--keyword=marked:1"]
    command += ["--sort-by-file", "--add-location=file", f"--directory={root}", "-o", made]
    run(*command, *(path.relative_to(root) for path in sources))
    text = made.read_text().replace("charset=CHARSET", "charset=UTF-8")
    text = text.replace("nplurals=INTEGER; plural=EXPRESSION", "nplurals=2; plural=(n != 1)")
    made.write_text(text)
    return made


def gettext_faults(root, folder, writes, new):
    made = template(root, folder)
    if new:
        begun = root / FOLDER / f"dorvanel_{new}.po"
        run("msginit", "--no-translator", "--width=100", "-l", new, "-i", made, "-o", begun)
    filled = folder / "english.po"
    run("msgen", "--lang=en", "-o", filled, made)
    said, counted, _ = catalog(filled, folder)
    for path in sorted((root / FOLDER).glob("dorvanel_*.po")):
        if writes:
            merged = folder / "merged.po"
            merging = ["--quiet", "--no-fuzzy-matching", "--add-location=file", "--width=100"]
            run("msgmerge", *merging, "-o", merged, path, made)
            path.write_text(
                UNDATED.sub("", run("msgattrib", "--no-obsolete", "--width=100", merged))
            )
            continue
        translated, _, forms = catalog(path, folder)
        for source in said:
            if source not in translated:
                yield f"{path.name}: {short(source)} is not translated"
                continue
            wanted = forms if source in counted else 1
            for fault in faults_of(source, translated[source], wanted, places_of_fmt):
                yield f"{path.name}: {short(source)} {fault}"
        for source in translated.keys() - said.keys():
            yield f"{path.name}: {short(source)} is no longer said"


# The desktop program: Qt.


def messages(path):
    """The messages of a .ts file, as {(context, source, comment): element}."""
    found = {}
    for context in xml.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            key = (context.findtext("name"), message.findtext("source") or "")
            found[(*key, message.findtext("comment") or "")] = message
    return found


def forms_of(message):
    translation = message.find("translation")
    if message.get("numerus") == "yes":
        return [form.text or "" for form in translation.iter("numerusform")]
    return [translation.text or ""]


def groups_of(interface):
    """Texts of a .ui file among which the key after Alt must tell one: the actions of a menu; the
    menus, buttons, labels and pages of a window."""
    root = xml.parse(interface).getroot()

    def text_of(element, kind, names):
        for part in element.findall(kind):
            if part.get("name") in names:
                return part.findtext("string") or ""
        return ""

    actions = {one.get("name"): text_of(one, "property", ["text"]) for one in root.iter("action")}
    for menu in root.iter("widget"):
        if menu.get("class") == "QMenu":
            yield [actions.get(added.get("name"), "") for added in menu.iter("addaction")]
    windows = [one for one in root.iter("widget") if one.get("class") in ("QMainWindow", "QDialog")]
    for window in windows:
        inner = [one for other in windows if other is not window for one in other.iter("widget")]
        own = [one for one in window.iter("widget") if one not in inner]
        yield [text_of(one, "property", ["text", "title"]) for one in own] + [
            text_of(one, "attribute", ["title"]) for one in own
        ]


def mnemonic_faults(root, path, known):
    translated = {key[:2]: forms_of(message)[0] for key, message in known.items()}
    for interface in sorted((root / "resources").glob("*.ui")):
        context = xml.parse(interface).getroot().findtext("class")
        for group in groups_of(interface):
            texts = sorted({text for text in group if mnemonic(text)})
            keys = [mnemonic(translated.get((context, text), "")) for text in texts]
            for i, text in enumerate(texts):
                for j in range(i):
                    same = keys[i] and keys[i] == keys[j]
                    if same and mnemonic(text) != mnemonic(texts[j]):
                        yield (
                            f"{path.name}: {short(texts[j])} and {short(text)} "
                            f"are both reached by Alt+{keys[i].upper()}"
                        )


def qt_faults(root, folder, writes, new):
    tool = lupdate()
    if tool is None:
        print("lupdate was not found: the texts of the desktop program are not looked at")
        return
    desktop = sorted((root / "src/app/desktop").rglob("*.cpp"))
    desktop = [path for path in desktop if path.name != COMMAND_LINE]
    desktop += sorted((root / "src/app/desktop").rglob("*.h"))
    sources = desktop + sorted((root / "resources").glob("*.ui"))
    paths = sorted((root / FOLDER).glob("dorvanel-x_*.ts"))
    if new:
        paths.append(root / FOLDER / f"dorvanel-x_{new}.ts")
    for path in paths:
        language = path.stem.partition("_")[2]
        renewed = folder / path.name
        if path.exists():
            shutil.copyfile(path, renewed)
        run(tool, "-silent", "-no-obsolete", "-locations", "none", "-source-language", "en",
            "-target-language", language, "-I", root / "src", *sources, "-ts", renewed)
        if writes:
            shutil.copyfile(renewed, path)
            continue
        said, translated = messages(renewed), messages(path)
        for key, message in said.items():
            if key not in translated:
                yield f"{path.name}: {short(key[1])} is not translated"
                continue
            if message.find("translation").get("type") == "unfinished":
                yield f"{path.name}: {short(key[1])} is unfinished"
                continue
            forms = forms_of(message)
            # As many as the language has: lupdate has put empty ones where some were missing.
            for fault in faults_of(key[1], forms, len(forms), places_of_qt):
                yield f"{path.name}: {short(key[1])} {fault}"
            for form in forms:
                if bool(mnemonic(form)) != bool(mnemonic(key[1])):
                    yield f"{path.name}: {short(key[1])} has a mnemonic, or has none: {short(form)}"
        for key in translated.keys() - said.keys():
            yield f"{path.name}: {short(key[1])} is no longer said"
        yield from mnemonic_faults(root, path, translated)


def main(arguments):
    writes = "--write" in arguments
    new = next((word[6:] for word in arguments if word.startswith("--new=")), "")
    places = [word for word in arguments if not word.startswith("--")]
    if len(places) != 1 or (new and not writes):
        sys.exit(__doc__)
    root = pathlib.Path(places[0])
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        faults = []
        if shutil.which("xgettext"):
            faults += gettext_faults(root, folder, writes, new)
        else:
            print("xgettext was not found: the texts of the terminal program are not looked at")
        faults += qt_faults(root, folder, writes, new)
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
