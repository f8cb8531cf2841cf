#!/usr/bin/python3
"""That a sample is broken in the ways that scripts/mutants promises, and is what it was while no mutant is alive."""

import os
import subprocess
import sys
import tempfile
import unittest

try:
    import sites
except ImportError:
    sys.exit(77)  # scripts/setup mutants installs what is missing
import weaving

SAMPLE = b"""constexpr int most = 3;
void first(); void second();
bool full(int count) { return count >= most; }
void both(bool ready) {
  if (!ready) return;
  first();
  second();
}
"""


def found_in(text):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "sample.cpp")
        with open(path, "wb") as file:
            file.write(text)
        return sites.sites_of(sites.parse(path, ["-xc++", "-std=c++20"]), folder, ("sample",))["sample.cpp"]


class Sites(unittest.TestCase):
    def test_every_way_is_found(self):
        self.assertEqual({site.change for site in found_in(SAMPLE)}, {
            "4 for 3: constexpr int most = 3;",
            "the opposite of: count >= most",
            "> for >=: count >= most",
            "always true: !ready",
            "always false: !ready",
            "without the !: !ready",
            "dropped: if (!ready) return;",
            "dropped: first()",
            "dropped: second()",
            "exchanged: first(); second();",
        })

    def test_one_mutant_alive_does_what_it_says(self):
        numbered = dict(enumerate(found_in(SAMPLE), 1))
        constants = {(site.variable.start, site.variable.end) for site in numbered.values() if site.variable}
        woven = weaving.weave(SAMPLE, numbered, constants)
        program = """
#include <cstdio>
#include <cstdlib>
namespace mutants { bool on(int mutant) { return std::getenv("MUTANT") && std::atoi(std::getenv("MUTANT")) == mutant; } }
""" + woven.text + """
void first() { std::fputs("first ", stdout); }
void second() { std::fputs("second ", stdout); }
int main() { both(false); both(true); std::printf("%d%d%d", full(2), full(3), full(4)); }
"""
        with tempfile.TemporaryDirectory() as folder:
            with open(f"{folder}/program.cpp", "w") as file:
                file.write(program)
            subprocess.run(["c++", "-std=c++20", f"{folder}/program.cpp", "-o", f"{folder}/program"], check=True)

            def said(number):
                return subprocess.run([f"{folder}/program"], env={"MUTANT": str(number)}, check=True, text=True,
                                      capture_output=True).stdout

            self.assertEqual(said(0), "first second 011")
            changed = {site.change: said(number) for number, site in numbered.items()}
        self.assertEqual(changed, {
            "4 for 3: constexpr int most = 3;": "first second 001",
            "the opposite of: count >= most": "first second 100",
            "> for >=: count >= most": "first second 001",
            "always true: !ready": "011",
            "always false: !ready": "first second first second 011",
            "without the !: !ready": "first second 011",
            "dropped: if (!ready) return;": "first second first second 011",
            "dropped: first()": "second 011",
            "dropped: second()": "first 011",
            "exchanged: first(); second();": "second first 011",
        })


if __name__ == "__main__":
    unittest.main()
