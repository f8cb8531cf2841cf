#!/usr/bin/python3
"""commands.py PRESET: fails when a command in the documents cannot be what it says: an unknown make target, script, preset or build
target, a pattern that finds no test in this preset's build, or a command that commands.txt gives nothing to run it.
commands.py --long: writes the commands that scripts/check-commands runs, one a line."""

import glob
import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAMS = r"(?:make [a-z]|scripts/[\w/-]*\w(?![\w/-])|ctest |cmake |gdb |sudo |build/[\w-]+/\w+_tests )"
FOUND_IN_A_BUILD = re.compile(r"(?:ctest|scripts/build|build/[\w-]+/\w+)(?: |$)")


def commands_of(path):
    """Each command of a document with its line number: the indented ones, and those in `backticks`."""
    with open(path, encoding="utf-8") as document:
        for number, line in enumerate(document, 1):
            if line.startswith("    "):
                found = [line.strip()] if re.match(PROGRAMS, line.strip()) else []
            else:
                found = [code for code in re.findall(r"`([^`]+)`", line) if re.match(PROGRAMS, code)]
            for text in found:
                text = re.sub(r"\s+#.*| \[[^]]*\]", "", text)
                for command in text.split(" && "):
                    yield number, command.strip()


def table():
    """What runs a command, and the command that stands for it, by command."""
    entries = {}
    with open(os.path.join(ROOT, "tests/documents/commands.txt"), encoding="utf-8") as lines:
        for line in lines:
            if line.strip() and not line.startswith("#"):
                how, command = line.strip().split(None, 1)
                command, _, instead = (part.strip() for part in command.partition("=>"))
                entries[command] = (how, instead or command)
    return entries


def output_of(*command):
    return subprocess.run(command, cwd=ROOT, check=True, capture_output=True, text=True).stdout


def tests_found(preset, pattern=None):
    wanted = ["-R", pattern] if pattern else []
    listed = output_of("ctest", "--preset", preset, "--show-only", *wanted)
    return set(re.findall(r"^ *Test +#\d+: (\S+)", listed, re.MULTILINE))


def complaint_about_build(command, preset):
    """What is wrong with a command that one build can answer for; nothing when it is another preset's."""
    words = [word.strip("'\"") for word in command.split()]
    if words[0] == "ctest":
        if words[2] == preset and not tests_found(preset, words[words.index("-R") + 1]):
            return "finds no test"
    elif words[0] == "scripts/build":
        if f'"name": "{words[1]}"' not in read("CMakePresets.json"):
            return "there is no such preset"
        if words[1] == preset:
            missing = [word for word in words[2:] if not os.access(os.path.join(ROOT, "build", preset, word), os.X_OK)]
            if missing:
                return "builds no " + ", ".join(missing)
    elif words[0].split("/")[1] == preset:
        if not os.access(os.path.join(ROOT, words[0]), os.X_OK):
            return "there is no such program"
        wanted = [word.replace("'", "") for word in words if word.startswith("--gtest_filter=")]
        if wanted and not re.search(r"^  ", output_of(words[0], "--gtest_list_tests", *wanted), re.MULTILINE):
            return "finds no test"
    return None


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def complaint_about(command, entries, tests, targets):
    first = command.split()[0]
    if first == "make" and command.split()[1] not in targets:
        return "make has no such target"
    if first.startswith("scripts/") and not os.access(os.path.join(ROOT, first), os.X_OK):
        return "there is no such script"
    if command not in entries:
        return "tests/documents/commands.txt does not say what runs it"
    how = entries[command][0]
    if how not in ("suite", "long", "week", "clean", "mac") and how not in tests:
        return f"there is no test {how}"
    return None


def check(preset):
    entries = table()
    tests = tests_found("release") if preset == "release" else set()
    targets = set(re.findall(r"^([a-z-]+):", read("Makefile"), re.MULTILINE))
    named, complaints = set(), []
    documents = [os.path.join(ROOT, name) for name in ("README.md", "CONTRIBUTING.md")]
    for path in documents + sorted(glob.glob(os.path.join(ROOT, "docs/*.md"))):
        for number, command in commands_of(path):
            named.add(command)
            if FOUND_IN_A_BUILD.match(command) and command not in entries:
                complaint = complaint_about_build(command, preset)
            else:
                complaint = preset == "release" and complaint_about(command, entries, tests, targets)
            if complaint:
                complaints.append(f"{os.path.relpath(path, ROOT)}:{number}: {command}: {complaint}")
    complaints += [f"tests/documents/commands.txt: {command}: no document names it" for command in sorted(set(entries) - named)]
    for complaint in complaints:
        print(complaint)
    print(f"{len(named)} commands in the documents, {len(complaints)} complaints")
    return 1 if complaints or not named else 0


if sys.argv[1:] == ["--long"]:
    print(*dict.fromkeys(instead for how, instead in table().values() if how == "long"), sep="\n")
else:
    sys.exit(check(sys.argv[1]))
