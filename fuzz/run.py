#!/usr/bin/env python3
"""Runs the fuzz targets side by side and prints what came of it as a table in Markdown; or makes seeds of what earlier
runs have found. A finding is kept as a file, shown with the command that repeats it, and makes the exit status 1."""

import argparse
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
LONGEST_INPUT = 4096
LONGEST_INPUTS = {"XpdlReaderFuzz": 16384}  # whole documents are longer than what is enough elsewhere
SECONDS_FOR_AN_INPUT = 30  # by the clock, on a processor of its own
MEMORY_MB = 3072
MOST_SEEDS = 299
MOST_SEED_BYTES = 299 * 1024
FOUND_NAME = re.compile(r"[0-9a-f]{40}")  # what libFuzzer calls an input that it found; other seeds are written by hand


class Target:
    """A fuzz target and the places of what belongs to it."""

    def __init__(self, name, programs, work):
        self.name = name
        self.program = programs / name
        self.seeds = HERE / "seeds" / name
        self.dictionary = HERE / f"{name}.dict"
        self.corpus = work / "corpus" / name
        self.findings = work / "findings" / name
        self.log = work / "logs" / f"{name}.log"
        self.longest = f"-max_len={LONGEST_INPUTS.get(name, LONGEST_INPUT)}"
        for folder in (self.corpus, self.findings, self.log.parent):
            folder.mkdir(parents=True, exist_ok=True)

    def run(self, seconds, seconds_for_an_input):
        """Fuzzes for a while and gives the row of the table, and the findings."""
        known = set(self.findings.iterdir())
        start = time.monotonic()
        status, processor = self.call(f"-max_total_time={seconds}", f"-dict={self.dictionary}", self.longest,
                                      f"-timeout={seconds_for_an_input}", f"-rss_limit_mb={MEMORY_MB}",
                                      "-print_final_stats=1", f"-artifact_prefix={self.findings}/", self.corpus,
                                      self.seeds)
        elapsed = time.monotonic() - start
        log = self.log.read_text(encoding="utf-8", errors="replace")
        found = sorted(set(self.findings.iterdir()) - known)
        if status != 0 and not found:
            found = [None]
        return Result(self, elapsed, processor, log, found)

    def call(self, *arguments):
        """Runs the program with its output in the log and gives its exit status and the seconds of a processor it took."""
        # Freed memory is held back for a while, so that its use is seen; a single input uses little.
        environment = {"ASAN_OPTIONS": "quarantine_size_mb=32", **os.environ}
        with open(self.log, "wb") as log:
            process = subprocess.Popen([self.program, *arguments], stdout=log, stderr=log, env=environment)
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            return process.returncode, usage.ru_utime + usage.ru_stime

    def minimise(self):
        """Puts into the seeds those found inputs that reach what the others do not; of too many, some of every size."""
        with tempfile.TemporaryDirectory() as folder:
            kept = pathlib.Path(folder)
            for seed in self.seeds.iterdir():
                if not FOUND_NAME.fullmatch(seed.name):
                    shutil.copy(seed, kept)
            if self.call("-set_cover_merge=1", self.longest, kept, self.seeds, self.corpus)[0] != 0:
                raise RuntimeError(f"{self.name}: the merge failed; see {self.log}")
            found = [file for file in kept.iterdir() if FOUND_NAME.fullmatch(file.name)]
            for seed in self.seeds.iterdir():
                if FOUND_NAME.fullmatch(seed.name):
                    seed.unlink()
            found.sort(key=lambda file: (file.stat().st_size, file.name))
            count, size = totals(self.seeds)
            room = min(MOST_SEEDS - count, len(found))
            for file in [found[i * len(found) // room] for i in range(room)]:
                size += file.stat().st_size
                if size > MOST_SEED_BYTES:
                    break
                shutil.copy(file, self.seeds)
        count, size = totals(self.seeds)
        return f"{self.name}: {count} seeds, {size} bytes, of {len(found)} found inputs that are worth it"


class Result:
    """What a run of a target came to."""

    def __init__(self, target, elapsed, processor, log, findings):
        def last(pattern):
            matches = re.findall(pattern, log)
            return int(matches[-1]) if matches else 0

        self.target = target
        self.log = log
        self.findings = findings
        self.executions = last(r"stat::number_of_executed_units:\s+(\d+)")
        self.seconds = elapsed
        self.processor = processor
        self.covered = last(r" cov: (\d+)")
        self.edges = last(r"\((\d+) inline 8-bit counters\)")

    def row(self):
        """The cells of the table."""
        return (self.target.name, f"{self.executions:,}", f"{self.seconds:,.0f}", f"{self.processor:,.0f}",
                f"{self.covered:,} of {self.edges:,}", str(len(self.findings)))

    def explain(self):
        """Shows each finding: why the target stopped, and how to see it again."""
        reason = re.search(r"== the property does not hold:.*|ERROR: .*|.*runtime error: .*", self.log)
        print(f"\n{self.target.name}: {reason.group(0) if reason else 'stopped'}; the whole story is in "
              f"{relative(self.target.log)}")
        for file in filter(None, self.findings):
            print(f"again with: {relative(self.target.program)} {relative(file)}")


def relative(path):
    return os.path.relpath(path)


def totals(folder):
    """The number of files and of their bytes."""
    sizes = [file.stat().st_size for file in folder.iterdir()]
    return len(sizes), sum(sizes)


def print_table(rows):
    titles = ("Target", "Executions", "Seconds", "Processor seconds", "Edges", "Findings")
    table = [titles, ("---", "---:", "---:", "---:", "---:", "---:"), *rows]
    for row in table:
        print("| " + " | ".join(row) + " |")


def all_names():
    return sorted(file.stem for file in HERE.glob("*Fuzz.cpp"))


def arguments():
    parser = argparse.ArgumentParser(prog="./dev fuzz", description=__doc__)
    parser.add_argument("--programs", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--minimise", action="store_true", help="make seeds of the inputs that were found")
    parser.add_argument("--at-once", type=int, default=os.cpu_count(), metavar="N",
                        help="how many targets run at a time, as many as there are processors as a rule")
    parser.add_argument("what", nargs="*", metavar="[SECONDS] [TARGET...]",
                        help=f"seconds for each target, 60 as a rule; targets, all as a rule: {', '.join(all_names())}")
    options = parser.parse_args()
    options.seconds = 60
    if options.what and options.what[0].isdigit():
        options.seconds = int(options.what.pop(0))
    unknown = set(options.what) - set(all_names())
    if unknown:
        parser.error(f"no such target: {', '.join(sorted(unknown))}")
    return options


def main():
    options = arguments()
    programs = options.programs.resolve()
    targets = [Target(name, programs, programs.parent) for name in options.what or all_names()]
    with concurrent.futures.ThreadPoolExecutor(options.at_once) as pool:
        if options.minimise:
            for line in pool.map(Target.minimise, targets):
                print(line)
            return 0
        patience = SECONDS_FOR_AN_INPUT * max(1, -(-options.at_once // os.cpu_count()))
        results = list(pool.map(lambda target: target.run(options.seconds, patience), targets))
    print_table([result.row() for result in results])
    broken = [result for result in results if result.findings]
    for result in broken:
        result.explain()
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
