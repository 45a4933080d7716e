#!/usr/bin/python3
"""Puts faults into the business code, one at a time, and says which of them no test sees.

  tests/mutate/mutate.py                    100 faults of seed 14; asked again, it goes on where it was ended
  tests/mutate/mutate.py --faults 20 --seed 3
  tests/mutate/mutate.py --survivors        only those that no test saw, in the sources as they are committed now

It works on the last commit in a tree of its own (build/mutate), with shared libraries, so that a fault costs one
compilation and no linking of the tests. A fault that does not compile is replaced by the next of the seed.
"""
import argparse
import json
import os
import signal
import subprocess
import sys
import time
from pathlib import Path

from faults import FOLDERS, Fault, in_turn

ROOT = Path(__file__).resolve().parents[2]
SUITES = ["sales", "cash", "accounts", "stock", "printing", "faults", "admin", "ui", "fuzz"]
LIBRARIES = [*FOLDERS, "printing_pages"]
NOBODY, NOT_THE_NEAREST = "nobody", "not the nearest suite"
SPARE_TIME = 20  # seconds, beside three times what a suite takes without a fault


class Tests:
    """The suites, the reconciliations and the plays of a tree that is built."""

    def __init__(self, tree, build):
        self.tree, self.build = tree, build
        binaries = build / "bin"
        self.suites = {name: [binaries / f"{name}_tests", "--gtest_brief=1", "--gtest_fail_fast"] for name in SUITES}
        programs = ["--play", binaries / "tallvex-test-play", "--admin", binaries / "tallvex-admin"]
        self.stories = {
            f"reconcile {what} {seed}": ["/usr/bin/python3", tree / "tests/reconcile/run.py", what, "--seed", str(seed),
                                         *programs, "--folder", build / "reconcile" / f"{what}-{seed}"]
            for what, seed in (("day", 1), ("day", 2), ("account", 1), ("account", 3))}
        self.plays = {f"play {file.stem}": [binaries / "tallvex-test-play", "--pictures", build / "pictures", file]
                      for file in sorted((tree / "tests/plays").glob("*.play"))}
        self.limits = {}

    def nearest(self, folder):
        """The suite of the folder, which most likely sees its faults and costs least."""
        return [(name, command) for name, command in self.suites.items() if name == folder]

    def all(self, folder):
        return self.nearest(folder) + self.others(folder)

    def others(self, folder):
        return ([(name, command) for name, command in self.suites.items() if name != folder] +
                [*self.stories.items(), *self.plays.items()])

    def measure(self, *kinds):
        """Runs tests on sources without a fault. What fails even so can see nothing and is left out."""
        for name, command in [entry for kind in kinds for entry in kind.items()]:
            begun = time.monotonic()
            if self.passes(name, command):
                self.limits[name] = 3 * (time.monotonic() - begun) + SPARE_TIME
                continue
            print(f"{name} fails without any fault and is left out", flush=True)
            for tests in (self.suites, self.stories, self.plays):
                tests.pop(name, None)

    def passes(self, name, command):
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        run = subprocess.Popen(command, cwd=self.build, env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            return run.wait(self.limits.get(name, 300)) == 0
        except subprocess.TimeoutExpired:
            return False  # an endless loop
        finally:
            try:
                os.killpg(run.pid, signal.SIGKILL)  # what it left behind
            except ProcessLookupError:
                pass
            run.wait()

    def first_that_sees(self, tests):
        return next((name for name, command in tests if not self.passes(name, command)), NOBODY)


class Tree:
    """A checked-out copy of the sources, built with shared libraries."""

    def __init__(self, folder, commit, jobs):
        self.folder, self.build, self.jobs = folder / "tree", folder / "build", jobs
        if not self.folder.exists():
            git("worktree", "prune")
            git("worktree", "add", "--detach", self.folder, commit)
        git("-C", self.folder, "checkout", "--quiet", "--force", "--detach", commit)
        if not (self.build / "build.ninja").exists():
            run("cmake", "-S", self.folder, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
                "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1", "-DBUILD_SHARED_LIBS=ON", "-DTALLVEX_WERROR=OFF",
                "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON")
        if not self.compile(*(f"{name}_tests" for name in SUITES), "tallvex-test-play", "tallvex-admin"):
            sys.exit(f"{commit} does not build in {self.build}")

    def compile(self, *targets):
        environment = dict(os.environ, CCACHE_SLOPPINESS="pch_defines,time_macros")
        done = subprocess.run(["ninja", "-C", self.build, "-j", str(self.jobs), *targets], env=environment,
                              stdout=subprocess.DEVNULL)
        return done.returncode == 0

    def put_in(self, fault):
        """Changes the line of the fault, wherever it stands by now. Returns the former text, or None if it is gone."""
        file = self.folder / fault.file
        text = file.read_text(encoding="utf-8") if file.exists() else ""
        lines = text.split("\n")
        places = [at for at, line in enumerate(lines) if line == fault.before]
        if not places:
            return None
        at = min(places, key=lambda place: abs(place + 1 - fault.line))
        lines[at] = fault.after
        file.write_text("\n".join(lines), encoding="utf-8")
        return text

    def judge(self, fault, tests, chosen):
        """Which of the chosen tests sees the fault, NOBODY, or None for a fault that cannot be put in."""
        former = self.put_in(fault)
        if former is None:
            return None
        try:
            if not self.compile(*LIBRARIES):  # also the one that the last fault was in
                return None
            return tests.first_that_sees(chosen(Path(fault.file).parts[1]))
        finally:
            (self.folder / fault.file).write_text(former, encoding="utf-8")

    def restore(self):
        git("-C", self.folder, "checkout", "--quiet", "--force")


def run(*command):
    if subprocess.run(command, stdout=subprocess.DEVNULL).returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} failed")


def git(*words):
    run("git", "-C", ROOT, *words)


class Results:
    """What became of each fault, kept in a file from one run to the next."""

    def __init__(self, file, commit):
        self.file = file
        kept = json.loads(file.read_text()) if file.exists() else {}
        self.commit = kept.get("commit", commit)
        self.judged = kept.get("judged", [])

    def add(self, fault, seen_by):
        if seen_by is not None:
            print(f"seen by {seen_by}: {fault}", flush=True)
        self.judged = [one for one in self.judged if one["fault"] != fault.record()]
        self.judged.append({"fault": fault.record(), "seen_by": seen_by})
        self.file.write_text(json.dumps({"commit": self.commit, "judged": self.judged}, indent=1, ensure_ascii=False))

    def of(self, seen_by):
        return [Fault(**one["fault"]) for one in self.judged if one["seen_by"] == seen_by]

    def counted(self):
        return [one for one in self.judged if one["seen_by"] is not None]


def draw(asked, tree, tests, results):
    """Puts in new faults of the seed, up to the number that was asked for."""
    known = [one["fault"] for one in results.judged]
    for fault in in_turn(tree.folder, asked.seed):
        if len(results.counted()) >= asked.faults:
            break
        if fault.record() not in known:
            seen_by = tree.judge(fault, tests, tests.nearest)
            results.add(fault, NOT_THE_NEAREST if seen_by == NOBODY else seen_by)


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("--faults", type=int, default=100)
    words.add_argument("--seed", type=int, default=14)
    words.add_argument("--jobs", type=int, default=1, help="compilers at a time")
    words.add_argument("--survivors", action="store_true", help="again those that no test saw")
    words.add_argument("--folder", type=Path, default=ROOT / "build" / "mutate")
    asked = words.parse_args()
    asked.folder.mkdir(parents=True, exist_ok=True)
    head = subprocess.run(["git", "-C", ROOT, "rev-parse", "HEAD"], capture_output=True, text=True).stdout.strip()
    results = Results(asked.folder / f"seed-{asked.seed}.json", head)
    tree = Tree(asked.folder, head if asked.survivors else results.commit, asked.jobs)
    tests = Tests(tree.folder, tree.build)
    tests.measure(tests.suites)
    if asked.survivors:
        tests.measure(tests.stories, tests.plays)
        for fault in results.of(NOBODY):
            results.add(fault, tree.judge(fault, tests, tests.all))
    else:
        draw(asked, tree, tests, results)
        tests.measure(tests.stories, tests.plays)
        # What the nearest suite did not see goes through all the others.
        for fault in results.of(NOT_THE_NEAREST):
            results.add(fault, tree.judge(fault, tests, tests.others))
    tree.restore()
    missed = results.of(NOBODY)
    print(f"\n{len(results.counted()) - len(missed)} of {len(results.counted())} faults were seen.")
    for fault in missed:
        print(f"NOT SEEN: {fault}")


if __name__ == "__main__":
    main()
