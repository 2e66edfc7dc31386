#!/usr/bin/env python3
"""Time and memory by phase against the size of models, as tables for docs/scaling.md.

    bench/scale/measure.py <finites-solve> [--kind plate] [--sizes 50,100,200] [--processes 0,1,2] [--threads 1]

Each line is one run. The phases are in seconds, as the run prints them; "Results, files" of that document is the sum
of "results" and "write" here. Memory is the sum over processes of the largest resident set, and that of the largest
process, in megabytes of a million bytes, looked up 50 times a second: that of a run of less than a second may be too
small, or empty. The exponent of a phase is the slope of log time over log equations by least squares over all sizes of
a kind; it is empty where fewer than two of them are above 0.002.
"""
import argparse
import math
import os
import pathlib
import re
import resource
import subprocess
import sys
import tempfile
import time

MODEL = pathlib.Path(__file__).with_name("model.py")
PHASES = ("read", "fill", "element calls", "assembly", "factorise", "solve", "results", "write", "total")
ENVIRONMENT = {**os.environ, "OMPI_ALLOW_RUN_AS_ROOT": "1", "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM": "1",
               "OPENBLAS_NUM_THREADS": "1"}


def resident(parent):
    """Megabytes of the largest resident set of each solver below a process, by its number."""
    below, sizes = {parent}, {}
    for _ in range(4):
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                above = int((folder / "stat").read_text().rpartition(")")[2].split()[1])
                if above in below:
                    below.add(int(folder.name))
            except OSError:
                continue
    for number in below:
        try:
            status = pathlib.Path(f"/proc/{number}/status").read_text()
        except OSError:
            continue
        if status.startswith("Name:\tfinites-solve"):
            sizes.update({number: float(size) * 1024 / 1e6 for size in re.findall(r"VmHWM:\s+(\d+)", status)})
    return sizes


def message_of(errors):
    """The first line in which a solver or mpirun says what is wrong: mpirun frames its own with rules."""
    lines = [line.strip() for line in errors.splitlines()]
    lines = [line for line in lines if line.strip("-=* ")]
    return next((line for line in lines if "error" in line.lower()), lines[0] if lines else "")


def run(solver, deck, processes, threads, folder):
    own = [str(solver), str(deck), "--threads", str(threads), "-o", str(folder / "r.vtu")]
    if processes > 0:
        own[1:1] = ["--engine", "petsc"]
    if processes > 1:
        own = ["mpirun", "--oversubscribe", "-n", str(processes), *own]
    most, start = {}, time.monotonic()
    with subprocess.Popen(own, env=ENVIRONMENT, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True) as started:
        while started.poll() is None:
            most.update(resident(started.pid))  # of each the largest so far
            time.sleep(0.02 if time.monotonic() - start < 5 else 0.5)
        output, errors = started.communicate()
    if started.returncode != 0:
        return None, message_of(errors) or f"exit status {started.returncode}"
    found = {name: float(seconds) for name, seconds in re.findall(r"^  ([a-z ]+?) +([0-9.]+) s$", output, re.MULTILINE)}
    found["equations"] = int(re.search(r"equations +(\d+)", output).group(1))
    found["memory"], found["largest"] = sum(most.values()), max(most.values(), default=0.0)
    return found, ""


def exponent(points):
    """The slope of log y over log x."""
    points = [(math.log(x), math.log(y)) for x, y in points if y > 0.002]
    if len(points) < 2:
        return math.nan
    x, y = (sum(values) / len(points) for values in zip(*points))
    return sum((a - x) * (b - y) for a, b in points) / sum((a - x) ** 2 for a, _ in points)


def counts(smallest):
    """The reader of a list such as 50,100,200."""
    def read(text):
        try:
            numbers = [int(part) for part in text.split(",")]
        except ValueError:
            numbers = []
        if not numbers or min(numbers) < smallest:
            raise argparse.ArgumentTypeError(f"{text!r}: expected whole numbers from {smallest}, separated by commas")
        return numbers
    return read


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("solver", type=pathlib.Path, help="the program, for example build/release/bin/finites-solve")
    parser.add_argument("--kind", default="plate", choices=("plate", "tower", "block"),
                        help="a plate of N by N quadrilaterals, a tower of N storeys, a block of N^3 bricks (plate)")
    parser.add_argument("--sizes", default="50,100,200", type=counts(1), help="the sizes N (50,100,200)")
    parser.add_argument("--processes", default="0,1,2", type=counts(0),
                        help="0: the embedded engine; N: that of PETSc with N processes (0,1,2)")
    parser.add_argument("--threads", default=1, type=int, help="threads of each process (1)")
    wanted = parser.parse_args()
    if not os.access(wanted.solver, os.X_OK):
        parser.error(f"{wanted.solver} is no program; script/build makes build/release/bin/finites-solve")
    with tempfile.TemporaryDirectory() as place:
        folder = pathlib.Path(place)
        for processes in wanted.processes:
            lines = []
            print(f"\n{wanted.kind}, {'embedded' if processes == 0 else f'PETSc, processes: {processes}'}, "
                  f"threads: {wanted.threads}\n")
            print("| size | equations | " + " | ".join(PHASES) + " | MB | MB, largest |\n|" + "---|" * (len(PHASES) + 4))
            for size in wanted.sizes:
                deck = folder / f"{wanted.kind}{size}.inp"
                if not deck.exists():
                    with deck.open("w") as file:
                        subprocess.run([sys.executable, MODEL, wanted.kind, str(size)], stdout=file, check=True)
                found, error = run(wanted.solver.resolve(), deck, processes, wanted.threads, folder)
                if found is None:
                    print(f"| {size} | {error} |", flush=True)
                    break
                lines.append(found)
                megabytes, largest = (f"{found[name]:.0f}" if found[name] > 0 else "" for name in ("memory", "largest"))
                print(f"| {size} | {found['equations']:,} | " +
                      " | ".join(f"{found.get(phase, 0):.2f}" for phase in PHASES) + f" | {megabytes} | {largest} |",
                      flush=True)
            if len(lines) < 2:
                continue
            slopes = [exponent([(line["equations"], line.get(phase, 0)) for line in lines]) for phase in PHASES]
            memory = exponent([(line["equations"], line["memory"]) for line in lines])
            print("| exponent | | " + " | ".join("" if math.isnan(s) else f"{s:.2f}" for s in [*slopes, memory]) + " | |",
                  flush=True)
    largest = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024 / 1e6
    print(f"\nlargest resident set of one process, of all runs: {largest:.0f} MB")


if __name__ == "__main__":
    main()
