#!/usr/bin/env python3
"""Runs the benchmarks and prints how we compare with other libraries, how our cost grows, what memory a document takes,
what a trace that is off costs and what starting costs. A missed limit is shown, not an error."""

import argparse
import json
import os
import re
import statistics
import subprocess
import sys
import tempfile

# Work -> the others it is measured against, the most that ours/other may be at each size, and what to go for.
# Several others in one entry: the fastest of them counts.
SMALL_SIZES = (3, 100, 10_000)
TEXT_SIZES = (16, 128, 4096)
LINE_COUNTS = (100, 10_000, 1_000_000)
BLOCK = (50,)
COMPARISONS = [
    ("write", "QorWflActivityToXml", ["Xerces-C"], SMALL_SIZES, (0.20, 0.15, 0.17), (0.10, 0.10, 0.10)),
    ("write", "QorWflActivityToXml", ["libxml2"], SMALL_SIZES, (0.70, 0.50, 0.35), (0.35, 0.35, 0.35)),
    ("write", "QorWflActivityToXml", ["pugixml"], SMALL_SIZES, (1.8, 1.6, 1.7), (1.0, 1.0, 1.0)),
    ("serialize", "WriteXML", ["DOMLSSerializer"], SMALL_SIZES, (0.10, 0.10, 0.10), (0.05, 0.05, 0.05)),
    ("read", "QorWflXmlToActivity", ["Xerces-C"], SMALL_SIZES, (0.40, 0.40, 0.40), (0.30, 0.30, 0.30)),
    ("read", "QorWflXmlToActivity", ["libxml2"], SMALL_SIZES, (1.5, 1.5, 1.2), (1.0, 1.0, 1.0)),
    ("action", "GetActionInfo", ["plain struct, same action"], SMALL_SIZES, (3, 3, 3), (2, 2, 2)),
    ("action", "GetActionInfo", ["plain struct, finished texts"], SMALL_SIZES, (3, 3, 3), (2, 2, 2)),
    ("encode", "AddUrlParm", ["curl", "uriparser", "GLib"], TEXT_SIZES, (0.7, 0.5, 0.3), (0.35, 0.25, 0.15)),
    ("decode", "GetUrlParm", ["curl", "uriparser", "GLib"], TEXT_SIZES, (0.8, 0.8, 0.5), (0.4, 0.4, 0.25)),
    ("InstanceUrl", "InstanceUrl", ["snprintf"], BLOCK, (0.3,), (0.15,)),
    ("UrlToUuid", "UrlToUuid", ["sscanf"], BLOCK, (0.3,), (0.15,)),
    ("properties", "QorWflPropertyFile::Read", ["GKeyFile", "Boost.PropertyTree"], LINE_COUNTS,
     (0.5, 0.5, 0.5), (0.2, 0.2, 0.2)),
    ("text-write", "record << text", ["std::ostream"], SMALL_SIZES, (1.2, 1.2, 1.2), (1.0, 1.0, 1.0)),
    ("text-read", "record >> text", ["std::istream"], SMALL_SIZES, (1.2, 1.2, 1.2), (1.0, 1.0, 1.0)),
]
GROWING = ["write", "serialize", "read", "action", "encode", "decode", "properties", "text-write", "text-read"]
GROWTH_SIZES = (10_000, 100_000, 1_000_000)
GROWTH_LIMIT, GROWTH_GOAL = 11.5, 10.2
MEMORY_SIZES = (100, 10_000, 100_000, 1_000_000)
MEMORY_LIMIT, MEMORY_GOAL = 14, 10
TRACE_LIMIT, TRACE_GOAL = 1.01, 1.00
TRACED_WORK = {"action": "GetActionInfo", "read": "QorWflXmlToActivity", "url": "the URL operations"}
# What starts, and what is started to compare it with: a program of Xerces-C alone.
STARTS = [
    ("a host that loads the library", ["qorwflstarthost"], ["qorwflstartxerces"]),
    ("the same, and starts the XML parser", ["qorwflstarthost", "xml"], ["qorwflstartxerces", "xml"]),
    ("qorwfl --version", ["qorwfl", "--version"], ["qorwflstartxerces"]),
]
START_ROUNDS = 101
TITLES = {work: title for work, title, *_ in COMPARISONS}


class BenchmarkError(Exception):
    """A program did not do its work."""


def run(command, **options):
    """Runs a program and gives what it prints; its failure is ours."""
    completed = subprocess.run(command, stdout=subprocess.PIPE, text=not options.pop("binary", False), check=False,
                               **options)
    if completed.returncode != 0:
        raise BenchmarkError(f"{' '.join(map(str, command))}: exit status {completed.returncode}")
    return completed.stdout


def verdict(ratio, limit, goal):
    """Whether a figure is within its limit, and within what to go for."""
    shown = round(ratio, 3)  # as the table shows it
    return "goal" if shown <= goal else "ok" if shown <= limit else "MISSED"


def run_benchmarks(program, sizes_wanted, repetitions, min_time):
    """Times everything in one run, repetitions in random order. Gives the machine and the medians in nanoseconds."""
    with tempfile.TemporaryDirectory() as directory:
        results = os.path.join(directory, "results.json")
        run([program, f"--benchmark_filter=/({'|'.join(map(str, sizes_wanted))})$",
             f"--benchmark_repetitions={repetitions}", f"--benchmark_min_time={min_time}",
             "--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=false",
             f"--benchmark_out={results}", "--benchmark_out_format=json"], stderr=subprocess.DEVNULL)
        with open(results, encoding="utf-8") as file:
            output = json.load(file)
    times = {}
    for entry in output["benchmarks"]:
        if entry["run_type"] == "iteration":
            scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
            times.setdefault(entry["run_name"].split("/repeats:")[0], []).append(entry["cpu_time"] * scale)
    return output["context"], {name: statistics.median(each) for name, each in times.items()}


def compare(medians, largest):
    """The rows of the comparison with others, up to some size."""
    rows = []
    for work, title, others, sizes, limits, goals in COMPARISONS:
        for size, limit, goal in zip(sizes, limits, goals):
            if size > largest:
                continue
            ours = medians[f"{work}/ours/{size}"]
            theirs = {other: medians[f"{work}/{other}/{size}"] for other in others}
            best = min(theirs, key=theirs.get)
            ratio = ours / theirs[best]
            rows.append({"work": title, "size": size, "ours_ns": ours, "others_ns": theirs, "best": best,
                         "ratio": ratio, "limit": limit, "goal": goal, "verdict": verdict(ratio, limit, goal)})
    return rows


def growth(medians, largest):
    """The rows of our own growth up to some size, a step being ten times the size."""
    rows = []
    for work in GROWING:
        for smaller, larger in zip(GROWTH_SIZES, GROWTH_SIZES[1:]):
            if larger > largest:
                continue
            before, after = medians[f"{work}/ours/{smaller}"], medians[f"{work}/ours/{larger}"]
            rows.append({"work": TITLES[work], "from": smaller, "to": larger, "ours_ns": [before, after],
                         "ratio": after / before, "limit": GROWTH_LIMIT, "goal": GROWTH_GOAL,
                         "verdict": verdict(after / before, GROWTH_LIMIT, GROWTH_GOAL)})
    return rows


def memory(program, sizes):
    """The rows of the memory at the peak, as multiples of the document."""
    rows = []
    for size in sizes:
        with tempfile.NamedTemporaryFile() as document:
            document.write(run([program, "document", str(size)], binary=True))
            document.flush()
            for title, arguments in (("QorWflActivityToXml", ["write", str(size)]),
                                     ("QorWflXmlToActivity", ["read", document.name])):
                length, allocated, resident = map(int, run([program, *arguments]).split())
                ratio = allocated / length
                rows.append({"work": title, "size": size, "document_bytes": length, "allocated_bytes": allocated,
                             "resident_bytes": resident, "ratio": ratio, "limit": MEMORY_LIMIT, "goal": MEMORY_GOAL,
                             "verdict": verdict(ratio, MEMORY_LIMIT, MEMORY_GOAL)})
    return rows


def instructions(program, work):
    """The instructions that CountedWork() takes."""
    with tempfile.TemporaryDirectory() as directory:
        counts = os.path.join(directory, "counts")
        run(["valgrind", "--quiet", "--tool=callgrind", "--toggle-collect=CountedWork",
             f"--callgrind-out-file={counts}", program, work])
        with open(counts, encoding="utf-8") as file:
            totals = re.search(r"^(?:totals|summary): (\d+)", file.read(), re.MULTILINE)
    if totals is None or int(totals[1]) == 0:
        raise BenchmarkError(f"callgrind counted nothing in {program} {work}")
    return int(totals[1])


def trace_off(programs):
    """The rows of what a trace costs that is off."""
    rows = []
    for work, title in TRACED_WORK.items():
        traced = instructions(os.path.join(programs, "qorwfltraced"), work)
        untraced = instructions(os.path.join(programs, "qorwfluntraced"), work)
        ratio = traced / untraced
        rows.append({"work": title, "instructions": traced, "instructions_without_trace": untraced, "ratio": ratio,
                     "limit": TRACE_LIMIT, "goal": TRACE_GOAL,
                     "verdict": verdict(ratio, TRACE_LIMIT, TRACE_GOAL)})
    return rows


def processor_time(programs, command):
    """The processor time in nanoseconds that a program takes from its start to its end."""
    path = os.path.join(programs, command[0])
    child = os.posix_spawn(path, [path, *command[1:]], os.environ,
                           file_actions=[(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0)])
    _, status, usage = os.wait4(child, 0)
    if status != 0:
        raise BenchmarkError(f"{' '.join(command)} ended with status {status}")
    return (usage.ru_utime + usage.ru_stime) * 1e9


def start_up(programs):
    """The rows of what starting costs; all are started by turns."""
    commands = sorted({tuple(command) for _, ours, other in STARTS for command in (ours, other)})
    times = {command: [] for command in commands}
    for _ in range(START_ROUNDS):
        for command in commands:
            times[command].append(processor_time(programs, command))
    medians = {command: statistics.median(each) for command, each in times.items()}
    return [{"work": title, "ours_ns": medians[tuple(ours)], "xerces_ns": medians[tuple(other)],
             "ratio": medians[tuple(ours)] / medians[tuple(other)]} for title, ours, other in STARTS]


def time_text(nanoseconds):
    """A time in the unit that suits it."""
    for unit, size in (("ns", 1), ("µs", 1e3), ("ms", 1e6)):
        if nanoseconds < 1000 * size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds / 1e9:.3g} s"


def count_text(number):
    """A number with its thousands apart."""
    return f"{number:,}"


def print_table(title, header, rows):
    """Prints a table that Markdown understands; first column to the left, the others to the right."""
    cells = [header] + rows
    widths = [max(len(row[column]) for row in cells) for column in range(len(header))]
    print(f"\n{title}\n")
    for number, row in enumerate(cells):
        print("| " + " | ".join(cell.ljust(width) if column == 0 else cell.rjust(width)
                                for column, (cell, width) in enumerate(zip(row, widths))) + " |")
        if number == 0:
            print("|" + "|".join("-" * (width + 2) if column == 0 else "-" * (width + 1) + ":"
                                 for column, width in enumerate(widths)) + "|")


def print_report(report):
    """Prints all tables."""
    machine = report["machine"]
    print(f"{machine['num_cpus']} processors of {machine['mhz_per_cpu']} MHz, load {machine['load_avg']}, "
          f"{report['repetitions']} repetitions, medians of processor time")
    judged = ["Ratio", "Limit", "Goal", "Verdict"]

    def judge(row):
        return [f"{row['ratio']:.3f}", f"{row['limit']:g}", f"{row['goal']:g}", row["verdict"]]

    print_table("Compared with others (ratio: ours to the fastest named)",
                ["Work", "Size", "Ours", "Others", *judged],
                [[row["work"], count_text(row["size"]), time_text(row["ours_ns"]),
                  ", ".join(f"{other} {time_text(each)}" for other, each in row["others_ns"].items()), *judge(row)]
                 for row in report["comparison"]])
    print_table("Growth (ratio: cost at ten times the size)", ["Work", "From", "To", "Cost", *judged],
                [[row["work"], count_text(row["from"]), count_text(row["to"]),
                  " -> ".join(map(time_text, row["ours_ns"])), *judge(row)] for row in report["growth"]])
    print_table("Memory at the peak (ratio: allocated to the document)",
                ["Work", "Size", "Document", "Allocated", "Resident", *judged],
                [[row["work"], count_text(row["size"]), count_text(row["document_bytes"]),
                  count_text(row["allocated_bytes"]), count_text(row["resident_bytes"]), *judge(row)]
                 for row in report["memory"]])
    print_table("Trace off (ratio: instructions to those without any trace)",
                ["Work", "Instructions", "Without trace", *judged],
                [[row["work"], count_text(row["instructions"]), count_text(row["instructions_without_trace"]),
                  *judge(row)] for row in report["trace"]])
    print_table("Starting (ratio: ours to a program of Xerces-C alone)", ["Work", "Ours", "Xerces-C", "Ratio"],
                [[row["work"], time_text(row["ours_ns"]), time_text(row["xerces_ns"]), f"{row['ratio']:.2f}"]
                 for row in report["start"]])
    verdicts = [row["verdict"] for part in ("comparison", "growth", "memory", "trace") for row in report[part]]
    print(f"\n{len(verdicts)} figures: {verdicts.count('goal')} reach the goal, {verdicts.count('ok')} are within the "
          f"limit, {verdicts.count('MISSED')} miss it")


def measure(arguments):
    """Runs everything that was asked for."""
    largest = arguments.largest
    repetitions = arguments.repetitions or (3 if arguments.quick else 9)
    compared = {size for *_, sizes, _, _ in COMPARISONS for size in sizes}
    sizes = sorted(size for size in compared | set(GROWTH_SIZES) if size <= largest)
    machine, medians = run_benchmarks(os.path.join(arguments.programs, "qorwflbench"), sizes, repetitions,
                                      0.02 if arguments.quick else 0.2)
    return {"machine": machine, "repetitions": repetitions, "comparison": compare(medians, largest),
            "growth": growth(medians, largest),
            "memory": memory(os.path.join(arguments.programs, "qorwflpeak"),
                             [size for size in MEMORY_SIZES if size <= largest]),
            "trace": trace_off(arguments.programs), "start": start_up(arguments.programs)}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", required=True, metavar="DIR", help="where the built programs are")
    parser.add_argument("--json", metavar="FILE", help="writes the figures there too")
    parser.add_argument("--quick", action="store_true", help="few and short repetitions, sizes up to 100,000")
    parser.add_argument("--largest", type=int, metavar="N", help="leaves out larger sizes; a million takes 8 GB")
    parser.add_argument("--repetitions", type=int, metavar="N", help="how often each work is repeated")
    arguments = parser.parse_args()
    if arguments.largest is None:
        arguments.largest = 100_000 if arguments.quick else GROWTH_SIZES[-1]
    try:
        report = measure(arguments)
        print_report(report)
        if arguments.json:
            with open(arguments.json, "w", encoding="utf-8") as file:
                json.dump(report, file, indent=2)
                file.write("\n")
    except (BenchmarkError, KeyError, OSError, ValueError) as failure:
        print(f"ratios.py: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
