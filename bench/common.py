"""Shared by the benchmarks: figures, Markdown and plots."""

import json
import os
import re
import statistics
import subprocess
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent
BUILD = SOURCE / "build" / "bench"
SHIPPED = BUILD / "shipped"
PROGRAMS = BUILD / "programs" / "bin"
PROVIDER = SHIPPED / "lib" / "libventaro.so"

# Variables of the user's environment that a measured program must not see.
FOREIGN = ("VENTARO_PRODUCT", "VENTARO_SCENARIO", "VENTARO_NETWORK", "VENTARO_LOG", "VENTARO_RESOURCE_ROOT",
           "LANGUAGE")


def environment(**more):
    """The environment of a measured program."""
    clean = {name: value for name, value in os.environ.items() if name not in FOREIGN}
    return {**clean, "LC_ALL": "C.UTF-8", **{name: str(value) for name, value in more.items()}}


def folders(scratch, name="store"):
    """Environment variables for a store that no other measurement has used."""
    return {"VENTARO_STATE_DIR": scratch / f"{name}-state", "VENTARO_RUNTIME_DIR": scratch / f"{name}-runtime"}


def run(*command, **variables):
    """Runs a program and returns its output; exits with that output when the program fails."""
    done = subprocess.run([str(word) for word in command], env=environment(**variables), text=True, cwd=SOURCE,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if done.returncode != 0:
        raise SystemExit(f"bench: {command[0]} ended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def run_json(*command, **variables):
    return json.loads(run(*command, **variables))


def write_back(file):
    """Syncs a file to disk: pages just written by the linker count as dirty in every process that maps it."""
    with open(file, "rb") as written:
        os.fsync(written.fileno())


def counted(dump):
    """The instructions in a callgrind file."""
    return int(re.search(r"^totals: (\d+)", dump.read_text(encoding="utf-8"), re.M).group(1))


def median(values):
    return statistics.median(values)


def spread(values):
    """Half the distance between the quartiles, as a share of the median."""
    if len(values) < 2:
        return 0.0
    low, _, high = statistics.quantiles(values, n=4, method="inclusive")
    return (high - low) / 2 / median(values)


def ratios(ours, theirs):
    """Ratios by repetition, because those of the same repetition ran side by side."""
    return [mine / other for mine, other in zip(ours, theirs)]


def with_spread(values, digits=2):
    return f"{median(values):.{digits}f} ± {100 * spread(values):.0f} %"


def duration(nanoseconds):
    if nanoseconds < 0:
        return f"−{duration(-nanoseconds)}"
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def verdict(value, aim, digits=2):
    """The verdict on the value as shown, rounded to that many digits."""
    return "reached" if round(value, digits) <= aim else "**missed**"


def table(heads, rows):
    """A Markdown table; all columns but the first are figures."""
    lines = ["| " + " | ".join(heads) + " |", "| --- |" + " ---: |" * (len(heads) - 1)]
    lines += ["| " + " | ".join(str(cell) for cell in row) + " |" for row in rows]
    return "\n".join(lines) + "\n"


def plot(file, script, series):
    """Makes an SVG with gnuplot. `script` holds its commands; the rows of series N are $dataN."""
    blocks = []
    for index, rows in enumerate(series):
        lines = [" ".join(f'"{cell}"' if isinstance(cell, str) else f"{cell}" for cell in row) for row in rows]
        blocks.append(f"$data{index} << END\n" + "\n".join(lines) + "\nEND\n")
    head = (f'set terminal svg size 800,420 background "white" font "sans,12"\nset output "{file}"\n'
            "set grid\nset key outside bottom center horizontal\n")
    subprocess.run(["gnuplot"], input="".join(blocks) + head + script, text=True, check=True)


def plot_bars(file, title, bars, height=420, figures="%.0f", more=""):
    """Makes an SVG of bars, given as (figure, name), the first at the bottom; `more` holds further gnuplot commands."""
    rows = [[index, figure, name] for index, (figure, name) in enumerate(bars)]
    plot(file, f"""
set terminal svg size 800,{height} background "white" font "sans,12"
set title "{title}"
set ytics noenhanced
set key off
set xrange [0:{max(row[1] for row in rows) * 1.2}]
set yrange [-0.6:{len(rows) - 0.4}]
set style fill solid 0.8
{more}
plot $data0 using ($2 / 2):1:($2 / 2):(0.35):ytic(3) with boxxyerror lc rgb "#4477aa", \\
     $data0 using 2:1:(sprintf(" {figures}", $2)) with labels left
""", [rows])
