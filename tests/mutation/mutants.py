# SPDX-License-Identifier: MIT
"""Runs each mutant against the tests that reach it."""

import concurrent.futures
import os
import resource
import subprocess
import tempfile

# Seconds beyond what the tests take: a mutant that hangs is found too.
LONGEST_WORK = 2
LONGEST_WAIT = 60


class Mutants:
    def __init__(self, program, mutants, jobs, say):
        self.program, self.mutants, self.jobs, self.say = program, mutants, jobs, say
        self.tests, self.seconds = {}, {}  # by mutant: the tests that reach it; by test
        self.survived = []

    def find(self):
        self.read_map()
        reached = sorted(self.tests)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as workers:
            for done, (mutant, lives) in enumerate(zip(reached, workers.map(self.lives, reached))):
                if lives:
                    self.survived.append(mutant)
                if done % 100 == 99:
                    self.say(f"{done + 1} of {len(reached)}, {len(self.survived)} survived")

    def read_map(self):
        with tempfile.NamedTemporaryFile("r", suffix=".map") as file:
            subprocess.run([self.program, "--gtest_brief=1"], check=True,
                           stdout=subprocess.DEVNULL,
                           env=os.environ | {"ZEL_MUTATION_MAP": file.name})
            for line in file:
                milliseconds, test, *numbers = line.split()
                self.seconds[test] = int(milliseconds) / 1000
                for number in map(int, numbers):
                    if number in self.mutants:
                        self.tests.setdefault(number, []).append(test)

    def lives(self, mutant):
        """Whether all tests that reach it pass. The quick ones go first."""
        tests = sorted(self.tests[mutant], key=lambda test: (test != "*", self.seconds[test]))
        if tests[0] == "*":
            return self.passes(mutant, ["*"])
        few = tests[:20]
        return self.passes(mutant, few) and (len(tests) == len(few) or self.passes(mutant, tests))

    def passes(self, mutant, tests):
        with tempfile.NamedTemporaryFile("w", suffix=".flags") as flags:
            flags.write(f"--gtest_filter={':'.join(tests)}\n")
            flags.flush()
            seconds = 3 * sum(map(self.seconds.get, self.seconds if tests == ["*"] else tests))
            work = int(seconds) + LONGEST_WORK
            try:
                done = subprocess.run(
                    [self.program, "--gtest_brief=1", "--gtest_fail_fast",
                     f"--gtest_flagfile={flags.name}"],
                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False,
                    timeout=LONGEST_WAIT + seconds,
                    preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CPU, (work, work)),
                    env=os.environ | {"ZEL_MUTANT": str(mutant)})
            except subprocess.TimeoutExpired:
                return False
        return done.returncode == 0

    def unreached(self):
        return [mutant for mutant in self.mutants if mutant not in self.tests]

    def score(self):
        lost = len(self.survived) + len(self.unreached())
        return 100 * (1 - lost / max(len(self.mutants), 1))

    def show(self, names, lists):
        print(f"{'file':44} {'mutants':>8} {'found':>6} {'survived':>9} {'unreached':>10}  score")
        unreached = self.unreached()
        for name in names:
            self.row(name, name, unreached)
        self.row("all", None, unreached)
        if lists:
            for mutant in sorted(self.survived + unreached):
                point, change = self.mutants[mutant]
                word = "unreached" if mutant not in self.tests else "survived"
                print(f"{point.file}:{point.line}: {word}: {change}")

    def row(self, title, name, unreached):
        def count(mutants):
            return sum(name in (None, self.mutants[mutant][0].file) for mutant in mutants)
        total, alive, missed = count(self.mutants), count(self.survived), count(unreached)
        found = total - alive - missed
        print(f"{title:44} {total:8} {found:6} {alive:9} {missed:10}  "
              f"{100 * found / max(total, 1):5.1f}")
