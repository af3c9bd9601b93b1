"""Every callback beside its floor: instructions, allocations and time."""

import csv
import io
import re
from pathlib import Path

import common

PROGRAM = common.PROGRAMS / "callbacks"
SIDES = ("provider", "floor")

AIM = 1.10  # times the floor's instructions, for every callback
AIM_OF_PAGE = 1.05

MOST_NOISE = 0.5  # a ratio of times with a wider spread is not shown

# What each case took when it was accepted last; `accept` writes it.
EXPECTED = Path(__file__).resolve().parent / "expected.csv"
COLUMNS = ("function", "key", "provider_instructions", "floor_instructions", "provider_allocations",
           "floor_allocations")
RATIO_TOLERANCE = 0.02
FLOOR_TOLERANCE = 0.03  # a worse floor makes a better ratio
HOW_TO_ACCEPT = "if these figures are as they should be, accept them by bench/callbacks/accept"

# A callback finds its key among all that there are; the floor, which is written for one key, knows it.
FINDS = "finds its key"
UNIT = f"{FINDS}, and calls the object that the value belongs to"

# Why a function is above the aim for some of its keys: what callgrind_annotate shows of the dumps of both sides.
REASONS = {
    "get_display_name": f"{FINDS}; one that it does not know is compared with each, for names are found by leading "
                        "parts of keys, too",
    "get_help_text": f"{FINDS}; a text with a product's or a device's name passes through functions of `std::string`, "
                     "and is copied by `strncpy`, which fills the rest of 2 KiB",
    "get_string": UNIT,
    "get_int": UNIT,
    "set_int": UNIT,
    "get_title_icon_path": f"{FINDS}; a network's path is made as a `std::string`, and every path is measured before "
                           "it is copied",
    "get_second_icon_path": f"the status is a `std::string` of its own, and is compared by functions; {FINDS}, which "
                            "is less",
    "get_list_items": "the owner hands over the texts in an array of their own, the largest part; each is measured "
                      f"before it is copied; {FINDS}",
    "check_enable_int": f"{FINDS}, which is most of it: beside it there are the lock and a log line",
    "get_list_item_display_value": "looks for the end of the text before it logs it, for one that fills its block has "
                                   "none",
    "get_module_info": f"{FINDS}, beside which there is only the lock",
}
# The one call of a page that parses JSON. What jsoncpp takes is alike on both sides, and hides the rest.
PARSES = ("check_enable_int", "menu/network/devicename")


# ---- measure ----

def name_of(case):
    return case["function"], case["key"]


def instructions(row, scratch):
    """Those of a count, from the dump of the process that made it."""
    dump = (scratch / f"dump.{row['process']}").read_text()
    return int(re.search(r"^totals: (\d+)", dump, re.M).group(1)) / int(row["calls"])


def counts(scratch):
    """The cases, with the instructions and allocations of one call."""
    # A `rep stos` of the C library counts as many instructions as it has steps, and which libraries
    # and processors use it differs: it is switched off.
    output = common.run("valgrind", "--tool=callgrind", "--collect-atstart=no",
                        f"--callgrind-out-file={scratch / 'dump.%p'}", PROGRAM, common.PROVIDER, "--counts",
                        GLIBC_TUNABLES="glibc.cpu.x86_rep_stosb_threshold=1000000000:"
                                         "glibc.cpu.x86_rep_movsb_threshold=1000000000")
    harness, *rows = csv.DictReader(io.StringIO(output))
    own = instructions(harness, scratch)
    cases = {}
    for row in rows:
        case = cases.setdefault(name_of(row), {"function": row["function"], "key": row["key"],
                                               "calls_per_page": int(row["calls_per_page"]),
                                               "instructions": {}, "allocations": {}})
        case["instructions"][row["side"]] = counted = instructions(row, scratch) - own
        if counted <= 0:
            raise SystemExit(f"bench: {row['function']}({row['key']}): no instructions were counted")
        case["allocations"][row["side"]] = int(row["allocations"]) / int(row["calls"])
    return list(cases.values())


def times_of(case, times):
    """The median of each side without the harness's own, and half the distance between its quartiles."""
    name = f"{case['function']} {case['key']}"
    own = common.median(times.get(f"{name} harness", times["  harness"]))
    return {side: {"median": common.median(times[f"{name} {side}"]) - own,
                   "half": common.spread(times[f"{name} {side}"]) * common.median(times[f"{name} {side}"])}
            for side in SIDES}


def measure(short, scratch):
    common.run(PROGRAM, common.PROVIDER, "--check")
    cases = counts(scratch)
    times = common.run_google_benchmark(PROGRAM, short, common.PROVIDER, repetitions=9, min_time=0.004,
                                        clock="cpu_time")
    for case in cases:
        case["nanoseconds"] = times_of(case, times)
    return {"cases": cases}


# ---- figures ----

def ratio(case):
    return case["instructions"]["provider"] / case["instructions"]["floor"]


def more(case, measured):
    return case[measured]["provider"] - case[measured]["floor"]


def by_function(figures):
    functions = {}
    for case in figures["cases"]:
        functions.setdefault(case["function"], []).append(case)
    return functions


def page(figures, measured, without=None):
    """The sums over the calls that draw a page."""
    return {side: sum(case["calls_per_page"] * case[measured][side] for case in figures["cases"]
                      if name_of(case) != without) for side in SIDES}


def summed_times(cases, weight=lambda case: 1):
    """The sums of the medians, and the ratio with its spread: each side's, as if all went astray at once.

    No ratio when that is more noise than figure.
    """
    total = {side: sum(weight(case) * case["nanoseconds"][side]["median"] for case in cases) for side in SIDES}
    share = sum(sum(weight(case) * case["nanoseconds"][side]["half"] for case in cases) / total[side]
                for side in SIDES)
    if not 0 <= share < MOST_NOISE:
        return total, "–"
    return total, f"{total['provider'] / total['floor']:.2f} ± {100 * share:.0f} %"


# ---- check ----

def expected():
    with EXPECTED.open(encoding="utf-8", newline="") as file:
        return {name_of(row): {measured: {side: float(row[f"{side}_{measured}"]) for side in SIDES}
                               for measured in ("instructions", "allocations")} for row in csv.DictReader(file)}


def accept(cases):
    """Writes what is expected from now on."""
    with EXPECTED.open("w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(COLUMNS)
        for case in sorted(cases, key=name_of):
            figures = [f"{case[measured][side]:.10g}" for measured in ("instructions", "allocations")
                       for side in SIDES]
            writer.writerow([*name_of(case), *figures])


def differences(case, wanted):
    """What is other than expected, a line each."""
    floor, wanted_floor = case["instructions"]["floor"], wanted["instructions"]["floor"]
    if abs(floor - wanted_floor) > FLOOR_TOLERANCE * wanted_floor:
        yield f"the floor takes {floor:g} instructions, expected were {wanted_floor:g}"
    if ratio(case) > ratio(wanted) * (1 + RATIO_TOLERANCE):
        yield (f"{case['instructions']['provider']:g} instructions are {ratio(case):.3f} times the floor's, "
               f"expected were {wanted['instructions']['provider']:g}, {ratio(wanted):.3f} times")
    for side in SIDES:
        if case["allocations"][side] != wanted["allocations"][side]:
            yield (f"the {side} makes {case['allocations'][side]:g} allocations, expected were "
                   f"{wanted['allocations'][side]:g}")


def check(figures):
    wanted = expected()
    measured = {name_of(case): case for case in figures["cases"]}
    wrong = [f"{function}({key}): is {'not measured' if (function, key) in wanted else 'not expected'}"
             for function, key in sorted(wanted.keys() ^ measured.keys())]
    for name in sorted(wanted.keys() & measured.keys()):
        wrong += [f"{name[0]}({name[1]}): {line}" for line in differences(measured[name], wanted[name])]
    if wrong:
        wrong.append(HOW_TO_ACCEPT)
    wrong += [f"{function}: {worst:.3f} times the floor's instructions are above the aim of {AIM:.2f}, and REASONS "
              f"in benchmark.py does not say why" for function, cases in by_function(figures).items()
              if (worst := max(map(ratio, cases))) > AIM and function not in REASONS]
    return wrong


# ---- report ----

def instructions_row(name, sums):
    share = sums["provider"] / sums["floor"]
    return [name, f"{sums['provider']:,.0f}", f"{sums['floor']:,.0f}", f"{share:.3f}", f"{AIM_OF_PAGE}",
            common.verdict(share, AIM_OF_PAGE)]


def page_table(figures):
    allocations = page(figures, "allocations")
    times, share = summed_times(figures["cases"], lambda case: case["calls_per_page"])
    rows = [instructions_row("instructions", page(figures, "instructions")),
            instructions_row("without the call that parses JSON", page(figures, "instructions", without=PARSES)),
            ["allocations", f"{allocations['provider']:g}", f"{allocations['floor']:g}",
             f"{allocations['provider'] / allocations['floor']:.3f}", "1",
             common.verdict(allocations["provider"], allocations["floor"])],
            ["time", common.duration(times["provider"]), common.duration(times["floor"]), share, "", ""]]
    return common.table(["a page's", "provider", "floor", "ratio", "aim", ""], rows)


def function_table(figures):
    rows = []
    for function, cases in by_function(figures).items():
        shares = [ratio(case) for case in cases]
        worst = max(shares)
        rows.append([f"`{function}`", len(cases), f"{common.median(shares):.2f}", f"{worst:.2f}",
                     common.verdict(worst, AIM), f"{max(more(case, 'allocations') for case in cases):+g}",
                     summed_times(cases)[1], REASONS.get(function, "") if worst > AIM else ""])
    heads = ["function", "cases", "instructions, median", "worst case", f"aim {AIM:.2f}", "allocations", "time", "why"]
    return common.table(heads, rows)


def plot_functions(figures, file):
    rows = sorted((common.median([ratio(case) for case in cases]), function)
                  for function, cases in by_function(figures).items())
    aim = f"set arrow from {AIM},-0.6 to {AIM},{len(rows) - 0.4} nohead dt 2"
    common.plot_bars(file, "Instructions of a call, in times of its floor's (median over the cases)", rows,
                     height=620, figures="%.2f", more=aim)


def search_sentence(figures):
    """What finding the key costs, from the callback that does little else."""
    search = common.median([more(case, "instructions") for case in by_function(figures)["check_enable_int"]])
    calls = sum(case["calls_per_page"] for case in figures["cases"] if FINDS in REASONS.get(case["function"], ""))
    share = 100 * calls * search / page(figures, "instructions")["floor"]
    return (f"`check_enable_int` does little else than find its key, and takes {search:.0f} instructions more than\n"
            f"  its floor (median). {calls} calls of a page find a key; as much for each would be {share:.0f} % of\n"
            "  the floor's instructions.")


def report(figures, pictures):
    plot_functions(figures, pictures / "callbacks.svg")
    parsing = next(case for case in figures["cases"] if name_of(case) == PARSES)["instructions"]
    calls = sum(case["calls_per_page"] for case in figures["cases"])
    return f"""## The callbacks

Every function for every key, and for some in a second state, over a platform that costs nothing, beside its *floor*:
the smallest C that makes the same platform calls with the same arguments, takes and leaves the lock at the same
places, logs the same and hands out the same blocks, for one key and one state. That it does the same is checked
before it is measured, every byte of a block included. A page is the {calls} calls of one drawing of the Network
branch, as in the next section.

{page_table(figures)}
![Instructions beside the floor's](performance/callbacks.svg)

{function_table(figures)}
- Instructions are counted by callgrind and do not depend on the machine's load. Each case is counted in a process of
  its own, so that all find the same heap, and is checked beside its figure in `bench/callbacks/expected.csv`.
- Time is the processor's, of repetitions that were shuffled at random, without what measuring itself takes. It
  includes the `free` of what was handed out, and leaves out that of what a call was given to free. The ratio is that
  of the medians, its "±" the sum of both sides'; "–" is more noise than figure.
- The provider is measured as it is shipped, made small (`-Os`), while the floor is made fast (`-O2`); both are
  hardened alike.
- The floor parses JSON with jsoncpp, too, and keeps the document that it parsed as the provider does. One call of the
  page parses at every drawing, `{PARSES[0]}` of `{PARSES[1]}`:
  {parsing['provider']:,.0f} instructions, of the floor {parsing['floor']:,.0f}.
- {search_sentence(figures)}
"""
