#!/usr/bin/env python3
"""Changes the libraries in one place at a time and runs their tests, to see whether these notice.

The test programs are built once, in base/ of the build folder. Each worker has a copy of the libraries' sources and a build
of them in which a mutant costs the compiling of what it changes and the linking of one library; LD_LIBRARY_PATH has the
programs load it. What does not build is no mutant, nor is what builds the same. A test that does not end, or wants too much memory,
has noticed.
"""
import argparse
import collections
import json
import os
import queue
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

import sites

ROOT = Path(__file__).resolve().parents[2]
SOURCES = ["BexFramework/*.m/src/*", "QorWorkflowInterop/QorWflInteropUtil.m/src/*"]
# The programs, in the order in which they run behind the one of the changed module. Those are not here that load the
# libraries by their path, that test the command or the documents, and those of which every test takes long.
MODULES = ["BexTextTest", "BexXmlTest", "BexTraceTest", "BexTimeTest", "BexComponentTest", "QorWflInteropUtilTest"]
PROGRAMS = [*MODULES, "RobustnessMemoryTest", "RobustnessProcessTest", "RobustnessReadFailureTest",
            "RobustnessFirstUseTest"]
# Tests that measure time, which a busy machine falsifies, and tests that take long for their size.
LEFT_OUT = ["*Quickly*", "*InProportion*", "*Linear*", "*TimeGrows*", "*Million*", "*HundredThousand*",
            "LongInstanceUrlDamage.*", "PropertyFileEveryText.*", "*/PropertyFileEveryText.*",
            "Escaping.EveryCharacterAtEveryPlaceOfANarrowDocument",
            "PropertyFileTrouble.FailureInTheMiddle*", "Refused/*/Once"]
# Tests that took up to so many seconds run first, those that took longer when these have noticed nothing.
QUICK = [0.02, 0.15]
MEMORY = 4 << 30
COUNTED = ["killed", "survived"]


def sources():
    for pattern in SOURCES:
        yield from sorted(path for path in ROOT.glob(pattern) if path.suffix in (".cpp", ".h"))


def read_explained(path):
    """The mutants that nothing can tell apart, each with the reason: below the name of the file "- before", "+ after" and
    indented lines; "-2 before" is the second of that look."""
    reasons, file, before, number, key = {}, None, None, 1, None
    for line in path.read_text().splitlines():
        if re.match(r"-\d* ", line):
            mark, before = line.split(" ", 1)
            number = int(mark[1:] or 1)
        elif line.startswith("+"):
            key = file, before, line[1:].strip(), number
            reasons[key] = ""
        elif line.startswith(" "):
            reasons[key] = f"{reasons[key]} {line.strip()}".strip()
        elif line and not line.startswith("#"):
            file = line
    if "" in reasons.values():
        sys.exit(f"{path}: a mutant without a reason")
    return reasons


def chosen(count, seed):
    """Of each file a share of the count by its number of mutants, at least one: file, share, its mutants in order."""
    all_of = {}
    for path in sources():
        found = sites.mutants(str(path.relative_to(ROOT)), path.read_text(), seed)
        if found:
            all_of[str(path.relative_to(ROOT))] = found
    total = sum(map(len, all_of.values()))
    return [(file, max(1, round(count * len(found) / total)), found) for file, found in all_of.items()]


def build(folder, *arguments):
    return subprocess.run(["cmake", "--build", folder, *arguments], check=False, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL).returncode == 0


class Worker:
    """A copy of the libraries that can be changed, and their build, without optimization as it is sooner done."""

    def __init__(self, folder, number):
        self.base = folder / "base"
        self.home = folder / str(number)
        shutil.rmtree(self.home, ignore_errors=True)
        (self.home / "tmp").mkdir(parents=True)
        for part in ("BexFramework", "QorWorkflowInterop", "cmake"):
            shutil.copytree(ROOT / part, self.home / "source" / part)
        shutil.copy(ROOT / "CMakeLists.txt", self.home / "source")
        subprocess.run(["cmake", "-G", "Ninja", "-S", self.home / "source", "-B", self.home / "build",
                        "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O0 -w", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
                        "-DQORWFL_WARNINGS_AS_ERRORS=OFF", "-DQORWFL_BUILD_TESTS=OFF", "-DQORWFL_BUILD_TOOL=OFF"],
                       check=True, stdout=subprocess.DEVNULL)
        if not build(self.home / "build"):
            sys.exit("the libraries do not build as they are")
        self.unchanged = self.libraries()

    def libraries(self):
        return [path.read_bytes() for path in sorted((self.home / "build/lib").glob("*.so"))]

    def test(self, program, pattern, seconds, *more):
        """Whether the tests pass in time; whatever they have started is ended with them."""
        environment = dict(os.environ, TMPDIR=str(self.home / "tmp"), LD_LIBRARY_PATH=str(self.home / "build/lib"))
        command = ["prlimit", f"--as={MEMORY}", "--core=0", self.base / "bin" / program, f"--gtest_filter={pattern}", *more]
        with subprocess.Popen(command, cwd=self.home / "tmp", env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True) as process:
            try:
                return process.wait(seconds) == 0
            except subprocess.TimeoutExpired:
                return False
            finally:
                try:
                    os.killpg(process.pid, signal.SIGKILL)
                except ProcessLookupError:
                    pass


class Plan:
    """Which tests run in which order: the quickest of all programs, then others; of the slow ones those of the module."""

    def __init__(self, worker):
        self.stages = [{} for _ in range(len(QUICK) + 1)]  # program: filter, seconds after which the tests are endless
        for program in PROGRAMS:
            report = worker.home / "tmp" / f"{program}.json"
            if not worker.test(program, "-" + ":".join(LEFT_OUT), 1800, f"--gtest_output=json:{report}"):
                sys.exit(f"{program} does not pass with the libraries as they are")
            suites = json.loads(report.read_text())["testsuites"]
            tests = [(f"{suite['name']}.{test['name']}", float(test["time"].rstrip("s")))
                     for suite in suites for test in suite["testsuite"]]
            for stage, longer, longest in zip(self.stages, [-1, *QUICK], [*QUICK, float("inf")]):
                names = [name for name, seconds in tests if longer < seconds <= longest]
                if names:
                    taken = sum(seconds for _, seconds in tests if longer < seconds <= longest)
                    stage[program] = ":".join(names), max(20, 10 * taken)

    def killer(self, worker, file):
        """The program that notices that the library has changed, if one does."""
        own = Path(file).parts[1].removesuffix(".m") + "Test"
        for stage in self.stages:
            for program in sorted(stage, key=lambda name: name != own):
                if stage is self.stages[-1] and program in MODULES and program != own:
                    continue
                if not worker.test(program, *stage[program], "--gtest_fail_fast", "--gtest_brief=1"):
                    return program
        return None


def judge(worker, plan, mutant):
    began = time.monotonic()
    (worker.home / "source" / mutant.file).write_text(mutant.text)
    by = None
    if not build(worker.home / "build"):
        verdict = "does not build"
    elif worker.libraries() == worker.unchanged:
        verdict = "builds the same"
    else:
        by = plan.killer(worker, mutant.file)
        verdict = "killed" if by else "survived"
    return {"file": mutant.file, "line": mutant.line, "number": mutant.number, "kind": mutant.kind,
            "before": mutant.before, "after": mutant.after, "verdict": verdict, "by": by,
            "seconds": round(time.monotonic() - began, 1)}


class Run:
    def __init__(self, folder, plan, known, journal):
        self.plan, self.known, self.journal = plan, known, journal
        self.folder = folder
        self.files = queue.Queue()
        self.results = []
        self.lock = threading.Lock()

    def report(self, result):
        with self.lock:
            self.results.append(result)
            print(json.dumps(result), file=self.journal, flush=True)
            verdicts = collections.Counter(one["verdict"] for one in self.results)
            print(f"{sum(verdicts[one] for one in COUNTED):4} {result['verdict']:9} {result['seconds']:6} s "
                  f"{result['file']}:{result['line']} {result['kind']} {result['by'] or ''}", flush=True)

    def work(self, worker):
        """Judges the mutants of file after file."""
        while True:
            try:
                file, share, found = self.files.get_nowait()
            except queue.Empty:
                return
            for mutant in found:  # one that is none gives its place to the next
                result = self.known.get(mutant.key) or judge(worker, self.plan, mutant)
                self.report(result)
                share -= result["verdict"] in COUNTED
                if share == 0:
                    break
            (worker.home / "source" / file).write_text((ROOT / file).read_text())


def show(results, reasons, minimum):
    """The survivors, a table by file and the score; whether it is good enough."""
    def key(result):
        return result["file"], result["before"], result["after"], result["number"]

    counted = [result for result in results if result["verdict"] in COUNTED]
    survivors = [result for result in counted if result["verdict"] == "survived"]
    unexplained = [result for result in survivors if key(result) not in reasons]
    for result in unexplained:
        number = "" if result["number"] == 1 else result["number"]
        print(f"\n{result['file']}:{result['line']}\n-{number} {result['before']}\n+ {result['after']}")
    for result in counted:
        if result["verdict"] == "killed" and key(result) in reasons:
            print(f"\nlisted, but killed by {result['by']}: {result['file']}:{result['line']}")
    print(f"\n{'killed':>7}{'of':>6}   file")
    for file in sorted({result["file"] for result in counted}):
        of_file = [result["verdict"] for result in counted if result["file"] == file]
        print(f"{of_file.count('killed'):7}{len(of_file):6}   {file}")
    killed = len(counted) - len(survivors)
    score = 100 * killed / max(1, len(counted))
    print(f"{killed:7}{len(counted):6}   all: {score:.1f} %; {len(survivors)} survivors, of which "
          f"{len(unexplained)} unexplained; besides, {len(results) - len(counted)} that do not build or build the same")
    return bool(counted) and score >= minimum and not unexplained


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("count", nargs="?", type=int, default=330, help="about so many mutants (330)")
    parser.add_argument("--folder", type=Path, default=ROOT / "build/mutate", help="with the build of the tests in base")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--minimum", type=float, default=95, help="per cent that have to be killed (95)")
    parser.add_argument("--explained", type=Path, default=Path(__file__).with_name("equivalent.txt"))
    parser.add_argument("--resume", action="store_true", help="judge no mutant again that was killed in the last run")
    parser.add_argument("--list", action="store_true", help="only show the mutants")
    arguments = parser.parse_args()
    reasons = read_explained(arguments.explained)
    files = chosen(arguments.count, arguments.seed)
    possible = {mutant.key for _, _, found in files for mutant in found}
    for file, before, after, _ in reasons.keys() - possible:
        print(f"listed, but no mutant any more: {file}\n- {before}\n+ {after}")
    if arguments.list:
        for _, _, found in files:
            for mutant in found:
                print(f"{mutant.file}:{mutant.line}: {mutant.kind}\n- {mutant.before}\n+ {mutant.after}")
        return 0
    folder = arguments.folder.resolve()
    journal, known = folder / "results.jsonl", {}
    if arguments.resume and journal.exists():
        for result in map(json.loads, journal.read_text().splitlines()):
            if result["verdict"] != "survived":
                known[result["file"], result["before"], result["after"], result["number"]] = result
    print("building the tests, and the libraries for each worker", flush=True)
    if not build(folder / "base", "-j", str(arguments.jobs), "--target", *PROGRAMS):
        sys.exit("the tests do not build")
    workers = [Worker(folder, number) for number in range(1, arguments.jobs + 1)]
    print("running the tests with the libraries as they are", flush=True)
    plan = Plan(workers[0])
    with journal.open("w") as file:
        run = Run(folder, plan, known, file)
        for one in sorted(files, key=lambda one: -one[1]):
            run.files.put(one)
        threads = [threading.Thread(target=run.work, args=[worker]) for worker in workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    return 0 if show(run.results, reasons, arguments.minimum) else 1


if __name__ == "__main__":
    sys.exit(main())
