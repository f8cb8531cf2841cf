#!/usr/bin/python3
"""run.py TREE PROGRAM [COUNT] [--all] [--mutant=NUMBER] [--file=PART]...: runs mutants of a mutated program against the
tests that were built of it, and says which ones no test notices. Called by scripts/mutants, which says more."""

import argparse
import atexit
import concurrent.futures
import hashlib
import json
import os
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

# The tests of a folder, the nearest first; then all others, the quickest first.
NEAREST = (
    ("core/", ["core_tests"]),
    ("app/tracking/", ["tracking_tests"]),
    ("app/automation/", ["automation_tests"]),
    ("app/strip/tabs/", ["tabs_tests", "strip_tests"]),
    ("app/strip/", ["strip_tests"]),
    ("app/panels/", ["panels_tests"]),
    ("app/", ["shell_tests"]),
)
KINDS = ("condition", "call", "comparison", "order", "constant", "negation", "operator", "text")
MEMORY = 4 << 30
EXPLAINED = os.path.join(os.path.dirname(os.path.abspath(__file__)), "explained.txt")


class Tests:
    """Tests of one program: how long they take when nothing is broken, and the mutants whose code they run."""

    def __init__(self, path, scratch, filter):
        self.name = os.path.basename(path)
        self.path, self.scratch, self.filter = path, scratch, filter
        self.limit = 600
        measured = f"{scratch}/{self.name}"
        for kept in (measured + ".reached", measured + ".json"):
            if os.path.exists(kept):
                os.remove(kept)
        start = time.monotonic()
        if self.notices(0, {"PELLAR_MUTANTS_REACHED": measured + ".reached", "GTEST_OUTPUT": f"json:{measured}.json"}):
            sys.exit(f"mutants: {self.name} fails without a mutant")
        self.seconds = time.monotonic() - start
        self.limit = 10 + 8 * self.seconds
        with open(measured + ".reached") as file:
            self.reached = {int(line) for line in file}
        with open(measured + ".json") as file:
            suites = json.load(file)["testsuites"]
        self.slow = [f"{suite['name']}.{test['name']}" for suite in suites for test in suite["testsuite"]
                     if float(test["time"].rstrip("s")) > 0.2]

    def command(self):
        # Of the random days two hundred; their program knows no other tests.
        which = "--days=1-200" if self.name == "simulation_tests" else f"--gtest_filter={self.filter}"
        return [self.path, "--gtest_brief=1", "--gtest_fail_fast", which]

    def notices(self, number, more=None):
        folder = f"{self.scratch}/run-{threading.get_ident()}"
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(f"{folder}/home")
        # The tests are told where home is, so that a broken program cannot touch the user's.
        environment = dict(os.environ, PELLAR_MUTANT=str(number), HOME=f"{folder}/home", TMPDIR=folder,
                           RC_PARAMS="seed=1741079727", **(more or {}))
        environment.pop("XDG_DATA_HOME", None)
        process = subprocess.Popen(
            self.command(), cwd=folder, env=environment, start_new_session=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY)))
        try:
            return process.wait(self.limit) != 0
        except subprocess.TimeoutExpired:
            return True
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()
            shutil.rmtree(folder, ignore_errors=True)


def tests_of(built, scratch):
    """The tests of a program, the slow ones apart: most mutants are caught without them, and few reach them."""
    path = shutil.copy(built, scratch)  # that may be built anew meanwhile
    # The layers are no matter of the code that is broken.
    everything = Tests(path, scratch, "-Layering.*")
    if everything.name == "simulation_tests" or not everything.slow:
        return [everything]
    slow = ":".join(everything.slow)
    return [Tests(path, scratch, f"-Layering.*:{slow}"), Tests(path, scratch, slow)]


def sample(mutants, count):
    """That many, spread evenly over the files and, in each file, over the ways to break it; always the same ones."""
    files = {}
    for mutant in mutants:
        key = hashlib.sha256((mutant["file"] + mutant["change"]).encode()).hexdigest()
        files.setdefault(mutant["file"], []).append((key, mutant))
    chosen = []
    for file, keyed in sorted(files.items()):
        by_kind = {kind: [each for _, each in sorted(keyed, key=lambda pair: pair[0]) if each["kind"] == kind] for kind in KINDS}
        order = []
        while any(by_kind.values()):
            order += [of_kind.pop(0) for of_kind in by_kind.values() if of_kind]
        chosen += [((place + 0.5) / len(order), each) for place, each in enumerate(order)]
    chosen.sort(key=lambda pair: (pair[0], pair[1]["number"]))
    return [mutant for _, mutant in chosen[:count]]


def explanations():
    """file and change -> reason, from lines "file | change | reason"."""
    explained = {}
    with open(EXPLAINED) as file:
        for line in file:
            if line.strip() and not line.startswith("#"):
                name, rest = line.rstrip("\n").split(" | ", 1)
                change, reason = rest.rsplit(" | ", 1)
                explained[name, change] = reason
    return explained


def noticed_by(mutant, programs):
    nearest = next(names for folder, names in NEAREST if mutant["file"].startswith(folder))
    ordered = sorted(programs, key=lambda each: (each.seconds > 2, each.name not in nearest, each.seconds))
    reached = [program for program in ordered if mutant["number"] in program.reached]
    for program in reached:
        if program.notices(mutant["number"]):
            return program.name, True
    return None, bool(reached)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("tree")
    parser.add_argument("program")
    parser.add_argument("tests", help="the test programs' names, with commas")
    parser.add_argument("count", nargs="?", type=int, default=400)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--file", action="append", default=[])
    parser.add_argument("--mutant", type=int)
    options = parser.parse_args()

    with open(f"{options.tree}/mutants.json") as file:
        mutants = json.load(file)
    explained = explanations()
    stale = set(explained) - {(mutant["file"], mutant["change"]) for mutant in mutants}
    wanted = [mutant for mutant in mutants if not options.file or any(part in mutant["file"] for part in options.file)]
    if options.mutant:
        wanted = [mutant for mutant in wanted if mutant["number"] == options.mutant]
    elif not options.all and not options.file:
        wanted = sample(wanted, options.count)

    memory = "/dev/shm" if os.path.isdir("/dev/shm") else options.program
    scratch = tempfile.mkdtemp(prefix="pellar-mutants-", dir=os.path.realpath(memory))
    os.chmod(scratch, 0o755)  # some tests become another user
    atexit.register(shutil.rmtree, scratch, ignore_errors=True)
    programs = [tests for name in options.tests.split(",")
                for tests in tests_of(f"{os.path.realpath(options.program)}/{name}", scratch)]
    start = time.monotonic()
    results = open(f"{options.program}/results.jsonl", "w")  # for who watches

    def answer(mutant):
        began = time.monotonic()
        name, reached = noticed_by(mutant, programs)
        took = round(time.monotonic() - began, 1)
        print(json.dumps(dict(mutant, noticed=name, reached=reached, seconds=took), ensure_ascii=False), file=results, flush=True)
        return name, reached

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        answers = list(pool.map(answer, wanted))
    survivors = [(mutant, reached) for mutant, (name, reached) in zip(wanted, answers) if name is None]
    new = [each for each in survivors if (each[0]["file"], each[0]["change"]) not in explained]

    for mutant, reached in sorted(new, key=lambda each: each[0]["number"]):
        note = "" if reached else " (no test runs it)"
        print(f"{mutant['file']}:{mutant['line']}: [{mutant['number']}] {mutant['change']}{note}")
    for file, change in sorted(stale):
        print(f"{file}: explained, but not there: {change}")
    caught = len(wanted) - len(survivors)
    minutes = (time.monotonic() - start) / 60
    print(f"mutants: {len(wanted)} of {len(mutants)}: {caught} caught, {len(survivors) - len(new)} explained, "
          f"{len(new)} survive, in {minutes:.0f} minutes")
    return 1 if new or stale else 0


if __name__ == "__main__":
    sys.exit(main())
