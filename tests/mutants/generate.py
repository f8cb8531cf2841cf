#!/usr/bin/python3
"""generate.py SOURCE TREE: writes into the folder TREE a copy of the program's source in which core/ and app/ can be
broken while they run, and TREE/mutants.json, which says how. What has not changed is not written again."""

import hashlib
import json
import multiprocessing
import os
import re
import shutil
import subprocess
import sys

import sites
import weaving

FOLDERS = ("core/", "app/")
SWITCH = "tests/mutants/MutantSwitch.h"


def arguments(root):
    return ["-xc++", "-std=c++20", f"-I{root}", "-include", f"{root}/{SWITCH}", "-w", "-ferror-limit=0"]


def sites_of(root, unit):
    parsed = sites.parse(f"{root}/{unit}", arguments(root))
    errors = [str(each) for each in parsed.diagnostics if each.severity >= 3]
    if errors:
        raise RuntimeError(errors[0])
    return sites.sites_of(parsed, root, FOLDERS)


def blamed_in(unit):
    """The mutants and constants that the errors of a mutated file are to be blamed on; None where it has none."""
    program = Program.checked
    parsed = sites.parse(f"{program.tree}/{unit}", arguments(program.tree))
    errors = [each for each in parsed.diagnostics if each.severity >= 3]
    blamed = [weaving.blamed(error, program.wovens.get, program.constants) for error in errors]
    if errors and blamed[0] == (set(), set()):
        raise RuntimeError(str(errors[0]))
    return (set().union(*(each[0] for each in blamed)), set().union(*(each[1] for each in blamed))) if errors else None


class Program:
    """All sites by number, and which of them are woven into which file."""

    checked = None  # the one that processes which were forked from this one look at

    def __init__(self, root, tree, units):
        self.root, self.tree, self.units = root, tree, units
        self.files = {}
        self.dropped = set()
        self.kept_constants = set()
        self.constants = set()
        self.wovens = {}

    def find(self):
        by_file = {}
        with multiprocessing.Pool() as pool:
            for found in pool.starmap(sites_of, [(self.root, unit) for unit in self.units], chunksize=1):
                for file, of_file in found.items():
                    by_file.setdefault(file, of_file)
        number = 0
        for file in sorted(by_file):
            # With room between the files: a few more in one do not renumber those of all others.
            number = (number // 100 + 1) * 100
            self.files[file] = {}
            for site in sorted(by_file[file], key=lambda each: each.start):
                number += 1
                self.files[file][number] = site
                if site.variable:
                    self.constants.add(site.variable.name)

    def write(self):
        for file, numbered in self.files.items():
            alive = {number: site for number, site in numbered.items() if self.is_alive(number, site)}
            constants = {(site.variable.start, site.variable.end) for site in alive.values() if site.variable}
            with open(f"{self.root}/{file}", "rb") as source:
                woven = weaving.weave(source.read(), alive, constants)
            self.wovens[f"{self.tree}/{file}"] = woven
            put(f"{self.tree}/{file}", woven.text.encode())

    def is_alive(self, number, site):
        return number not in self.dropped and (site.variable is None or site.variable.name not in self.kept_constants)

    def leave_out_what_does_not_compile(self):
        units = self.units
        for _ in range(12):
            self.write()
            Program.checked = self
            with multiprocessing.Pool() as pool:
                answers = pool.map(blamed_in, units, chunksize=1)
            for answer in answers:
                if answer:
                    self.dropped |= answer[0]
                    self.kept_constants |= answer[1]
            units = [unit for unit, answer in zip(units, answers) if answer]
            if not units:
                return
        raise RuntimeError("the mutated program does not compile: " + ", ".join(units))

    def table(self):
        return [
            {"number": number, "file": file, "line": site.line, "kind": site.kind, "change": site.change}
            for file, numbered in self.files.items() for number, site in numbered.items() if self.is_alive(number, site)
        ]


def put(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    if os.path.exists(path):
        with open(path, "rb") as file:
            if file.read() == content:
                return
    with open(path, "wb") as file:
        file.write(content)


def copy_the_rest(root, tree):
    listed = subprocess.run(["git", "-C", root, "ls-files", "-co", "--exclude-standard"], check=True,
                            capture_output=True, text=True).stdout.split("\n")
    wanted = set()
    for name in listed:
        if not name or not os.path.isfile(f"{root}/{name}"):
            continue
        wanted.add(name)
        if name.startswith(FOLDERS) and name.endswith((".h", ".cpp")):
            continue
        with open(f"{root}/{name}", "rb") as file:
            put(f"{tree}/{name}", file.read())
        shutil.copymode(f"{root}/{name}", f"{tree}/{name}")
    for folder, _, files in os.walk(tree):
        for file in files:
            name = os.path.relpath(f"{folder}/{file}", tree)
            if name not in wanted and name not in ("mutants.json", "sources.hash"):
                os.remove(f"{folder}/{file}")
    return wanted


def fingerprint(root, names):
    """Of all that decides which mutants there are and whether they compile."""
    digest = hashlib.sha256()
    for name in sorted(names):
        port = re.fullmatch(r"platform/\w+\.h", name)
        generator = name in (SWITCH, *(f"tests/mutants/{part}.py" for part in ("generate", "sites", "weaving")))
        if port or generator or name.startswith(FOLDERS) and name.endswith((".h", ".cpp")):
            with open(f"{root}/{name}", "rb") as file:
                digest.update(name.encode() + b"\0" + file.read() + b"\0")
    return digest.hexdigest()


def main():
    root, tree = os.path.realpath(sys.argv[1]), os.path.realpath(sys.argv[2])
    names = copy_the_rest(root, tree)
    now = fingerprint(root, names)
    stamp = f"{tree}/sources.hash"
    if os.path.exists(stamp) and open(stamp).read() == now:
        return
    units = sorted(name for name in names if name.startswith(FOLDERS) and name.endswith(".cpp"))
    for name in names:
        if name.startswith(FOLDERS) and name.endswith(".h"):
            with open(f"{root}/{name}", "rb") as file:
                if not os.path.exists(f"{tree}/{name}"):
                    put(f"{tree}/{name}", file.read())
    program = Program(root, tree, units)
    program.find()
    program.leave_out_what_does_not_compile()
    table = program.table()
    put(f"{tree}/mutants.json", json.dumps(table, indent=0, ensure_ascii=False).encode())
    with open(stamp, "w") as file:
        file.write(now)
    print(f"mutants: {len(table)} in {len(program.files)} files")


if __name__ == "__main__":
    main()
